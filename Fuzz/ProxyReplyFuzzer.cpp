#include <HashClient/ProxyMessage.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>

// A reply of the hash registry's proxy is trusted for nothing: what is read lies inside the bytes
// received.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto message = std::make_unique<char[]>(size);
    std::copy_n(data, size, message.get());
    const std::span<const char> reply(message.get(), size);

    std::uint32_t hash = 0;
    std::span<const char> other;
    if (!ProxyMessage::ReadAddStringReply(reply, hash, other)) return 0;
    if (ProxyMessage::ReplyId(reply) != ProxyMessage::kAddStringReply) std::abort();
    if (other.data() != nullptr &&
        (other.data() < reply.data() || other.data() + other.size() > reply.data() + size))
        std::abort();
    if (std::find(other.begin(), other.end(), '\0') != other.end()) std::abort();
    return 0;
}
