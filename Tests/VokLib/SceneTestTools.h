#pragma once

#include <VokLib/Base/VokException.h>
#include <VokLib/Document/VokFilenameTranslator.h>
#include <VokLib/Document/VokParse.h>
#include <VokLib/Library/VokLib.h>
#include <VokLib/Links/VokPath.h>
#include <VokLib/Text/VokDocumentFile.h>
#include <VokLib/Tree/VokCast.h>
#include <VokLib/Tree/VokItHierarchy.h>
#include <VokLib/Tree/VokScene.h>
#include <VokLib/Tree/VokWorld.h>

#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>

/// What tests need to read and write small scenes. The documents stand in the tests as raw strings,
/// without the root.
namespace SceneTest {

/// Brings the scene library up with every service.
struct Library : VokLib {
    Library() : VokLib(true, true, true, true, true) {}
};

/// A whole current document around `body`. Needs a Library, for its file names are in the primary
/// form.
inline std::string Document(std::string_view body) {
    return "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<QEL xmlns=\"" +
           std::string(QelCurrentNamespace) + "\" filenameform=\"" +
           GetFormString(GetPrimaryTranslator()) + "\">" + std::string(body) + "</QEL>";
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

/// The text and the path of the object of a failure.
struct Failure {
    std::string text;
    std::string object;
    bool operator==(const Failure&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Failure& failure) {
    return out << '"' << failure.text << "\" at " << failure.object;
}

/// The failure of `action`; empty when there is none. The object stays empty for other kinds than
/// VokException.
template <class Action>
Failure FailureOf(Action action) {
    try {
        action();
    } catch (const VokException& e) {
        return {e.what(), e.GetCauseObject()};
    } catch (const std::exception& e) {
        return {e.what(), {}};
    }
    return {};
}

/// The failure of reading `body`.
inline Failure LoadFailure(std::string_view body) {
    return FailureOf([&] { Scene scene(body); });
}

}  // namespace SceneTest
