#include <VokLib/Objects/Nodes/VokLocator.h>

#include <VokLib/Document/VokFields.h>

using namespace VokFields;

std::span<const VokChildElement<VokLocator>> VokLocator::ChildElements() {
    static constexpr VokChildElement<VokLocator> rows[] = {
        {.name = "localPosition",
         .data = ReadPosition<&VokLocator::localPosition>,
         .write = WriteVector3<&VokLocator::localPosition>},
    };
    return rows;
}
