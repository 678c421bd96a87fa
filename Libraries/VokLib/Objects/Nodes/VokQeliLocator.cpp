#include <VokLib/Objects/Nodes/VokQeliLocator.h>

#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/ThrowVokException.h>
#include <VokLib/Tree/VokDependencies.h>

std::span<const VokChildElement<VokQeliLocator>> VokQeliLocator::ChildElements() {
    static constexpr VokChildElement<VokQeliLocator> rows[] = {
        {.name = "file",
         .start =
             [](VokQeliLocator& locator, VokParse& parse) {
                 const char* text = parse.GetAttributes().Find("uri");
                 if (text == nullptr) ThrowVokException("QeliLocator with no uri.", &locator);
                 locator.uri = text;
             },
         .write =
             [](const VokQeliLocator& locator, VokFile& file, std::string_view name) {
                 VokAttributes attributes;
                 attributes.SetString("uri", locator.uri);
                 file.EmptyTag(name, attributes);
             }},
    };
    return rows;
}

bool VokQeliLocator::GetDependencies(VokDependencies& files) const {
    VokFields::AddFile(files, uri);
    return VokElement::GetDependencies(files);
}

bool VokQeliLocator::UpdateDependencies(VokUpdateDependencies& update) {
    VokFields::UpdateFile(uri, update, this);
    return VokElement::UpdateDependencies(update);
}
