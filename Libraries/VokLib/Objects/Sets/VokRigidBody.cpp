#include <VokLib/Objects/Sets/VokRigidBody.h>

#include <VokLib/Document/VokFields.h>

using namespace VokFields;

std::span<const VokChildElement<VokRigidBody>> VokRigidBody::ChildElements() {
    static constexpr VokChildElement<VokRigidBody> rows[] = {
        {.name = "mass",
         .data = ReadFloat<&VokRigidBody::mass>,
         .write = WriteFloat<&VokRigidBody::mass>},
        {.name = "geometry",
         .data = [](VokRigidBody& body,
                    VokParse& parse) { SetLinkPath(body.geometry, parse.ReadString()); },
         .write =
             [](const VokRigidBody& body, VokFile& file, std::string_view name) {
                 WriteTextElement(file, name, body.geometry.GetPath().GetText());
             }},
    };
    return rows;
}
