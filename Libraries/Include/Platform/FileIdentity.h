#pragma once

#include <string>

namespace Platform {

/// True when two names, however spelled and through whatever links, lead to one regular file, or
/// would make one where neither is there yet. Devices and pipes take what several names send them.
bool LeadToOneFile(const std::string& a, const std::string& b);

}  // namespace Platform
