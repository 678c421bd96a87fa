#include <Platform/FileTests.h>
#include <VoktFramework/CommandLine/VoktCommandLineSyntax.h>

#include <functional>
#include <optional>
#include <set>

#include "CommandLine/CommandLineValue.h"

namespace {

using Exception = VoktCommandLineSyntax::Exception;
using NameSet = std::set<std::string, std::less<>>;

// What follows the matching name in a word that is longer than it, for a flag whose first value
// may be attached.
std::optional<std::string> AttachedText(const VoktCommandLineFlag& flag, std::string_view word) {
    if (!flag.attachedValue || word == flag.name || word == flag.shortName) return std::nullopt;
    const std::string& name = word.starts_with(flag.name) ? flag.name : flag.shortName;
    return std::string(word.substr(name.size()));
}

void AddReadableInput(const std::string& value, NameSet& inputs) {
    if (!Platform::IsReadable(value))
        throw Exception("Input file \"" + value + "\" is not readable.");
    inputs.insert(value);
}

void CheckWritable(const std::string& value) {
    if (!Platform::IsWritable(value))
        throw Exception("Output file \"" + value + "\" is not writable.");
}

void CheckNotAnInput(const std::string& value, const NameSet& inputs) {
    if (inputs.contains(value))
        throw Exception("Output file \"" + value + "\" matches an input file.");
}

// Visits the value of every argument of one kind, for each usage of each flag.
template <class Visit>
void ForEachFlagValue(const std::vector<VoktCommandLineFlag>& flags, VoktArgumentType type,
                      Visit visit) {
    for (const VoktCommandLineFlag& flag : flags)
        for (int usage = 0; usage < flag.usageCount; ++usage)
            for (const VoktCommandLineArgument& argument : flag.arguments)
                if (argument.type == type) visit(CommandLineValue::Read(argument, usage));
}

template <class Visit>
void ForEachPositionalValue(const std::vector<VoktCommandLineArgument>& arguments,
                            VoktArgumentType type, Visit visit) {
    for (const VoktCommandLineArgument& argument : arguments)
        if (argument.type == type && !argument.values.empty())
            visit(CommandLineValue::Read(argument, 0));
}

}  // namespace

void VoktCommandLineSyntax::Parse(int argc, const char* const* argv, int first) {
    CheckFlagDefinitions();
    ResetValues();
    ParseWords(argc, argv, first);
    CheckRequired();
    CheckFiles();
}

void VoktCommandLineSyntax::ResetValues() {
    for (VoktCommandLineFlag& flag : flags) {
        flag.usageCount = 0;
        for (VoktCommandLineArgument& argument : flag.arguments) {
            argument.values.clear();
            argument.isSet.clear();
        }
    }
    for (VoktCommandLineArgument& argument : arguments) {
        argument.values.assign(1, {});
        argument.isSet.assign(1, false);
    }
}

void VoktCommandLineSyntax::ParseWords(int argc, const char* const* argv, int first) {
    std::size_t position = 0;
    for (int at = first; at < argc; ++at) {
        const std::string word = argv[at];
        if (VoktCommandLineFlag* flag = FindForParse(word)) {
            ++flag->usageCount;
            if (flag->usageCount > 1 && !flag->multiUse)
                throw Exception("Single use flag \"" + flag->DisplayName() +
                                "\" given multiple times.");
            ParseFlagValues(*flag, argc, argv, at);
            continue;
        }
        if (arguments.empty()) throw Exception("Unknown flag \"" + word + "\".");
        if (position == arguments.size())
            throw Exception("Unexpected command line argument \"" + word + "\".");
        CommandLineValue::Store(arguments[position], word, 0);
        ++position;
    }
}

void VoktCommandLineSyntax::ParseFlagValues(VoktCommandLineFlag& flag, int argc,
                                            const char* const* argv, int& at) {
    const std::string word = argv[at];
    std::optional<std::string> attached = AttachedText(flag, word);
    for (VoktCommandLineArgument& argument : flag.arguments) {
        argument.values.emplace_back();
        argument.isSet.push_back(false);
        if (argument.optional && !reservedFlagNames)
            throw Exception("An argument of \"" + word +
                            "\" is optional but flag names are not reserved. This makes it "
                            "impossible to tell if an optional flag argument has been specified.");
        std::string value;
        if (attached.has_value()) {
            value = std::move(*attached);
            attached.reset();
        } else {
            ++at;
            if (at >= argc) {
                if (argument.optional) return;
                throw Exception("Missing argument on flag \"" + word + "\".");
            }
            value = argv[at];
            if (reservedFlagNames && !value.empty() && FindForParse(value) != nullptr) {
                if (!argument.optional)
                    throw Exception("Missing argument on flag \"" + word +
                                    "\". (Or argument has same name as a flag).");
                --at;
                return;
            }
        }
        CommandLineValue::Store(argument, value, flag.usageCount - 1);
    }
}

void VoktCommandLineSyntax::CheckRequired() const {
    for (const VoktCommandLineFlag& flag : flags)
        if (flag.required && flag.usageCount == 0)
            throw Exception("A required flag \"" + flag.DisplayName() + "\" was not set.");
    for (const VoktCommandLineArgument& argument : arguments)
        if (!argument.optional && !argument.isSet.at(0))
            throw Exception("A required command line argument <" + argument.DisplayName() +
                            "> was not provided.");
}

void VoktCommandLineSyntax::CheckFiles() const {
    NameSet inputs;
    const auto addInput = [&](const std::string& value) { AddReadableInput(value, inputs); };
    ForEachFlagValue(flags, VoktArgumentType::InputFilename, addInput);
    ForEachPositionalValue(arguments, VoktArgumentType::InputFilename, addInput);

    const auto checkOutput = [&](const std::string& value, bool skipWritable) {
        if (!skipWritable) CheckWritable(value);
        if (!allowOutputMatchingInput) CheckNotAnInput(value, inputs);
    };
    ForEachFlagValue(flags, VoktArgumentType::OutputFilename,
                     [&](const std::string& value) { checkOutput(value, skipFlagOutputChecks); });
    ForEachPositionalValue(arguments, VoktArgumentType::OutputFilename,
                           [&](const std::string& value) { checkOutput(value, false); });
}
