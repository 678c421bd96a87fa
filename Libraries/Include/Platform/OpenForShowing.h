#pragma once

#include <string>

namespace Platform {

/// Has the desktop show a file with the program that the user set up for it, and does not wait.
/// Nothing happens where there is no desktop.
void OpenForShowing(const std::string& path);

}  // namespace Platform
