#pragma once

#include <string>

namespace Platform {

/// True when two names, however spelled and through whatever links, lead to one regular file, or
/// would make one where neither is there yet. Devices and pipes take what several names send them.
bool LeadToOneFile(const std::string& a, const std::string& b);

/// True when what is written under a name comes where standard output goes: the name is one of the
/// system's for standard output itself, or leads to the file, pipe or terminal that it goes to.
/// Other devices take what several names send them. On Windows files alone are told.
bool LeadsToStandardOutput(const std::string& path);

}  // namespace Platform
