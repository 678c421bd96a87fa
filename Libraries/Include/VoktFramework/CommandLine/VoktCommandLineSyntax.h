#pragma once

#include <VoktFramework/CommandLine/VoktCommandLineFlag.h>

#include <cstdint>
#include <exception>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

/// A declarative command line. Components declare flags and their values; Parse checks a whole line
/// against the declarations; components then read the values back by name. The order of use is:
/// declare, CheckFlagDefinitions, Parse, read. Every failure of this class is a
/// VoktCommandLineSyntax::Exception.
class VoktCommandLineSyntax {
  public:
    class Exception : public std::exception {
      public:
        explicit Exception(std::string messageText);
        const char* what() const noexcept override { return message.c_str(); }

      private:
        std::string message;
    };

    /// Option bits of AddFlag.
    static constexpr std::uint32_t kRequired = 1;
    static constexpr std::uint32_t kMultiUse = 2;
    static constexpr std::uint32_t kShared = 4;
    static constexpr std::uint32_t kHidden = 8;

    /// The width of the help where there is no console to ask.
    static constexpr int kDefaultWidth = 79;

    // Declarations.

    /// Declares a flag; names carry their dash, `shortName` may be empty, `options` are option bits
    /// or-ed together. A second declaration of the same flag is accepted where one of the two says
    /// shared and both agree; the AddFlagArgument calls that follow are then checked against the
    /// first.
    void AddFlag(const std::string& name, const std::string& shortName, const std::string& help,
                 std::uint32_t options = 0, const std::string& group = {});
    /// Adds a value to the flag declared last.
    void AddFlagArgument(VoktArgumentType type, const std::string& description = {},
                         const std::string& name = {}, bool required = true,
                         const std::string& defaultValue = {});
    /// Makes the flag declared last match as a prefix, the rest of the word being its first value
    /// ("-Ipath").
    void SetAttachedValue(bool attached);
    /// Adds a positional argument behind those declared before.
    void AddArgument(VoktArgumentType type, const std::string& description = {},
                     const std::string& name = {}, bool required = true,
                     const std::string& defaultValue = {});
    /// False; throws when two declarations of one flag supplied different numbers of values.
    bool CheckFlagDefinitions() const;

    // Switches, with their values at first.

    /// true: a word that names a flag is never taken as a flag's value.
    void SetReservedFlagNames(bool reserved) { reservedFlagNames = reserved; }
    /// false: the help adds one line for each value to a flag's text.
    void SetDescribeArguments(bool describe) { describeArguments = describe; }
    /// false: the help shows hidden flags.
    void SetShowHidden(bool show) { showHidden = show; }
    /// false: an output may be the same name as an input.
    void SetAllowOutputMatchingInput(bool allow) { allowOutputMatchingInput = allow; }
    /// false: outputs of flags need not be writable, because a component judges them itself.
    void SetSkipFlagOutputChecks(bool skip) { skipFlagOutputChecks = skip; }

    /// Reads the words `argv[first]` to `argv[argc - 1]` and checks them: names, usage counts,
    /// kinds of values, required flags, readable inputs, writable outputs, outputs that are inputs.
    /// What an earlier parse left is forgotten first. After a failure the values read so far stand
    /// as they are.
    void Parse(int argc, const char* const* argv, int first);

    // Reading. A flag is asked for by its verbose or its short name. `usage` counts the times that
    // it was given from 0; a usage without a value reads as the declared default.

    /// How often the flag was given; 0 for an unknown flag.
    int UsageCount(const std::string& flagName) const;
    bool IsSet(const std::string& flagName) const { return UsageCount(flagName) > 0; }
    void GetString(const std::string& flagName, int argumentIndex, std::string& out,
                   int usage = 0) const;
    /// False for "false" in any letter case and for "0"; true for all else, the empty text
    /// included.
    void GetBoolean(const std::string& flagName, int argumentIndex, bool& out, int usage = 0) const;
    /// The positional argument at `argumentIndex`.
    void GetArgumentString(int argumentIndex, std::string& out) const;

    /// Prints the help to std::cout, as wide as the console on standard output less one column, or
    /// kDefaultWidth wide.
    void PrintHelp() const;
    /// Prints the help to `out`, `width` columns wide. It ends for every width.
    void PrintHelp(std::ostream& out, int width) const;

  private:
    const VoktCommandLineFlag* FindForParse(std::string_view word) const;
    VoktCommandLineFlag* FindForParse(std::string_view word);
    const VoktCommandLineFlag* FindExact(std::string_view word) const;
    const VoktCommandLineArgument& FindArgument(const std::string& flagName,
                                                int argumentIndex) const;

    void ResetValues();
    void ParseWords(int argc, const char* const* argv, int first);
    void ParseFlagValues(VoktCommandLineFlag& flag, int argc, const char* const* argv, int& at);
    void CheckRequired() const;
    void CheckFiles() const;

    std::vector<VoktCommandLineFlag> flags;
    std::vector<VoktCommandLineArgument> arguments;
    bool reservedFlagNames = true;
    bool describeArguments = false;
    bool showHidden = false;
    bool allowOutputMatchingInput = false;
    bool skipFlagOutputChecks = false;
};
