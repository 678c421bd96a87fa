#include <VoktFramework/CommandLine/VoktCommandLineSyntax.h>
#include <VoktFramework/Errors/VoktError.h>
#include <VoktFramework/Saving/VoktSave.h>

namespace {

constexpr const char* kForceWrite = "-forceWrite";

}  // namespace

VoktSave::VoktSave(std::uint32_t hide) : hideFlags(hide) {}

VoktSave::~VoktSave() noexcept(false) = default;

void VoktSave::AddFlags(VoktCommandLineSyntax& syntax) {
    if (hideFlags == 1) return;
    syntax.AddFlag(kForceWrite, "-fw", "Attempt to make writable/check out read-only output files");
    syntax.AddFlagArgument(VoktArgumentType::Boolean);
    syntax.SetSkipFlagOutputChecks(true);
    VoktComponent::AddFlags(syntax);
}

void VoktSave::ReadFlags(const VoktCommandLineSyntax& syntax) {
    ReadValueFlags(syntax, {kForceWrite});
    VoktComponent::ReadFlags(syntax);
}

void VoktSave::SetFlag(const std::string& name, const std::string& value) {
    if (name != kForceWrite) throw VoktError(VoktErrorId::UnhandledArgument, name);
    // Only the lower case word is false, although the parser takes others.
    forceWrite = value != "0" && value != "false";
}
