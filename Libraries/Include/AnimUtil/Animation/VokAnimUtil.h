#pragma once

#include <AnimUtil/LeastSquares/FitEffort.h>
#include <VokLib/Objects/Animation/AnimInterp.h>

#include <cstddef>

class VokAnim;
class VokAnimChannel;

/// Reading the value of an animation channel at a time, and changing how its keys are laid out.
/// Arithmetic on keys is single precision.
///
/// What fails throws a VokException with the channel's path: besides the texts below a channel
/// whose arrays are shorter than its number of keys asks for, or which has no keys.
namespace VokAnimUtil {

class CompressionFilter;

/// Whether a channel of kind `source` can become kind `target`: 0 it cannot, 1 only with a
/// compression filter, for it loses precision, 2 it can.
int CanConvert(AnimInterp target, AnimInterp source);

/// The index of the key whose segment holds `time`, or -1 when it lies outside the keys; the last
/// key's time falls in the last segment. `keyHint` may be null; with it, a series of rising times
/// is cheap.
int FindKeyIndex(const VokAnimChannel& channel, float time, unsigned* keyHint);

/// How many floats Evaluate gives: the stride, and a quarter of it for QELCurve, whose keys hold
/// four coefficients.
unsigned GetComponentCount(const VokAnimChannel& channel);

/// The value at `time` into `result`, which has room for GetComponentCount floats. A time outside
/// the keys throws "Failed to find key index when evaluating animation value."; a Timestep channel
/// takes its first or last sample there. Kinds other than Timestep, QELCurve and QELHermite throw
/// "Evaluate not yet implemented for animations of type ...".
void Evaluate(float* result, const VokAnimChannel& channel, float time, unsigned* keyHint);

/// How many values a channel may have after it was resampled: these, and so many for each value of
/// its keys. At 60 samples to the unit these alone are a quaternion over 34,952 units of time.
inline constexpr std::size_t kMaxResampledValues = std::size_t{1} << 23;
inline constexpr std::size_t kResampledValuesPerValue = 64;

/// Makes `out` the samples of `in`, which is no Timestep channel, from time 0 to its last key,
/// `samplesPerUnit` for each unit of time and at least two. `out` and `in` may be one channel. More
/// values than may be held throw "Anim channel is too long to be resampled: ...".
void ResampleToTimestep(VokAnimChannel& out, const VokAnimChannel& in, float samplesPerUnit);

/// Nothing when the channel has that kind already, else ConvertType in place.
void ConvertTypeIfNeeded(VokAnimChannel& channel, AnimInterp target,
                         const CompressionFilter* filter);

/// Makes `out` what `in` holds, as kind `target`. `filter` may be null where CanConvert gives 2.
/// `out` and `in` may be one channel; after a failure it is then undefined. Throws "no compression
/// filter" and "Cannot convert animation from type ...".
void ConvertType(VokAnimChannel& out, const VokAnimChannel& in, AnimInterp target,
                 const CompressionFilter* filter);

/// Fits the samples of `in` by as few keys as `tolerance` allows. Where `effort` is not null and
/// exceeds its limit throws "Anim channels are too long together to be fitted: ...".
void ConvertTimestepToQelHermite(VokAnimChannel& out, const VokAnimChannel& in, float tolerance,
                                 bool looping, bool snapToSamples, int maxComplexity,
                                 Qel::LeastSquares::FitEffort* effort = nullptr);
void ConvertQelCurveToQelHermite(VokAnimChannel& out, const VokAnimChannel& in);
void ConvertQelHermiteToQelCurve(VokAnimChannel& out, const VokAnimChannel& in);

/// Turns the "translate" channels (three values) and the "rotate" channels (a quaternion) of an
/// animation by a quarter turn from Z up to Y up, in place and in child order. A channel that is
/// not Timestep is sampled 60 times for each unit of time and fitted again with tolerance 1e-6, so
/// that its keys are new. Driven keys, rotations of another stride and all other channels stay as
/// they are; a translation of another stride throws "Unexpected stride for anim channel: " and the
/// channel's text. After a failure the channels in front of the failing one are turned.
void Transform(VokAnim& anim);

/// What the animations of one document have been sampled into and what their fits cost, so that
/// many channels are not a way round the limit of one.
struct ResampledTotal {
    std::size_t values = 0;
    std::size_t most = std::size_t{1} << 26;  ///< grows with the keys of the channels
    Qel::LeastSquares::FitEffort fits = {};
};

/// The same, as one of several animations. More values in all than may be held throw "Anim channels
/// are too long together to be resampled: ...".
void Transform(VokAnim& anim, ResampledTotal& total);

}  // namespace VokAnimUtil
