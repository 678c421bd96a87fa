#include <Platform/FileTests.h>
#include <QelTools/Exception.h>
#include <VokLib/Document/VokParse.h>
#include <VokLib/Document/VokUpdate.h>
#include <VoktFramework/Atoms/VoktAtomVokWorld.h>
#include <VoktFramework/Atoms/VoktUniverse.h>
#include <VoktFramework/CommandLine/VoktCommandLineSyntax.h>
#include <VoktFramework/Errors/VoktError.h>
#include <VoktFramework/Errors/VoktErrorHandler.h>
#include <VoktFramework/Stages/VoktLoadQeli.h>

#include <memory>
#include <utility>

namespace {

constexpr int kQuiet = 0;
constexpr int kVerbose = 2;
constexpr const char* kAutoUpdate = "-autoupdate";
constexpr const char* kVerboseLoad = "-verboseload";
constexpr const char* kQuietLoad = "-quietload";

}  // namespace

VoktLoadQeli::VoktLoadQeli() = default;

VoktLoadQeli::~VoktLoadQeli() noexcept(false) = default;

void VoktLoadQeli::AddFlags(VoktCommandLineSyntax& syntax) {
    syntax.AddFlag(InputFlag(), "-" + shortFlagName, flagHelp, required);
    syntax.AddFlagArgument(VoktArgumentType::InputFilename);
    // Shared, so that a second loader in the same tool can declare them too.
    syntax.AddFlag(kAutoUpdate, "-au",
                   "Whether to automatically update out-of-date qeli files on load",
                   VoktCommandLineSyntax::kShared);
    syntax.AddFlagArgument(VoktArgumentType::Boolean);
    syntax.AddFlag(kVerboseLoad, "-vl", "Enable progress messages when loading qeli files.",
                   VoktCommandLineSyntax::kShared);
    syntax.AddFlag(kQuietLoad, "-ql", "Disable all messages when loading qeli files.",
                   VoktCommandLineSyntax::kShared);
    VoktComponent::AddFlags(syntax);
}

void VoktLoadQeli::ReadFlags(const VoktCommandLineSyntax& syntax) {
    ReadValueFlags(syntax, {InputFlag(), kAutoUpdate});
    ReadSwitchFlags(syntax, {kVerboseLoad, kQuietLoad});
    VoktComponent::ReadFlags(syntax);
}

void VoktLoadQeli::SetFlag(const std::string& name, const std::string& value) {
    if (name == InputFlag()) {
        inputFilename = value;
    } else if (name == kAutoUpdate) {
        // Only the lower case word is false, although the parser takes others.
        autoUpdate = value != "0" && value != "false";
    } else if (name == kVerboseLoad) {
        VokUpdate::Get().SetVerbosity(kVerbose);
    } else if (name == kQuietLoad) {
        VokUpdate::Get().SetVerbosity(kQuiet);
    } else {
        throw VoktError(VoktErrorId::UnhandledArgument, name);
    }
}

void VoktLoadQeli::Validate() {
    std::string faults;
    if (!inputFilename.empty() && !Platform::IsReadable(inputFilename))
        faults += "Input file \"" + inputFilename + "\" is not readable.\n";
    if (inputFilename.empty() && required == VoktCommandLineSyntax::kRequired)
        faults += "No input filename provided.\n";
    if (!faults.empty()) QelTools::Common::ThrowException(faults);
}

std::string VoktLoadQeli::GetWorldName() const {
    return flagName == "in" ? "world" : flagName;
}

void VoktLoadQeli::Process(VoktUniverse& universe) {
    if (inputFilename.empty()) return;
    VoktErrorHandler::Get().SetContext(inputFilename);
    auto atom = std::make_unique<VoktAtomVokWorld>();
    VokWorld& world = atom->world;
    universe.Add(std::move(atom), GetWorldName());
    VokParse reader;
    reader.SetAllowUpdate(autoUpdate);
    reader.SetWanted(wanted);
    reader.ParseFile(world, inputFilename);
}
