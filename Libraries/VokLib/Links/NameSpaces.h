#pragma once

#include <string_view>

/// What stands in front of the last colon of an object's name; empty without a colon.
inline std::string_view NameSpaceOf(std::string_view name) {
    const std::size_t colon = name.rfind(':');
    return colon == std::string_view::npos ? std::string_view() : name.substr(0, colon);
}
