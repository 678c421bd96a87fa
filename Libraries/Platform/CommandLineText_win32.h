#pragma once

#include <Platform/Process.h>

#include <string>

namespace Platform {

/// The command line from which a program's start-up code takes exactly these words apart again.
/// Nothing in it has a meaning to this system itself, for no shell sees it.
std::string CommandLineText(const Command& command);

}  // namespace Platform
