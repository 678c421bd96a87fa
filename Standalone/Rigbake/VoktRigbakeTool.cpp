#include "VoktRigbakeTool.h"

#include <QelTools/AsciiText.h>
#include <QelTools/Exception.h>
#include <VoktFramework/Saving/VoktSaveBiff.h>
#include <VoktFramework/Stages/VoktHashClient.h>
#include <VoktFramework/Stages/VoktLoadQeli.h>
#include <VoktRigbake/Stages/VoktChangeUpAxis.h>
#include <VoktRigbake/Stages/VoktFindRootJoints.h>
#include <VoktRigbake/Stages/VoktRigbake.h>

void VoktRigbakeTool::AddComponents() {
    constexpr std::uint32_t kForAnimation = 1;
    constexpr std::uint32_t kDeclareFlags = 0;

    AddComponent(std::make_unique<VoktHashClient>());

    auto loader = std::make_unique<VoktLoadQeli>();
    load = loader.get();
    AddComponent(std::move(loader));

    AddComponent(std::make_unique<VoktFindRootJoints>(nullptr));
    AddComponent(std::make_unique<VoktChangeUpAxis>());
    AddComponent(std::make_unique<VoktRigbake>(nullptr, kForAnimation));

    auto saver = std::make_unique<VoktSaveBiff>(kDeclareFlags);
    save = saver.get();
    AddComponent(std::move(saver));
}

void VoktRigbakeTool::Validate() {
    VoktTool::Validate();
    if (QelTools::Common::EqualsIgnoringCase(load->GetInputFilename(), save->GetOutputFilename()))
        throw QelTools::Common::TextException("ERROR: Input and output filenames are identical.");
}
