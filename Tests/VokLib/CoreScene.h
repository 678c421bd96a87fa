#pragma once

#include <VokLib/Base/VokException.h>
#include <VokLib/Document/VokParse.h>
#include <VokLib/Library/VokLib.h>
#include <VokLib/Text/VokDocumentFile.h>
#include <VokLib/Tree/VokScene.h>
#include <VokLib/Tree/VokWorld.h>

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <typeinfo>

/// What the tests of the object core share.
namespace CoreScene {

/// The whole library, up while a test runs.
class Test : public testing::Test {
  private:
    VokLib library{true, true, true, true, true};
};

template <class Type>
Type* Add(VokObj* parent, const std::string& name) {
    auto object = std::make_unique<Type>();
    object->SetName(name);
    parent->AddChild(object.get());
    return object.release();
}

/// A failure as a caller sees it.
struct Thrown {
    std::string text;
    std::string object;  // the path, where the failure carries one
    bool isVokException = false;
    bool isException = false;
    bool operator==(const Thrown&) const = default;
};

inline Thrown Plain(std::string text) {
    return {std::move(text), "", false, true};
}
inline Thrown OfObject(std::string text, std::string path = "") {
    return {std::move(text), std::move(path), true, true};
}

inline std::ostream& operator<<(std::ostream& out, const Thrown& thrown) {
    return out << '"' << thrown.text << "\" {" << thrown.object << "} "
               << (thrown.isVokException ? "VokException" : "Exception");
}

template <class Action>
Thrown ThrownBy(Action action) {
    try {
        action();
    } catch (const VokException& failure) {
        return OfObject(failure.what(), failure.GetCauseObject());
    } catch (const QelTools::Common::Exception& failure) {
        return Plain(failure.what());
    } catch (const std::exception& failure) {
        return {failure.what(), "", false, false};
    }
    return {"nothing", "", false, false};
}

/// `body` inside a current document's root, which has `rootAttributes` besides the version.
inline std::string Document(std::string_view body, std::string_view rootAttributes = "") {
    return "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<QEL xmlns=\"" +
           std::string(QelCurrentNamespace) + "\" filenameform=\"qelirelative\" " +
           std::string(rootAttributes) + ">" + std::string(body) + "</QEL>";
}

inline void Read(VokWorld& world, const std::string& document, const char* filename = nullptr) {
    VokParse parse;
    parse.ParseBuffer(world, document.data(), document.size(),
                      VokParse::kFirstBlock | VokParse::kLastBlock, filename);
}

inline std::string Written(const VokObj& object) {
    std::ostringstream text;
    VokDocumentFile file(text);
    object.Write(file);
    return text.str();
}

}  // namespace CoreScene
