#include "AnimUtil/ChannelTestTools.h"

#include <AnimUtil/Animation/VokAnimUtil.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <tuple>

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

TEST(ConvertType, HermiteBecomesTheSameCubic) {
    const auto channel = MakeChannel(AnimInterp::QELHermite, 1, {0, 2}, {1, 5}, {3, -1});
    ConvertType(*channel, *channel, AnimInterp::QELCurve, nullptr);
    EXPECT_EQ(channel->interp, AnimInterp::QELCurve);
    EXPECT_EQ(channel->GetKeyStride(), 4u);
    EXPECT_EQ(channel->numKeys, 2u);
    EXPECT_EQ(channel->keyTimes, (std::vector<float>{0, 2}));
    EXPECT_EQ(channel->keyValues, (std::vector<float>{1, 3, 0.5f, -0.5f, 5, 0, 0, 0}));
    EXPECT_TRUE(channel->tangents[0].empty());
}

TEST(ConvertType, TwoKeysAtOneTimeAreNoSegment) {
    const auto channel =
        MakeChannel(AnimInterp::QELHermite, 1, {0, 1, 1, 2}, {0, 1, 5, 6}, {1, 1, 1, 1});
    ConvertQelHermiteToQelCurve(*channel, *channel);
    EXPECT_EQ(channel->keyTimes, (std::vector<float>{0, 1, 2}));
    EXPECT_EQ(channel->keyValues, (std::vector<float>{0, 1, 0, 0, 5, 1, 0, 0, 6, 0, 0, 0}));
}

TEST(ConvertType, ComponentsOfACurveKeyStandBlockByBlock) {
    const auto channel =
        MakeChannel(AnimInterp::QELHermite, 2, {0, 1}, {0, 10, 1, 12}, {1, 2, 1, 2});
    ConvertQelHermiteToQelCurve(*channel, *channel);
    EXPECT_EQ(channel->keyValues,
              (std::vector<float>{0, 10, 1, 2, 0, 0, 0, 0, 1, 12, 0, 0, 0, 0, 0, 0}));
}

TEST(ConvertType, ACurveGoesToHermiteAndBackWithinRounding) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> value(-2, 2);
    std::vector<float> times, values, tangents;
    for (int i = 0; i < 50; ++i) {
        times.push_back(static_cast<float>(i) * 0.75f);
        values.push_back(value(random));
        tangents.push_back(value(random));
    }
    const auto channel = MakeChannel(AnimInterp::QELHermite, 1, times, values, tangents);
    ConvertTypeIfNeeded(*channel, AnimInterp::QELCurve, nullptr);
    const std::vector<float> cubic = channel->keyValues;
    ConvertTypeIfNeeded(*channel, AnimInterp::QELHermite, nullptr);
    ConvertTypeIfNeeded(*channel, AnimInterp::QELCurve, nullptr);
    // Where rounding parts a segment from the next key, the two meet in a key of their own and
    // nothing else changes.
    ASSERT_EQ(channel->keyTimes, times);
    ASSERT_EQ(channel->keyValues.size(), cubic.size());
    // The last segment is left out: its end tangent comes from the last key's own coefficients,
    // which are zeros.
    for (std::size_t i = 0; i + 8 < cubic.size(); ++i)
        EXPECT_NEAR(channel->keyValues[i], cubic[i], 2e-4f) << i;
}

TEST(ConvertType, ABrokenCurveGetsAKeyWithTheNextValueAndItsOwnTangent) {
    // The first segment ends at 1 with slope 1; the second begins at 3 with slope 0.
    const auto channel =
        MakeChannel(AnimInterp::QELCurve, 4, {0, 1, 2}, {0, 1, 0, 0, 3, 0, 0, 0, 3, 0, 0, 0});
    ConvertType(*channel, *channel, AnimInterp::QELHermite, nullptr);
    EXPECT_EQ(channel->keyTimes, (std::vector<float>{0, 1, 1, 2}));
    EXPECT_EQ(channel->keyValues, (std::vector<float>{0, 3, 3, 3}));
    EXPECT_EQ(channel->tangents[0], (std::vector<float>{1, 1, 0, 0}));
    EXPECT_EQ(channel->numKeys, 4u);
    EXPECT_EQ(channel->GetKeyStride(), 1u);
}

TEST(ConvertType, TheLastSegmentIsNeverBroken) {
    const auto channel = MakeChannel(AnimInterp::QELCurve, 4, {0, 2}, {0, 1, 0, 0, 3, 5, 1, 1});
    ConvertQelCurveToQelHermite(*channel, *channel);
    EXPECT_EQ(channel->keyTimes, (std::vector<float>{0, 2}));
    EXPECT_EQ(channel->keyValues, (std::vector<float>{0, 3}));
    // The last key's tangent is made of its own coefficients over the last segment's length.
    EXPECT_EQ(channel->tangents[0], (std::vector<float>{1, (2 * 4 + 5 * 2 + 3 * 8) / 2.0f}));
}

TEST(ConvertType, WrongKindsAreRefusedByOneText) {
    const auto channel = MakeTimestep(1, 1, {0, 1});
    EXPECT_EQ(TextThrownBy([&] { ConvertQelCurveToQelHermite(*channel, *channel); }),
              "Input animation type is not QelHermite.");
    EXPECT_EQ(TextThrownBy([&] { ConvertQelHermiteToQelCurve(*channel, *channel); }),
              "Input animation type is not QelHermite.");
}

TEST(ConvertType, WhatHasNoWayIsNamed) {
    const auto channel = MakeChannel(AnimInterp::Smooth, 1, {0, 1}, {0, 1});
    EXPECT_EQ(TextThrownBy([&] { ConvertType(*channel, *channel, AnimInterp::QELCurve, nullptr); }),
              "Cannot convert animation from type \"Smooth\" to type \"QELCurve\".");
    EXPECT_EQ(channel->interp, AnimInterp::Smooth);
}

TEST(ConvertType, SamplesNeedAFilter) {
    const auto channel = MakeTimestep(1, 1, {0, 1});
    EXPECT_EQ(
        TextThrownBy([&] { ConvertType(*channel, *channel, AnimInterp::QELHermite, nullptr); }),
        "no compression filter");
}

TEST(ConvertType, ChannelsWithoutKeysAreRefused) {
    const auto hermite = MakeChannel(AnimInterp::QELHermite, 1, {}, {});
    EXPECT_EQ(TextThrownBy([&] { ConvertQelHermiteToQelCurve(*hermite, *hermite); }),
              "Anim channel has no keys.");
    const auto curve = MakeChannel(AnimInterp::QELCurve, 4, {}, {});
    EXPECT_EQ(TextThrownBy([&] { ConvertQelCurveToQelHermite(*curve, *curve); }),
              "Anim channel has no keys.");
}

}  // namespace

}  // namespace VokAnimUtil
