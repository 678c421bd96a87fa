#include "Animation/ChannelChecks.h"

#include <AnimUtil/Animation/VokAnimUtil.h>
#include <AnimUtil/LeastSquares/CurveFitter.h>
#include <VokLib/Objects/Animation/VokAnimChannel.h>
#include <VokLib/Objects/Animation/VokAnimDiscontinuities.h>
#include <VokLib/Tree/ThrowVokException.h>
#include <VokLib/Tree/VokCast.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace VokAnimUtil {

namespace {

using Qel::LeastSquares::Components;
using Qel::LeastSquares::CurveFitter;
using Qel::LeastSquares::CurveSegment;
using Qel::LeastSquares::FitEffort;
using Qel::LeastSquares::TooMuchEffort;

Components Pad(std::span<const float> values) {
    Components padded{};
    std::copy_n(values.begin(), std::min(values.size(), padded.size()), padded.begin());
    return padded;
}

/// Feeds the samples of a Timestep channel to the fitter, with its corners and steps where they
/// belong.
class SampleFeeder {
  public:
    SampleFeeder(CurveFitter& curveFitter, const VokAnimChannel& sampled, bool snap)
        : fitter(curveFitter),
          channel(sampled),
          snapToSamples(snap),
          duration(sampled.GetDuration()) {
        for (std::size_t i = channel.GetChildCount(); i-- > 0 && marks == nullptr;)
            marks = ExactCast<VokAnimDiscontinuities>(channel.GetChild(i));
        const std::size_t count = marks == nullptr ? 0 : marks->GetCount();
        while (cursor < count && !(marks->GetDiscontinuity(cursor).time > 0)) ++cursor;
    }

    void Run() {
        for (long long i = 0; i < static_cast<long long>(channel.numKeys); ++i) Feed(i);
    }

  private:
    using Kind = VokAnimDiscontinuities::Kind;

    float TimeOf(long long i) const {
        return static_cast<float>(i) / static_cast<float>(channel.numKeys - 1) * duration;
    }

    void Feed(long long i) {
        const float time = TimeOf(i);

        merged.clear();
        const std::size_t count = marks == nullptr ? 0 : marks->GetCount();
        for (; cursor < count; ++cursor) {
            const auto mark = marks->GetDiscontinuity(cursor);
            if (mark.time > duration) break;
            const float distance = std::fabs(time - mark.time);
            // A mark that another sample is nearer to waits for that one.
            if (std::fabs(TimeOf(i - 1) - mark.time) <= distance ||
                std::fabs(TimeOf(i + 1) - mark.time) < distance)
                break;
            if (!snapToSamples && distance >= 0.0001f)
                AddAtItsOwnTime(mark);
            else
                merged.push_back(mark);
        }
        if (merged.empty()) {
            const unsigned stride = channel.GetKeyStride();
            fitter.AddSample(time, Pad(std::span(channel.keyValues)
                                           .subspan(static_cast<std::size_t>(i) * stride, stride)));
        } else {
            AddMerged(time);
        }
    }

    void AddAtItsOwnTime(const VokAnimDiscontinuities::Discontinuity& mark) {
        if (mark.kind == Kind::Corner)
            fitter.AddCorner(mark.time, Pad(mark.before));
        else if (mark.kind == Kind::Step)
            fitter.AddStep(mark.time, Pad(mark.before), Pad(mark.after));
        else
            ThrowVokException(QelTools::Common::kInternalErrorText, &channel);
    }

    /// Several marks at one sample are one: from what stands before the first to what stands after
    /// the last. More than one, or a step among them, make a step.
    void AddMerged(float time) {
        const VokAnimDiscontinuities::Discontinuity& first = merged.front();
        const Components before = Pad(first.before);
        Components after = Pad(first.after);
        bool isStep = first.kind == Kind::Step;
        for (std::size_t i = 1; i < merged.size(); ++i) {
            const VokAnimDiscontinuities::Discontinuity& mark = merged[i];
            after = Pad(mark.kind == Kind::Step ? mark.after : mark.before);
            isStep = true;
        }
        if (isStep)
            fitter.AddStep(time, before, after);
        else
            fitter.AddCorner(time, before);
    }

