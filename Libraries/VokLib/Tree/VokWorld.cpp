#include <VokLib/Tree/VokWorld.h>

#include <VokLib/Document/VokFilenameTranslator.h>
#include <VokLib/Document/VokParse.h>
#include <VokLib/Text/VokFile.h>
#include <VokLib/Tree/VokCast.h>
#include <VokLib/Tree/VokDependencies.h>
#include <VokLib/Tree/VokFactory.h>
#include <VokLib/Tree/VokScene.h>

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/split.hpp>

#include <algorithm>

namespace {

constexpr std::string_view kXmlns = "xmlns";
constexpr std::string_view kParseAcceleration = "parseacceleration";

VokObj* MakeHierarchy() {
    const VokFactory::Function make = VokFactory::FindFactory(VokScene::kElementName);
    return make != nullptr ? make() : new VokScene;
}

/// The list of files that the document depends on stands in front of everything else, so that a
/// tool need not read on to learn them.
void WriteParseAcceleration(const VokWorld& world, VokFile& file) {
    VokDependencies dependencies;
    CollectDependencies(world, dependencies);
    file.OpenTag(kParseAcceleration);
    file.OpenTag("filereferences");
    VokAttributes attributes;
    for (const std::string& name : dependencies.GetFiles()) {
        attributes.Clear();
        attributes.SetString("uri", name);
        file.EmptyTag("file", attributes);
    }
    file.CloseTag("filereferences");
    file.CloseTag(kParseAcceleration);
}

}  // namespace

VokWorld::VokWorld() {
    SetTypeId(TypeId());
    AddChild(MakeHierarchy());
}

VokScene* VokWorld::GetHierarchy() const {
    for (std::size_t i = 0; i < GetChildCount(); ++i)
        if (VokScene* scene = ExactCast<VokScene>(GetChild(i)); scene && scene->GetName().empty())
            return scene;
    QelTools::Common::ThrowException("No hierarchy present.");
}

void VokWorld::ParseAttributes(VokParse& parse) {
    const VokAttributes& attributes = parse.GetAttributes();
    for (std::size_t i = 0; i < attributes.GetCount(); ++i) {
        const std::string_view key = attributes.GetName(i);
        const std::string_view value = attributes.GetValue(i);
        if (key.starts_with(kXmlns)) {
            const std::size_t prefix = std::min(key.size(), kXmlns.size() + 1);
            namespaces.emplace_back(key.substr(prefix), value);
        } else if (key == "filenameform") {
            filenameForm = value;
        } else if (key == "upaxis") {
            upAxis = value == "z" || value == "Z" ? 1 : 0;
        }
    }
    ReadSchemaLocations(attributes);
}

void VokWorld::ReadSchemaLocations(const VokAttributes& attributes) {
    const auto instance = std::find_if(namespaces.begin(), namespaces.end(), [](const auto& entry) {
        return entry.second == XmlSchemaInstanceNamespace;
    });
    if (instance == namespaces.end()) return;
    const std::string attribute = instance->first + ":schemaLocation";
    for (std::size_t i = 0; i < attributes.GetCount(); ++i) {
        if (attributes.GetName(i) != attribute) continue;
        std::vector<std::string> tokens;
        const std::string value = attributes.GetValue(i);
        boost::split(tokens, value, boost::is_any_of(" \t\n\r"), boost::token_compress_on);
        for (std::string& token : tokens)
            if (!token.empty()) schemaLocations.push_back(std::move(token));
    }
}

void VokWorld::ParseStartTag(VokParse& parse) {
    if (parseDepth == 0) {
        if (parse.GetTag() == VokScene::kElementName && !parse.GetAttributes().Has("name")) {
            // Every nameless scene goes into the one hierarchy that the world has from the start.
            parse.PushNewObject(GetHierarchy());
            return;
        }
        if (parse.GetTag() == kParseAcceleration) {
            parse.Skip();
            return;
        }
    }
    VokObj::ParseStartTag(parse);
    if (parse.GetNewObject() == nullptr) ++parseDepth;
}

void VokWorld::ParseData(VokParse& parse) {
    if (parseDepth > 0) VokObj::ParseData(parse);
}

void VokWorld::ParseEndTag(VokParse& parse) {
    if (parseDepth == 0) return;
    VokObj::ParseEndTag(parse);
    --parseDepth;
}

void VokWorld::Write(VokFile& file) const {
    file.WriteHeader();
    const std::string current = QelCurrentNamespace;
    VokAttributes attributes;
    attributes.SetString("xmlns:xsi", XmlSchemaInstanceNamespace);
    attributes.SetString("xmlns", current);
    attributes.SetString("xsi:schemaLocation", current + " " + current + ".xsd");
    attributes.SetString("filenameform", GetFormString(GetPrimaryTranslator()));
    if (upAxis == 1) attributes.SetString("upaxis", "z");
    file.OpenTag(kElementName, attributes);
    WriteParseAcceleration(*this, file);
    for (std::size_t i = 0; i < GetChildCount(); ++i) GetChild(i)->Write(file);
    WriteTail(file);
    file.CloseTag(kElementName);
}

bool VokWorld::IsA(VokTypeId type) const {
    return type == TypeId() || VokObj::IsA(type);
}
