#pragma once

namespace Platform {

/// The name under which every folder of this system has the null device.
constexpr const char* kNullDevice = "NUL";

}  // namespace Platform
