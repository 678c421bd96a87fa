#include "CommandLine/CommandLineValue.h"

#include <QelTools/AsciiText.h>
#include <VokLib/Text/VokNumberText.h>
#include <VoktFramework/CommandLine/VoktCommandLineSyntax.h>

namespace {

[[noreturn]] void ThrowUsageOutOfRange(int usage) {
    throw VoktCommandLineSyntax::Exception("Flag usage index " + std::to_string(usage) +
                                           " is out of range. Please submit a bug report.");
}

// Deliberately loose: a number at the front is enough, whatever follows it. Hexadecimal text needs
// no test of its own, for its leading 0 is a number.
bool ReadsAsInteger(const std::string& value) {
    int ignored = 0;
    return VokNumberText::TryScanInt(value, ignored);
}

bool ReadsAsFloat(const std::string& value) {
    float ignored = 0.0f;
    return VokNumberText::TryScanFloat(value, ignored);
}

bool ReadsAsBoolean(const std::string& value) {
    return QelTools::Common::EqualsIgnoringCase(value, "true") ||
           QelTools::Common::EqualsIgnoringCase(value, "false") || ReadsAsInteger(value);
}

// What is wrong with a value, as the end of a sentence behind the quoted value; null when nothing.
const char* FindFault(VoktArgumentType type, const std::string& value) {
    switch (type) {
        case VoktArgumentType::Boolean:
            if (ReadsAsBoolean(value)) return nullptr;
            return " is not a boolean, i.e. \"true\", \"false\", \"0\" or \"1\".";
        case VoktArgumentType::Integer:
            return ReadsAsInteger(value) ? nullptr : " is not an integer.";
        case VoktArgumentType::UnsignedInt:
            if (!ReadsAsInteger(value)) return " is not a non-negative integer.";
            if (value.front() == '-') return " is negative, expected a non-negative value.";
            return nullptr;
        case VoktArgumentType::Float:
            return ReadsAsFloat(value) ? nullptr : " is not a floating point value.";
        case VoktArgumentType::String:
        case VoktArgumentType::InputFilename:
        case VoktArgumentType::OutputFilename:
            return nullptr;
    }
    return nullptr;
}

}  // namespace

namespace CommandLineValue {

void Store(VoktCommandLineArgument& argument, const std::string& value, int usage) {
    if (usage < 0 || static_cast<std::size_t>(usage) >= argument.values.size())
        ThrowUsageOutOfRange(usage);
    if (const char* fault = FindFault(argument.type, value))
        throw VoktCommandLineSyntax::Exception("\"" + value + "\"" + fault);
    argument.values[static_cast<std::size_t>(usage)] = value;
    argument.isSet[static_cast<std::size_t>(usage)] = true;
}

const std::string& Read(const VoktCommandLineArgument& argument, int usage) {
    if (usage < 0) ThrowUsageOutOfRange(usage);
    const auto slot = static_cast<std::size_t>(usage);
    if (slot >= argument.isSet.size() || !argument.isSet[slot]) return argument.defaultValue;
    return argument.values[slot];
}

bool IsTrue(const std::string& text) {
    return !QelTools::Common::EqualsIgnoringCase(text, "false") && text != "0";
}

}  // namespace CommandLineValue
