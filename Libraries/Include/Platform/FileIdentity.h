#pragma once

#include <string>

namespace Platform {

/// True when two names, however spelled and through whatever links, lead to one regular file, or
/// would make one where neither is there yet. Devices and pipes take what several names send them.
bool LeadToOneFile(const std::string& a, const std::string& b);

/// True for a name, or a link to one, that the system takes for whatever standard output is when it
/// is opened, such as /dev/stdout: while output is captured that leads into the log. Windows has no
/// such names.
bool NamesStandardOutput(const std::string& path);

}  // namespace Platform
