#include <VoktFramework/Errors/VoktError.h>
#include <VoktFramework/Saving/VoktBinaryFilename.h>

VoktBinaryFilename::VoktBinaryFilename() = default;

VoktBinaryFilename::~VoktBinaryFilename() noexcept(false) = default;

void VoktBinaryFilename::ToSystemFilename() {
    throw VoktError(VoktErrorId::UnimplementedMethod,
                    "Attempt to get from binary filename to usable system filename failed because "
                    "the current version of the singleton does not implement that method.");
}
