#include <VokLib/VokInstance.h>

#include <VokLib/VokException.h>
#include <VokLib/VokFields.h>

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
