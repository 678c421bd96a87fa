#include <VoktFramework/CommandLine/VoktCommandLineFlag.h>

std::string VoktCommandLineArgument::DisplayName() const {
    return name.empty() ? VoktArgumentTypeName(type) : name;
}

std::string VoktCommandLineFlag::DisplayName() const {
    return name.empty() ? shortName : name;
}
