#include <VokLib/Objects/Sets/VokPose.h>

#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/ThrowVokException.h>

using namespace VokFields;

namespace {

using Element = VokPose::PoseElement;

Element& LastElement(VokPose& pose) {
    return pose.GetElement(pose.GetElementCount() - 1);
}

/// An element's parts are good inside an element alone.
void RefuseData(VokPose& pose, VokParse&) {
    ThrowVokException("No pose to receive data", &pose);
}

void WriteElement(const Element& element, VokFile& file, std::string_view name) {
    VokAttributes attributes;
    WriteLink(element.target, attributes, "target");
    file.OpenTag(name, attributes);
    WriteVector3Element(file, "translate", element.translate);
    WriteRotationElement(file, "rotEul", element.rotation);
    WriteVector3Element(file, "scale", element.scale);
    file.CloseTag(name);
}

}  // namespace

std::span<const VokAttributeRow<VokPose>> VokPose::AttributeRows() {
    static constexpr VokAttributeRow<VokPose> rows[] = {
        {.read =
             [](VokPose& pose, const VokAttributes& attributes) {
                 pose.bindPose = attributes.GetInt("bindPose", 0) != 0;
             },
         .write =
             [](const VokPose& pose, VokAttributes& attributes) {
                 if (pose.bindPose) attributes.SetInt("bindPose", 1);
             }},
    };
    return rows;
}

std::span<const VokChildElement<VokPose>> VokPose::ChildElements() {
    static constexpr VokChildElement<VokPose> rows[] = {
        {.name = "element",
         .start =
             [](VokPose& pose, VokParse& parse) {
                 ReadLink(pose.AddElement().target, parse.GetAttributes(), "target");
             },
         .write =
             [](const VokPose& pose, VokFile& file, std::string_view name) {
                 for (const Element& element : pose.elements) WriteElement(element, file, name);
             }},
        {.name = "translate",
         .data = [](VokPose& pose,
                    VokParse& parse) { LastElement(pose).translate = parse.ReadVector3As4(); },
         .within = "element"},
        {.name = "rotEul",
         .start =
             [](VokPose& pose, VokParse& parse) {
                 ReadRotationOrder(LastElement(pose).rotation, parse.GetAttributes());
             },
         .data = [](VokPose& pose,
                    VokParse& parse) { parse.ReadAngles(LastElement(pose).rotation); },
         .within = "element"},
        {.name = "scale",
         .data = [](VokPose& pose,
                    VokParse& parse) { LastElement(pose).scale = parse.ReadVector3(); },
         .within = "element"},
        {.name = "translate", .data = RefuseData},
        {.name = "rotEul", .data = RefuseData},
        {.name = "scale", .data = RefuseData},
    };
    return rows;
}

const Element& VokPose::GetElement(std::size_t index) const {
    if (index >= elements.size()) ThrowVokException("Pose index is not in range.", this);
    return elements[index];
}

Element& VokPose::GetElement(std::size_t index) {
    if (index >= elements.size()) ThrowVokException("Pose index is not in range.", this);
    return elements[index];
}

Element& VokPose::AddElement() {
    return elements.emplace_back(this);
}