    CurveFitter& fitter;
    const VokAnimChannel& channel;
    bool snapToSamples;
    float duration;
    const VokAnimDiscontinuities* marks = nullptr;
    std::size_t cursor = 0;
    std::vector<VokAnimDiscontinuities::Discontinuity> merged;
};

std::vector<CurveSegment> Solve(CurveFitter& fitter, const FitEffort* effort,
                                const VokAnimChannel& channel) {
    std::vector<CurveSegment> segments;
    try {
        fitter.Solve(segments);
    } catch (const TooMuchEffort&) {
        ThrowVokException(
            "Anim channels are too long together to be fitted: at most " +
                std::to_string(effort->GetMost()) +
                " looks at samples can be taken, and those that hold a value for long take many.",
            &channel);
    }
    return segments;
}

/// The segments of a curve as keys: where a segment does not run on from the one before it, two
/// keys at one time.
struct HermiteKeys {
    HermiteKeys(const std::vector<CurveSegment>& segments, std::size_t stride, float timeOffset)
        : n(stride), offset(timeOffset) {
        Append(segments.front().startTime, segments.front().startPosition,
               segments.front().startTangent);
        for (std::size_t s = 1; s < segments.size(); ++s) {
            const CurveSegment& a = segments[s - 1];
            const CurveSegment& b = segments[s];
            if (a.endPosition != b.startPosition || a.endTangent != b.startTangent)
                Append(a.endTime, a.endPosition, a.endTangent);
            Append(b.startTime, b.startPosition, b.startTangent);
        }
        Append(segments.back().endTime, segments.back().endPosition, segments.back().endTangent);
    }

    void Append(float time, const Components& value, const Components& tangent) {
        times.push_back(time + offset);
        values.insert(values.end(), value.begin(), value.begin() + static_cast<std::ptrdiff_t>(n));
        tangents.insert(tangents.end(), tangent.begin(),
                        tangent.begin() + static_cast<std::ptrdiff_t>(n));
    }

    std::size_t n;
    float offset;
    std::vector<float> times;
    std::vector<float> values;
    std::vector<float> tangents;
};

/// A driven key keeps what drives it.
void CopyInput(VokAnimChannel& out, const VokAnimChannel& in) {
    if (!in.IsDrivenKey()) return;
    if (!in.attributes.Has("inputChannel"))
        ThrowVokException("Channel has input object but no input channel.", &in);
    if (in.GetKeyStride() != 1)
        ThrowVokException("Driven key animation with multiple channels. This is not supported.",
                          &in);
    const std::string object = in.attributes.GetString("inputObject");
    const std::string channel = in.attributes.GetString("inputChannel");
    out.attributes.SetString("inputObject", object);
    out.attributes.SetString("inputChannel", channel);
}

}  // namespace

void ConvertTimestepToQelHermite(VokAnimChannel& out, const VokAnimChannel& in, float tolerance,
                                 bool looping, bool snapToSamples, int maxComplexity,
                                 FitEffort* effort) {
    CheckHasKeys(in);
    CheckValues(in);
    const unsigned stride = in.GetKeyStride();
    CurveFitter fitter;
    fitter.SetTolerance(tolerance);
    fitter.SetLooping(looping);
    fitter.SetComponentCount(stride > 4 ? 5 : static_cast<int>(stride));
    fitter.SetMaxSolverComplexity(maxComplexity);
    fitter.SetEffort(effort);
    SampleFeeder(fitter, in, snapToSamples).Run();
    const std::vector<CurveSegment> segments = Solve(fitter, effort, in);

    HermiteKeys keys(segments, stride, in.timeOffset);
    out.SetChannel(in.GetChannel());
    CopyInput(out, in);
    out.interp = AnimInterp::QELHermite;
    out.SetKeyStride(stride);
    out.numKeys = static_cast<unsigned>(keys.times.size());
    out.keyTimes = std::move(keys.times);
    out.keyValues = std::move(keys.values);
    out.tangents[0] = std::move(keys.tangents);
    out.tangents[1].clear();
    for (auto* array : {&out.keyTimes, &out.keyValues, &out.tangents[0]}) array->shrink_to_fit();
}

}  // namespace VokAnimUtil
