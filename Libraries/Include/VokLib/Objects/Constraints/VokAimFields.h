#pragma once

#include <VokLib/Base/RotationOrder.h>
#include <VokLib/Base/VokVector.h>
#include <VokLib/Links/VokObjLink.h>

#include <cstdint>
#include <optional>

/// What decides the roll of an object that aims.
enum class AimUpMethod : std::uint32_t {
    None = 0,
    GlobalVector = 1,
    ObjectTranslation = 2,
    ObjectRotation = 3,  ///< with the global vector as the up object's axis
};

/// What constraints that aim an axis have in common.
struct VokAimFields {
    EulerRotation offset;
    VokVector4 aim;
    VokVector4 up;
    VokVector4 globalUp;
    AimUpMethod upMethod = AimUpMethod::None;
    std::optional<VokObjLinkHandle> upTarget;  ///< absent unless the document names an up object
};
