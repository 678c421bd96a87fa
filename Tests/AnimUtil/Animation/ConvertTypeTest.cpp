#include <AnimUtil/Animation/CompressionFilter.h>
#include <AnimUtil/Animation/VokAnimUtil.h>

#include <gtest/gtest.h>

#include "AnimUtil/ChannelTestTools.h"

namespace VokAnimUtil {
namespace {

constexpr AnimInterp kKinds[] = {
    AnimInterp::Timestep,     AnimInterp::Linear,        AnimInterp::Flat,
    AnimInterp::Smooth,       AnimInterp::Tangent,       AnimInterp::WTangent,
    AnimInterp::SplitTangent, AnimInterp::WSplitTangent, AnimInterp::QELCurve,
    AnimInterp::QELHermite,
};

TEST(CanConvert, IsTheTable) {
    for (const AnimInterp target : kKinds) {
        for (const AnimInterp source : kKinds) {
            const bool curves = target >= AnimInterp::QELCurve;
            int expected = target == source ? 2 : 0;
            if (curves && source == AnimInterp::Timestep) expected = 1;
            if (curves && source >= AnimInterp::QELCurve) expected = 2;
            EXPECT_EQ(CanConvert(target, source), expected)
                << GetAnimInterpText(source) << " to " << GetAnimInterpText(target);
        }
    }
}

TEST(ConvertType, WhatHasNoWayIsNamed) {
    const auto channel = MakeChannel(AnimInterp::Smooth, 1, {0, 1}, {0, 1});
    EXPECT_EQ(ThrownText([&] { ConvertType(*channel, *channel, AnimInterp::QELCurve, nullptr); }),
              "Cannot convert animation from type \"Smooth\" to type \"QELCurve\".");
    EXPECT_EQ(channel->interp, AnimInterp::Smooth);
}

TEST(ConvertType, SamplesNeedAFilter) {
    const auto channel = MakeTimestep(1, 1, {0, 1});
    EXPECT_EQ(ThrownText([&] { ConvertType(*channel, *channel, AnimInterp::QELHermite, nullptr); }),
              "no compression filter");
}

TEST(CanConvert, WhatIsNoKindCannotBecomeAnything) {
    const auto none = static_cast<AnimInterp>(10);
    EXPECT_EQ(CanConvert(none, AnimInterp::Timestep), 0);
    EXPECT_EQ(CanConvert(AnimInterp::QELCurve, none), 0);
}

TEST(ConvertType, EveryPairWithoutAWayIsNamedAndLeavesTheOutputAlone) {
    const CompressionFilterDefault filter;
    for (const AnimInterp source : kKinds) {
        for (const AnimInterp target : kKinds) {
            if (CanConvert(target, source) != 0 && source != target) continue;
            const auto in = std::make_unique<VokAnimChannel>();
            in->interp = source;
            const auto out = MakeTimestep(1, 3, {1, 2});
            EXPECT_EQ(ThrownText([&] { ConvertType(*out, *in, target, &filter); }),
                      "Cannot convert animation from type \"" +
                          std::string(GetAnimInterpText(source)) + "\" to type \"" +
                          std::string(GetAnimInterpText(target)) + "\".");
            EXPECT_EQ(out->interp, AnimInterp::Timestep);
            EXPECT_EQ(out->keyValues, (std::vector<float>{1, 2}));
        }
    }
}

TEST(ConvertType, TheSameKindNeedsNothing) {
    for (const AnimInterp kind : kKinds) {
        const auto channel = std::make_unique<VokAnimChannel>();
        channel->interp = kind;
        ConvertTypeIfNeeded(*channel, kind, nullptr);
        EXPECT_EQ(channel->interp, kind);
    }
}

/// Tells what it was asked.
class AskedFilter : public CompressionFilterDefault {
  public:
    float GetTolerance(const std::string& name, const VokAnimChannel& channel) const override {
        asked += "tolerance of " + name + " " + channel.GetChannel() + ";";
        return CompressionFilterDefault::GetTolerance(name, channel);
    }
    mutable std::string asked;
};

TEST(ConvertType, TheFilterIsAskedByTheChannelsNameAndItsAnswersAreUsed) {
    const auto make = [] {
        std::vector<float> samples;
        for (int i = 0; i < 41; ++i) samples.push_back(static_cast<float>(i % 7));
        auto channel = MakeTimestep(1, 2, samples);
        channel->SetName("name");
        channel->SetChannel("text");
        return channel;
    };
    const auto loose = make(), tight = make(), looping = make(), few = make();
    AskedFilter filter;
    filter.baseTolerance = 100;
    ConvertTypeIfNeeded(*loose, AnimInterp::QELHermite, &filter);
    EXPECT_EQ(filter.asked, "tolerance of name text;");
    EXPECT_EQ(loose->numKeys, 2u);
    filter.baseTolerance = 0.001f;
    ConvertTypeIfNeeded(*tight, AnimInterp::QELHermite, &filter);
    EXPECT_GT(tight->numKeys, 10u);
    filter.looping = true;
    ConvertTypeIfNeeded(*looping, AnimInterp::QELHermite, &filter);
    EXPECT_NE(looping->tangents[0].front(), tight->tangents[0].front());
    filter.maxComplexity = -1;
    EXPECT_EQ(ThrownText([&] { ConvertTypeIfNeeded(*few, AnimInterp::QELHermite, &filter); }),
              "maximum solver complexity must be non-negative");
}

TEST(ConvertType, SamplesBecomeACurveByWayOfHermiteKeys) {
    CompressionFilterDefault filter;
    filter.baseTolerance = 0.001f;
    const auto direct = MakeTimestep(1, 2, {0, 1, 4, 9, 16});
    const auto inTwo = MakeTimestep(1, 2, {0, 1, 4, 9, 16});
    const auto in = MakeTimestep(1, 2, {0, 1, 4, 9, 16});
    const auto apart = std::make_unique<VokAnimChannel>();
    ConvertTypeIfNeeded(*direct, AnimInterp::QELCurve, &filter);
    ConvertTypeIfNeeded(*inTwo, AnimInterp::QELHermite, &filter);
    ConvertTypeIfNeeded(*inTwo, AnimInterp::QELCurve, nullptr);
    ConvertType(*apart, *in, AnimInterp::QELCurve, &filter);
    EXPECT_EQ(direct->keyValues, inTwo->keyValues);
    EXPECT_EQ(direct->keyValues, apart->keyValues);
    EXPECT_EQ(in->keyValues, (std::vector<float>{0, 1, 4, 9, 16}));
    EXPECT_EQ(in->interp, AnimInterp::Timestep);
}

}  // namespace
}  // namespace VokAnimUtil
