#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// How the keys of a channel are laid out and what lies between them.
enum class AnimInterp : std::uint32_t {
    Timestep = 0,
    Linear = 1,
    Flat = 2,
    Smooth = 3,
    Tangent = 4,
    WTangent = 5,
    SplitTangent = 6,
    WSplitTangent = 7,
    QELCurve = 8,
    QELHermite = 9,
};

/// Nothing for a text that is none of the ten.
std::optional<AnimInterp> FindAnimInterp(std::string_view text);
/// Empty for a value that is none of the ten.
std::string_view GetAnimInterpText(AnimInterp interp);
