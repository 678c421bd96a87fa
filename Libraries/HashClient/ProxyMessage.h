#pragma once

#include <cstdint>
#include <span>

/// The messages of the proxy's pipe: 32-bit little-endian numbers, strings with their terminators,
/// and offsets that count from their own place.
namespace ProxyMessage {

inline constexpr std::uint32_t kAddStringReply = 0x80000000u;
inline constexpr std::uint32_t kShutdownReply = 0x80000002u;

/// Composes a request in `buffer`. Gives its size, or 0 when it does not fit.
std::size_t ComposeAddString(std::span<char> buffer, const char* applicationName,
                             const char* resourceName, const char* category, const char* string);
std::size_t ComposeShutdown(std::span<char> buffer);

/// The id of a reply; 0, which no reply has, when it is too short for one.
std::uint32_t ReplyId(std::span<const char> reply);

/// Reads a reply of id kAddStringReply. `other` is the colliding string, which ends at the latest
/// with the message, and without data when there is no collision. False when the reply is
/// malformed.
bool ReadAddStringReply(std::span<const char> reply, std::uint32_t& hash,
                        std::span<const char>& other);

}  // namespace ProxyMessage
