#include "ProxyMessage.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

namespace ProxyMessage {

namespace {

constexpr std::uint32_t kAddStringRequest = 0;
constexpr std::uint32_t kShutdownRequest = 2;
constexpr std::size_t kWord = 4;
constexpr std::size_t kHeader = 2 * kWord;

constexpr std::size_t kHashPlace = 8;
constexpr std::size_t kOtherPlace = 12;

void PutWord(std::span<char> buffer, std::size_t at, std::size_t value) {
    for (std::size_t i = 0; i < kWord; ++i)
        buffer[at + i] = static_cast<char>(static_cast<unsigned char>(value >> (8 * i)));
}

std::uint32_t GetWord(std::span<const char> buffer, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < kWord; ++i)
        value |= std::uint32_t{static_cast<unsigned char>(buffer[at + i])} << (8 * i);
    return value;
}

// A header of id and size, one offset for each string, then the strings back to back.
std::size_t Compose(std::span<char> buffer, std::uint32_t id,
                    std::span<const std::string_view> strings) {
    const std::size_t firstString = kHeader + kWord * strings.size();
    std::size_t size = firstString;
    for (const std::string_view string : strings) size += string.size() + 1;
    if (size > buffer.size()) return 0;

    PutWord(buffer, 0, id);
    PutWord(buffer, kWord, size);
    std::size_t at = firstString;
    for (std::size_t i = 0; i < strings.size(); ++i) {
        const std::size_t place = kHeader + kWord * i;
        PutWord(buffer, place, at - place);
        std::copy(strings[i].begin(), strings[i].end(),
                  buffer.begin() + static_cast<std::ptrdiff_t>(at));
        at += strings[i].size();
        buffer[at++] = '\0';
    }
    return size;
}

}  // namespace

std::size_t ComposeAddString(std::span<char> buffer, const char* applicationName,
                             const char* resourceName, const char* category, const char* string) {
    const std::array<std::string_view, 4> strings{applicationName, resourceName, category, string};
    return Compose(buffer, kAddStringRequest, strings);
}

std::size_t ComposeShutdown(std::span<char> buffer) {
    const std::array<std::string_view, 1> strings{"shutdown"};
    return Compose(buffer, kShutdownRequest, strings);
}

std::uint32_t ReplyId(std::span<const char> reply) {
    return reply.size() < kWord ? 0 : GetWord(reply, 0);
}

bool ReadAddStringReply(std::span<const char> reply, std::uint32_t& hash,
                        std::span<const char>& other) {
    other = {};
    if (reply.size() < kOtherPlace + kWord || ReplyId(reply) != kAddStringReply) return false;
    const std::uint32_t offset = GetWord(reply, kOtherPlace);
    if (offset >= reply.size() - kOtherPlace) return false;
    hash = GetWord(reply, kHashPlace);
    if (offset == 0) return true;
    const std::span<const char> text = reply.subspan(kOtherPlace + offset);
    const auto end = std::find(text.begin(), text.end(), '\0');
    other = text.first(static_cast<std::size_t>(end - text.begin()));
    return true;
}

}  // namespace ProxyMessage
