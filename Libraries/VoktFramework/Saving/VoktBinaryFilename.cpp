#include <VoktFramework/Errors/VoktError.h>
#include <VoktFramework/Saving/VoktBinaryFilename.h>

namespace {

constexpr int kUnimplementedVirtualMethod = 203;

}  // namespace

VoktBinaryFilename::VoktBinaryFilename() = default;

VoktBinaryFilename::~VoktBinaryFilename() noexcept(false) = default;

void VoktBinaryFilename::ToSystemFilename() {
    throw VoktError(kUnimplementedVirtualMethod,
                    "Attempt to get from binary filename to usable system filename failed because "
                    "the current version of the singleton does not implement that method.");
}
