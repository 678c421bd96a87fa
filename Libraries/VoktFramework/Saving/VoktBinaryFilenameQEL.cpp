#include <VoktFramework/Saving/VoktBinaryFilenameQEL.h>

VoktBinaryFilenameQEL::~VoktBinaryFilenameQEL() noexcept(false) = default;

void VoktBinaryFilenameQEL::ToBinaryFilename(std::string& out, const std::string& path) {
    // The backslash comes last: behind one, a slash is part of the name.
    for (const char separator : {'/', '\\'}) {
        const std::size_t last = path.rfind(separator);
        if (last != std::string::npos) out = path.substr(last + 1);
    }
}
