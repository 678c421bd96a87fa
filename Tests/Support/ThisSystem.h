#pragma once

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <string>

/// For the few expectations that are not the same on every system.
inline constexpr bool kIsWindows = std::filesystem::path::preferred_separator != '/';

/// What takes everything and keeps nothing.
inline constexpr const char* kNullDevice = kIsWindows ? "NUL" : "/dev/null";

/// What parts two folders in PATH.
inline constexpr const char* kBetweenFolders = kIsWindows ? ";" : ":";

/// The variable in which the user's name stands.
inline constexpr const char* kUserVariable = kIsWindows ? "USERNAME" : "USER";

/// This system's numbers of what befalls a pipe.
inline constexpr std::uint32_t kPipeIsNotConnected = kIsWindows ? 233 : ENOTCONN;
inline constexpr std::uint32_t kPipeMessageIsTooLong = kIsWindows ? 234 : EMSGSIZE;
inline constexpr std::uint32_t kPipeIsNotOpen = kIsWindows ? 6 : EBADF;

/// A path as this system writes it.
inline std::string WithSeparators(const std::string& path) {
    return std::filesystem::path(path).make_preferred().string();
}

/// Text with line feeds alone, for a system whose text files have more at the ends of lines.
inline std::string WithLineFeeds(std::string text) {
    if (kIsWindows) std::erase(text, '\r');
    return text;
}
