#include <VoktRigbake/Stages/VoktChangeUpAxis.h>

#include "Stages/TurnWorld.h"

#include <QelTools/Exception.h>
#include <VoktFramework/Atoms/VoktAtomVokWorld.h>
#include <VoktFramework/Atoms/VoktUniverse.h>
#include <VoktFramework/CommandLine/VoktCommandLineSyntax.h>

#include <iterator>
#include <vector>

struct VoktChangeUpAxis::Flags {
    static const VoktValueFlagDefinition kTable[2];
};

const VoktValueFlagDefinition VoktChangeUpAxis::Flags::kTable[2] = {
    {.name = "-changeUpAxis",
     .shortName = "-cua",
     .help = "Change up axis (keep/y/z)",
     .type = VoktArgumentType::String,
     .stringMember = kVoktMember<&VoktChangeUpAxis::upAxisText>},
    {.name = "-changeUpAxisAnimation",
     .shortName = "-cuaa",
     .help = "Change up axis for animation",
     .type = VoktArgumentType::Boolean,
     .boolMember = kVoktMember<&VoktChangeUpAxis::changeAnimation>},
};

VoktChangeUpAxis::VoktChangeUpAxis()
    : VoktComponent(Flags::kTable, static_cast<std::uint32_t>(std::size(Flags::kTable)), nullptr,
                    0) {}

void VoktChangeUpAxis::Validate() {
    if (upAxisText.empty() || upAxisText == "keep")
        upAxisMode = kKeep;
    else if (upAxisText == "y")
        upAxisMode = kToY;
    else if (upAxisText == "z")
        upAxisMode = kToZ;
    else
        QelTools::Common::ThrowException("Unrecognised up axis form '" + upAxisText + "'\n");
}

void VoktChangeUpAxis::Process(VoktUniverse& universe) {
    if (upAxisMode == kKeep) return;
    const int target = upAxisMode == kToY ? 0 : 1;
    std::vector<VoktAtom*> atoms;
    universe.FetchAllByType(VoktAtomVokWorld::kType, atoms);
    for (VoktAtom* atom : atoms)
        TurnWorld(dynamic_cast<VoktAtomVokWorld&>(*atom).world, target, changeAnimation);
}
