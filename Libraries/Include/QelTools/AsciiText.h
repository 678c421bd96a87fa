#pragma once

#include <string>
#include <string_view>

/// Letter case by ASCII alone: no locale decides how a name compares or what it becomes.
namespace QelTools::Common {

constexpr char ToLowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

std::string ToLowerAscii(std::string_view text);

/// True when the two texts are equal but for ASCII letter case.
bool EqualsIgnoringCase(std::string_view a, std::string_view b);

}  // namespace QelTools::Common
