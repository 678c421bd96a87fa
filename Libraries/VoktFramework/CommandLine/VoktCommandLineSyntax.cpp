#include <VoktFramework/CommandLine/VoktCommandLineSyntax.h>

#include <utility>

#include "CommandLine/CommandLineValue.h"

namespace {

constexpr const char* kEmptyFlag = "Attempt to get flag with empty name.";

bool HasName(const VoktCommandLineFlag& flag, std::string_view word) {
    return word == flag.name || (!flag.shortName.empty() && word == flag.shortName);
}

bool Matches(const VoktCommandLineFlag& flag, std::string_view word) {
    if (HasName(flag, word)) return true;
    return flag.attachedValue && (word.starts_with(flag.name) ||
                                  (!flag.shortName.empty() && word.starts_with(flag.shortName)));
}

}  // namespace

VoktCommandLineSyntax::Exception::Exception(std::string messageText)
    : message(std::move(messageText)) {}

const VoktCommandLineFlag* VoktCommandLineSyntax::FindForParse(std::string_view word) const {
    if (word.empty()) throw Exception(kEmptyFlag);
    for (const VoktCommandLineFlag& flag : flags)
        if (Matches(flag, word)) return &flag;
    return nullptr;
}

VoktCommandLineFlag* VoktCommandLineSyntax::FindForParse(std::string_view word) {
    return const_cast<VoktCommandLineFlag*>(std::as_const(*this).FindForParse(word));
}

const VoktCommandLineFlag* VoktCommandLineSyntax::FindExact(std::string_view word) const {
    if (word.empty()) throw Exception(kEmptyFlag);
    for (const VoktCommandLineFlag& flag : flags)
        if (HasName(flag, word)) return &flag;
    return nullptr;
}

void VoktCommandLineSyntax::AddFlag(const std::string& name, const std::string& shortName,
                                    const std::string& help, std::uint32_t options,
                                    const std::string& group) {
    const bool required = (options & kRequired) != 0;
    const bool multiUse = (options & kMultiUse) != 0;
    const bool shared = (options & kShared) != 0;
    const bool hidden = (options & kHidden) != 0;
    if (name.empty()) throw Exception("No verbose flag name specified.");
    if (hidden && required) throw Exception("Hidden flags must be optional.");

    VoktCommandLineFlag* known = FindForParse(name);
    if (known == nullptr && (shortName.empty() || FindForParse(shortName) == nullptr)) {
        VoktCommandLineFlag flag;
        flag.name = name;
        flag.shortName = shortName;
        flag.help = help;
        flag.group = group;
        flag.required = required;
        flag.multiUse = multiUse;
        flag.hidden = hidden;
        flag.shared = shared;
        flags.push_back(std::move(flag));
        return;
    }
    if (known == nullptr || known->name != name || known->shortName != shortName ||
        known->required != required || known->multiUse != multiUse || known->hidden != hidden ||
        !(known->shared || shared))
        throw Exception("Flag name \"" + name + "\" or short name \"" + shortName +
                        "\" used twice with conflicting arguments.");
    known->shared = true;
    known->redeclaredArguments = 0;
    // The values that follow are those of the last flag.
    if (known != &flags.back()) std::swap(*known, flags.back());
}

void VoktCommandLineSyntax::AddFlagArgument(VoktArgumentType type, const std::string& description,
                                            const std::string& name, bool required,
                                            const std::string& defaultValue) {
    if (flags.empty())
        throw Exception(
            "No flags to add argument to. Must call AddFlag before calling AddFlagArgument.");
    VoktCommandLineArgument argument;
    argument.type = type;
    argument.name = name;
    argument.description = description;
    argument.optional = !required;
    argument.defaultValue = defaultValue;

    VoktCommandLineFlag& flag = flags.back();
    if (flag.redeclaredArguments == -1) {
        flag.arguments.push_back(std::move(argument));
        return;
    }
    const auto index = static_cast<std::size_t>(flag.redeclaredArguments);
    if (index >= flag.arguments.size() ||
        flag.arguments[index].defaultValue != argument.defaultValue ||
        flag.arguments[index].optional != argument.optional ||
        flag.arguments[index].type != argument.type)
        throw Exception("Two definitions of flag \"" + flag.name +
                        "\" supply conflicting arguments.");
    ++flag.redeclaredArguments;
}

void VoktCommandLineSyntax::SetAttachedValue(bool attached) {
    if (flags.empty()) throw Exception("No flags to attach a value to. Must call AddFlag first.");
    flags.back().attachedValue = attached;
}

void VoktCommandLineSyntax::AddArgument(VoktArgumentType type, const std::string& description,
                                        const std::string& name, bool required,
                                        const std::string& defaultValue) {
    VoktCommandLineArgument argument;
    argument.type = type;
    argument.name = name;
    argument.description = description;
    argument.optional = !required;
    argument.defaultValue = defaultValue;
    argument.values.resize(1);
    argument.isSet.resize(1);
    arguments.push_back(std::move(argument));
}

bool VoktCommandLineSyntax::CheckFlagDefinitions() const {
    for (const VoktCommandLineFlag& flag : flags)
        if (flag.redeclaredArguments != -1 &&
            static_cast<std::size_t>(flag.redeclaredArguments) != flag.arguments.size())
            throw Exception("Two definitions of flag \"" + flag.name +
                            "\" supplied different numbers of arguments.");
    return false;
}

int VoktCommandLineSyntax::UsageCount(const std::string& flagName) const {
    if (flagName.empty()) throw Exception("Check for empty flag name.");
    const VoktCommandLineFlag* flag = FindExact(flagName);
    return flag == nullptr ? 0 : flag->usageCount;
}

const VoktCommandLineArgument& VoktCommandLineSyntax::FindArgument(const std::string& flagName,
                                                                   int argumentIndex) const {
    const VoktCommandLineFlag* flag = FindExact(flagName);
    if (flag == nullptr)
        throw Exception("Failed to find flag \"" + flagName +
                        "\" in syntax. Please submit a bug report.");
    if (argumentIndex < 0 || static_cast<std::size_t>(argumentIndex) >= flag->arguments.size())
        throw Exception("Flag \"" + flagName + "\" doesn't have an argument of index " +
                        std::to_string(argumentIndex) + ". Please submit a bug report.");
    return flag->arguments[static_cast<std::size_t>(argumentIndex)];
}

void VoktCommandLineSyntax::GetString(const std::string& flagName, int argumentIndex,
                                      std::string& out, int usage) const {
    out = CommandLineValue::Read(FindArgument(flagName, argumentIndex), usage);
}

void VoktCommandLineSyntax::GetBoolean(const std::string& flagName, int argumentIndex, bool& out,
                                       int usage) const {
    out = CommandLineValue::IsTrue(
        CommandLineValue::Read(FindArgument(flagName, argumentIndex), usage));
}

void VoktCommandLineSyntax::GetArgumentString(int argumentIndex, std::string& out) const {
    if (argumentIndex < 0 || static_cast<std::size_t>(argumentIndex) >= arguments.size())
        throw Exception("Argument index " + std::to_string(argumentIndex) +
                        " is out of range. Please submit a bug report.");
    out = CommandLineValue::Read(arguments[static_cast<std::size_t>(argumentIndex)], 0);
}
