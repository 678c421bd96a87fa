#pragma once

#include <Platform/MessagePipe.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

/// The messages of the proxy's pipe: 32-bit little-endian numbers, strings with their terminators,
/// and offsets that count from their own place, 0 standing for no string. Nothing that a message
/// says about itself is believed: what is read lies inside the bytes received.
namespace ProxyMessage {

/// No message is larger.
inline constexpr std::size_t kBufferSize = 4096;

inline constexpr std::uint32_t kAddStringReply = 0x80000000u;
inline constexpr std::uint32_t kShutdownReply = 0x80000002u;

/// The pipe at which the proxy serves.
Platform::PipeAddress PipeAddress();

/// The client's side.

/// Composes a request in `buffer`. Gives its size, or 0 when it does not fit.
std::size_t ComposeAddString(std::span<char> buffer, const char* applicationName,
                             const char* resourceName, const char* category, const char* string);
std::size_t ComposeShutdown(std::span<char> buffer);

/// The id of a reply; 0, which no reply has, when it is too short for one.
std::uint32_t ReplyId(std::span<const char> reply);

/// Reads a reply of id kAddStringReply. `other` is the colliding string, which ends at the latest
/// with the message, and without data when there is no collision. False when the reply is
/// malformed.
[[nodiscard]] bool ReadAddStringReply(std::span<const char> reply, std::uint32_t& hash,
                                      std::span<const char>& other);

/// The proxy's side.

enum class Request { AddString, Shutdown, Malformed };

/// The strings of a request, inside its bytes; a name that it does not give is empty.
struct AddStringRequest {
    std::string_view applicationName;
    std::string_view resourceName;
    std::string_view category;
    std::string_view string;
};

/// Tells what a request asks for and, for AddString, fills `strings`. Malformed are those that are
/// cut off or longer than they say, and those whose strings do not end within the message.
Request ReadRequest(std::span<const char> request, AddStringRequest& strings);

/// Composes a reply in `buffer`, with the colliding string if there is one. Gives its size, or 0
/// when it does not fit.
std::size_t ComposeAddStringReply(std::span<char> buffer, std::uint32_t hash,
                                  std::optional<std::string_view> other);
std::size_t ComposeShutdownReply(std::span<char> buffer);

}  // namespace ProxyMessage
