#pragma once

/// Sine and cosine of angles of many turns. The run-time libraries of some systems lose such
/// angles' last bits, or the angle itself; these are the same everywhere.
namespace LargeAngle {

/// From here on a library may be wrong in what single precision shows.
constexpr float kSmallest = 16384.0f;

struct SineAndCosine {
    double sine;
    double cosine;
};

/// For finite angles of at least kSmallest either way, in radians. Exact to about 50 bits.
SineAndCosine Take(float angle);

}  // namespace LargeAngle
