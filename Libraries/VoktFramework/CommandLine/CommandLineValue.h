#pragma once

#include <VoktFramework/CommandLine/VoktCommandLineFlag.h>

#include <string>

/// Values in the slots of a declared argument, one slot for each usage.
namespace CommandLineValue {

/// Puts `value` into the slot of `usage` when the argument's kind accepts it; throws a
/// VoktCommandLineSyntax::Exception when it does not, or when there is no such slot.
void Store(VoktCommandLineArgument& argument, const std::string& value, int usage);

/// The value of `usage`, or the default where none was given. Throws for a usage below 0.
const std::string& Read(const VoktCommandLineArgument& argument, int usage);

/// The truth of a boolean value: false for "false" in any letter case and for "0" alone, so "00"
/// and the empty text are true.
bool IsTrue(const std::string& text);

}  // namespace CommandLineValue
