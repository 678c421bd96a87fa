#include <VokLib/Objects/Constraints/VokAimConstraint.h>

#include "Objects/Constraints/AimVocabulary.h"

std::span<const VokChildElement<VokAimConstraint>> VokAimConstraint::ChildElements() {
    static constexpr auto rows = AimVocabulary::ChildElements<VokAimConstraint>();
    return rows;
}
