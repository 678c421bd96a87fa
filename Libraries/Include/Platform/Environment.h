#pragma once

#include <optional>
#include <string>

namespace Platform {

/// The value of an environment variable as bytes; nothing when it is not set.
std::optional<std::string> Environment(const std::string& name);

}  // namespace Platform
