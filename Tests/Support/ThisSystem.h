#pragma once

#include <filesystem>
#include <string>

/// For the few expectations that are not the same on every system.
inline constexpr bool kIsWindows = std::filesystem::path::preferred_separator != '/';

/// What parts two folders in PATH.
inline constexpr const char* kBetweenFolders = kIsWindows ? ";" : ":";

/// A path as this system writes it.
inline std::string WithSeparators(const std::string& path) {
    return std::filesystem::path(path).make_preferred().string();
}

/// Text with line feeds alone, for a system whose text files have more at the ends of lines.
inline std::string WithLineFeeds(std::string text) {
    if (kIsWindows) std::erase(text, '\r');
    return text;
}
