#pragma once

#include <string>

/// Arithmetic on the text of file names. A slash and a backslash both separate; nothing needs to
/// exist.
namespace VokPathText {

std::string MakeRelativePath(const std::string& path, const std::string& base);
std::string MakeAbsolutePath(const std::string& path, const std::string& base);
std::string TidyAbsolutePath(const std::string& path, const std::string& base);

}  // namespace VokPathText
