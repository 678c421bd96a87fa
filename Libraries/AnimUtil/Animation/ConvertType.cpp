#include <AnimUtil/Animation/CompressionFilter.h>
#include <AnimUtil/Animation/VokAnimUtil.h>
#include <VokLib/Objects/Animation/VokAnimChannel.h>
#include <VokLib/Tree/ThrowVokException.h>

#include <cstddef>
#include <string>

namespace VokAnimUtil {

namespace {

/// Row: the kind to become; column: the kind that is there.
constexpr int kConversions[10][10] = {
    {2, 0, 0, 0, 0, 0, 0, 0, 0, 0}, {0, 2, 0, 0, 0, 0, 0, 0, 0, 0}, {0, 0, 2, 0, 0, 0, 0, 0, 0, 0},
    {0, 0, 0, 2, 0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 2, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 2, 0, 0, 0, 0},
    {0, 0, 0, 0, 0, 0, 2, 0, 0, 0}, {0, 0, 0, 0, 0, 0, 0, 2, 0, 0}, {1, 0, 0, 0, 0, 0, 0, 0, 2, 2},
    {1, 0, 0, 0, 0, 0, 0, 0, 2, 2},
};

void ConvertFromTimestep(VokAnimChannel& out, const VokAnimChannel& in, AnimInterp target,
                         const CompressionFilter* filter) {
    if (filter == nullptr) ThrowVokException("no compression filter", &in);
    const std::string& name = in.GetName();
    ConvertTimestepToQelHermite(out, in, filter->GetTolerance(name, in),
                                filter->GetLooping(name, in), filter->GetSnapToSamples(name, in),
                                filter->GetMaxComplexity(name, in), filter->GetEffort());
    if (target == AnimInterp::QELCurve) ConvertType(out, out, target, filter);
}

}  // namespace

int CanConvert(AnimInterp target, AnimInterp source) {
    const auto row = static_cast<std::size_t>(target);
    const auto column = static_cast<std::size_t>(source);
    return row < 10 && column < 10 ? kConversions[row][column] : 0;
}

void ConvertTypeIfNeeded(VokAnimChannel& channel, AnimInterp target,
                         const CompressionFilter* filter) {
    if (channel.interp != target) ConvertType(channel, channel, target, filter);
}

void ConvertType(VokAnimChannel& out, const VokAnimChannel& in, AnimInterp target,
                 const CompressionFilter* filter) {
    const bool toCurve = target == AnimInterp::QELCurve;
    const bool toHermite = target == AnimInterp::QELHermite;
    if (in.interp == AnimInterp::Timestep && (toCurve || toHermite))
        ConvertFromTimestep(out, in, target, filter);
    else if (in.interp == AnimInterp::QELCurve && toHermite)
        ConvertQelCurveToQelHermite(out, in);
    else if (in.interp == AnimInterp::QELHermite && toCurve)
        ConvertQelHermiteToQelCurve(out, in);
    else
        ThrowVokException("Cannot convert animation from type \"" +
                              std::string(GetAnimInterpText(in.interp)) + "\" to type \"" +
                              std::string(GetAnimInterpText(target)) + "\".",
                          &in);
}

}  // namespace VokAnimUtil
