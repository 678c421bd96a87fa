#include <VoktFramework/CommandLine/VoktArgumentType.h>

const char* VoktArgumentTypeName(VoktArgumentType type) {
    switch (type) {
        case VoktArgumentType::Boolean:
            return "boolean";
        case VoktArgumentType::Integer:
            return "integer";
        case VoktArgumentType::UnsignedInt:
            return "unsigned int";
        case VoktArgumentType::Float:
            return "float";
        case VoktArgumentType::String:
            return "string";
        case VoktArgumentType::InputFilename:
        case VoktArgumentType::OutputFilename:
            return "filename";
    }
    return "";
}
