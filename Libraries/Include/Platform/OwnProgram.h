#pragma once

#include <cstdint>
#include <string>

namespace Platform {

/// The full path of the running program's file; empty when the system cannot tell it.
std::string OwnProgramFile();

/// The name of that file without its folders; empty when the system cannot tell it.
std::string OwnProgramName();

/// The number by which the system knows this process.
std::uint32_t OwnProcessId();

}  // namespace Platform
