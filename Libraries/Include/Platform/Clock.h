#pragma once

#include <cstdint>
#include <string>

namespace Platform {

/// Whole milliseconds of a clock that never goes back. Only differences mean something; it wraps
/// like any 32-bit counter.
std::uint32_t ClockMilliseconds();

/// The local time of day as "HH:MM:SS".
std::string LocalTimeText();

}  // namespace Platform
