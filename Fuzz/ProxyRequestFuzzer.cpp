#include <HashClient/ProxyMessage.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <string_view>

// Anybody can write into the proxy's pipe: what is read of a request lies inside the bytes
// received, and every string that is taken can be answered with.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > ProxyMessage::kBufferSize) return 0;
    const auto message = std::make_unique<char[]>(size);
    std::copy_n(data, size, message.get());

    ProxyMessage::AddStringRequest strings;
    const ProxyMessage::Request kind = ProxyMessage::ReadRequest({message.get(), size}, strings);
    if (kind != ProxyMessage::Request::AddString) return 0;
    for (const std::string_view string :
         {strings.applicationName, strings.resourceName, strings.category, strings.string}) {
        if (string.data() == nullptr) continue;
        if (string.data() < message.get() || string.data() + string.size() >= message.get() + size)
            std::abort();
        if (string.data()[string.size()] != '\0') std::abort();
    }
    std::array<char, ProxyMessage::kBufferSize> reply;
    const std::size_t replySize =
        ProxyMessage::ComposeAddStringReply(reply, 0x12345678, strings.string);
    std::uint32_t hash = 0;
    std::span<const char> other;
    if (!ProxyMessage::ReadAddStringReply({reply.data(), replySize}, hash, other) ||
        std::string_view(other.data(), other.size()) != strings.string)
        std::abort();
    return 0;
}
