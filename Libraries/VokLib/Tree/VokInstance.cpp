#include <VokLib/Tree/VokInstance.h>

#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/ThrowVokException.h>

std::span<const VokAttributeRow<VokInstance>> VokInstance::AttributeRows() {
    static constexpr VokAttributeRow<VokInstance> rows[] = {
        {.read =
             [](VokInstance& instance, const VokAttributes& attributes) {
                 if (!attributes.Has("target"))
                     ThrowVokException("Instance with no target.", &instance);
                 VokFields::ReadLink(instance.target, attributes, "target");
             },
         .write =
             [](const VokInstance& instance, VokAttributes& attributes) {
                 VokFields::WriteLink(instance.target, attributes, "target");
             }},
    };
    return rows;
}
