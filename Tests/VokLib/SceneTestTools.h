#pragma once

#include <VokLib/Document/VokParse.h>
#include <VokLib/Library/VokLib.h>
#include <VokLib/Links/VokPath.h>
#include <VokLib/Text/VokDocumentFile.h>
#include <VokLib/Tree/VokCast.h>
#include <VokLib/Tree/VokItHierarchy.h>
#include <VokLib/Tree/VokScene.h>
#include <VokLib/Tree/VokWorld.h>

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>

#include "Support/Document.h"
#include "Support/Failure.h"
#include "Support/ThrownText.h"

/// What tests need to read and write small scenes. The documents stand in the tests as raw strings,
/// without the root.
namespace SceneTest {

/// Brings the scene library up with every service.
struct Library : VokLib {
    Library() : VokLib(true, true, true, true, true) {}
};

/// The whole library, up while a test runs.
class Test : public testing::Test {
  private:
    Library library;
};

/// A new object with this name, the last child of `parent`.
template <class Type>
Type* Add(VokObj* parent, const std::string& name) {
    auto object = std::make_unique<Type>();
    object->SetName(name);
    parent->AddChild(object.get());
    return object.release();
}

inline void Parse(VokWorld& world, std::string_view document, const char* filename = nullptr) {
    VokParse().ParseBuffer(world, document.data(), document.size(),
                           VokParse::kFirstBlock | VokParse::kLastBlock, filename);
}

/// The element of `object` as a document would hold it, without a line end behind it.
inline std::string Write(const VokObj& object) {
    std::ostringstream out;
    VokDocumentFile file(out);
    object.Write(file);
    return out.str();
}

/// A world in a library of its own, filled from `body`: what stands inside the root element.
class Scene {
  public:
    explicit Scene(std::string_view body = {}) { Parse(world, Document(body)); }

    /// The first object of exactly type `T`, in document order.
    template <class T>
    T& First() {
        VokItHierarchy it(&world, VokItHierarchy::Kind::DepthFirst, T::TypeId());
        if (it.AtEnd()) throw std::runtime_error("the scene holds no such object");
        return *static_cast<T*>(it.Current());
    }

    /// The object at a path such as "||root|hips".
    template <class T>
    T& At(std::string_view path) {
        VokObj* found = VokPath(std::string(path)).Resolve(&world);
        if (found == nullptr) throw std::runtime_error("nothing at " + std::string(path));
        return *vok_cast<T>(found);
    }

  private:
    Library library;

  public:
    VokWorld world;
};

/// What `body` is written as, once it has been read: the element of the first object of type `T`.
template <class T>
std::string Rewritten(std::string_view body) {
    return Write(Scene(body).First<T>());
}

/// The failure of reading `body`.
inline Failure LoadFailure(std::string_view body) {
    return FailureOf([&] { Scene scene(body); });
}

}  // namespace SceneTest
