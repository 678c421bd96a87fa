#pragma once

#include <string>

/// Both separators of file names become one of them.
namespace SlashText {

/// Library-wide: file names are folded to lower case where a form says so.
inline constexpr bool kFoldFilenames = true;

/// `text` in lower case when names are folded, else as it stands.
std::string Fold(const std::string& text);

/// Every backslash becomes a slash, then each run of slashes one slash.
std::string NormaliseToSlashes(std::string text);
/// The mirror image.
std::string NormaliseToBackslashes(std::string text);

}  // namespace SlashText
