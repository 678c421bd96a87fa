#pragma once

#include <VoktFramework/CommandLine/VoktArgumentType.h>

#include <string>
#include <vector>

/// One declared value: of a flag, or a positional argument of the command line.
struct VoktCommandLineArgument {
    VoktArgumentType type = VoktArgumentType::String;
    std::string name;  ///< Shown in the help; when empty the kind's name is shown.
    std::string description;
    bool optional = false;            ///< The flag may stand without this value.
    std::vector<std::string> values;  ///< One slot for each usage of the flag.
    std::vector<bool> isSet;          ///< For each usage: a value was given.
    std::string defaultValue;         ///< What a usage without a value reads as.

    std::string DisplayName() const;
};

/// One declared flag and what the last parse saw of it.
struct VoktCommandLineFlag {
    std::string name;       ///< Verbose name with its dash; never empty.
    std::string shortName;  ///< Short name with its dash; may be empty.
    std::string help;
    std::string group;  ///< Heading in the help; empty for the plain heading.
    std::vector<VoktCommandLineArgument> arguments;
    bool required = false;
    bool multiUse = false;
    int usageCount = 0;
    bool attachedValue = false;  ///< Matches as a prefix; the rest of the word is its first value.
    bool hidden = false;         ///< Left out of the help.
    bool shared = false;         ///< Several components may declare this same flag.
    /// -1 normally; from a second declaration on, how many arguments that declaration has supplied.
    int redeclaredArguments = -1;

    std::string DisplayName() const;
};
