#pragma once

#include <string>

namespace Platform {

/// The system's own words for one of its error numbers.
std::string ErrorText(int error);

}  // namespace Platform
