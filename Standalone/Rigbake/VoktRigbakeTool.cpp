#include "VoktRigbakeTool.h"

#include <Platform/FileIdentity.h>
#include <Platform/Paths.h>
#include <QelTools/AsciiText.h>
#include <QelTools/Exception.h>
#include <VoktFramework/Saving/VoktOutputPath.h>
#include <VoktFramework/Saving/VoktSaveBiff.h>
#include <VoktFramework/Stages/VoktHashClient.h>
#include <VoktFramework/Stages/VoktLoadQeli.h>
#include <VoktRigbake/Stages/VoktChangeUpAxis.h>
#include <VoktRigbake/Stages/VoktFindRootJoints.h>
#include <VoktRigbake/Stages/VoktRigbake.h>

using QelTools::Common::TextException;

namespace {

/// The file that the save stage opens for a name.
std::string OpenedFile(const std::string& name) {
    const std::string path = OutputSystemPath(name);
    return Platform::FullPath(path).value_or(path);
}

[[noreturn]] void RefuseInput(const std::string& output) {
    throw TextException("Output file \"" + output + "\" matches an input file.");
}

[[noreturn]] void RefuseDatabase(const char* what, const std::string& name) {
    throw TextException(std::string(what) + " file \"" + name +
                        "\" matches the registry's database.");
}

[[noreturn]] void RefuseLog(const std::string& output) {
    throw TextException("Output file \"" + output + "\" matches the log file.");
}

}  // namespace

void VoktRigbakeTool::AddComponents() {
    constexpr std::uint32_t kForAnimation = 1;
    constexpr std::uint32_t kDeclareFlags = 0;

    AddComponent(std::make_unique<VoktHashClient>());

    auto loader = std::make_unique<VoktLoadQeli>();
    loader->SetWanted(VokParse::Wanted::WhatABakeReads);
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
        throw TextException("ERROR: Input and output filenames are identical.");
    CheckSharedFiles();
}

void VoktRigbakeTool::CheckSharedFiles() const {
    using Platform::LeadToOneFile;
    const std::string& input = load->GetInputFilename();
    const std::vector<std::string> outputs = save->GetOutputFiles();
    const bool isPair = outputs.size() > 1;
    for (const std::string& output : outputs)
        if (isPair && LeadToOneFile(input, OpenedFile(output))) RefuseInput(output);
    if (isPair && LeadToOneFile(OpenedFile(outputs.front()), OpenedFile(outputs.back())))
        throw TextException("Big- and little-endian suffixes are the same.");
    if (const auto registryLog = VoktHashClient::GetLogFile()) {
        CheckLog(*registryLog);
        if (LeadToOneFile(logFileName, *registryLog))
            throw TextException("Log file \"" + logFileName +
                                "\" matches the registry's log file.");
    }
    for (const std::string& database : VoktHashClient::GetDatabaseFiles()) CheckDatabase(database);
    if (logFileName.empty()) return;
    CheckLog(logFileName);
    // What goes to standard output goes into the log, too.
    for (const std::string& output : outputs)
        if (Platform::NamesStandardOutput(OpenedFile(output))) RefuseLog(output);
}

/// The registry opens, empties and removes these as it likes.
void VoktRigbakeTool::CheckDatabase(const std::string& database) const {
    using Platform::LeadToOneFile;
    const std::string& input = load->GetInputFilename();
    if (LeadToOneFile(input, database)) RefuseDatabase("Input", input);
    for (const std::string& output : save->GetOutputFiles())
        if (LeadToOneFile(OpenedFile(output), database)) RefuseDatabase("Output", output);
    for (const std::string& log : {logFileName, VoktHashClient::GetLogFile().value_or("")})
        if (LeadToOneFile(log, database)) RefuseDatabase("Log", log);
}

void VoktRigbakeTool::CheckLog(const std::string& log) const {
    using Platform::LeadToOneFile;
    if (LeadToOneFile(load->GetInputFilename(), log)) RefuseInput(log);
    for (const std::string& output : save->GetOutputFiles())
        if (LeadToOneFile(OpenedFile(output), log)) RefuseLog(output);
}
