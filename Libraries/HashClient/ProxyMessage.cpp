#include <HashClient/ProxyMessage.h>

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
constexpr std::size_t kStringsOfARequest = 4;
constexpr std::size_t kAddStringHeader = kHeader + kWord * kStringsOfARequest;

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

// The string whose offset stands at `place`; without data when there is none. False when it does
// not lie behind the header and end inside the message.
bool ReadString(std::span<const char> message, std::size_t place, std::string_view& string) {
    string = {};
    const std::size_t offset = GetWord(message, place);
    if (offset == 0) return true;
    if (offset >= message.size() - place || place + offset < kAddStringHeader) return false;
    const std::span<const char> text = message.subspan(place + offset);
    const auto end = std::find(text.begin(), text.end(), '\0');
    if (end == text.end()) return false;
    string = std::string_view(text.data(), static_cast<std::size_t>(end - text.begin()));
    return true;
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

Platform::PipeAddress PipeAddress() {
    return {"QelHashProxy", "QelHashProxy_pipe"};
}

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

Request ReadRequest(std::span<const char> request, AddStringRequest& strings) {
    strings = {};
    if (request.size() < kHeader || GetWord(request, kWord) != request.size())
        return Request::Malformed;
    const std::uint32_t id = GetWord(request, 0);
    if (id == kShutdownRequest) return Request::Shutdown;
    if (id != kAddStringRequest || request.size() < kAddStringHeader) return Request::Malformed;
    std::size_t place = kHeader;
    for (std::string_view* const string :
         {&strings.applicationName, &strings.resourceName, &strings.category, &strings.string}) {
        if (!ReadString(request, place, *string)) return Request::Malformed;
        place += kWord;
    }
    const bool complete = strings.category.data() != nullptr && strings.string.data() != nullptr;
    return complete ? Request::AddString : Request::Malformed;
}

std::size_t ComposeAddStringReply(std::span<char> buffer, std::uint32_t hash,
                                  std::optional<std::string_view> other) {
    constexpr std::size_t kFixed = kOtherPlace + kWord;
    const std::size_t size = kFixed + (other.has_value() ? other->size() + 1 : 0);
    if (size > buffer.size()) return 0;
    PutWord(buffer, 0, kAddStringReply);
    PutWord(buffer, kWord, size);
    PutWord(buffer, kHashPlace, hash);
    PutWord(buffer, kOtherPlace, other.has_value() ? kWord : 0);
    if (other.has_value()) {
        std::copy(other->begin(), other->end(), buffer.begin() + kFixed);
        buffer[size - 1] = '\0';
    }
    return size;
}

std::size_t ComposeShutdownReply(std::span<char> buffer) {
    if (buffer.size() < kHeader) return 0;
    PutWord(buffer, 0, kShutdownReply);
    PutWord(buffer, kWord, kHeader);
    return kHeader;
}

}  // namespace ProxyMessage
