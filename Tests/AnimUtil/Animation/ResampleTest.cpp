#include <AnimUtil/Animation/VokAnimUtil.h>

#include <gtest/gtest.h>

#include <array>
#include <limits>

#include "AnimUtil/ChannelTestTools.h"

namespace VokAnimUtil {
namespace {

TEST(Resample, TakesSamplesFromZeroToTheLastKey) {
    const auto channel = MakeChannel(AnimInterp::QELHermite, 1, {0, 1}, {0, 4}, {4, 4});
    channel->hasTimeOffset = true;
    channel->timeOffset = 3;
    ResampleToTimestep(*channel, *channel, 4);
    EXPECT_EQ(channel->interp, AnimInterp::Timestep);
    EXPECT_EQ(channel->keyValues, (std::vector<float>{0, 1, 2, 3, 4}));
    EXPECT_EQ(channel->numKeys, 5u);
    EXPECT_EQ(channel->GetDuration(), 1);
    EXPECT_EQ(channel->timeOffset, 0);
    EXPECT_TRUE(channel->hasTimeOffset);
    EXPECT_TRUE(channel->keyTimes.empty());
    EXPECT_TRUE(channel->tangents[0].empty());
}

TEST(Resample, TakesAtLeastTwoSamples) {
    const auto channel = MakeChannel(AnimInterp::QELHermite, 1, {0, 1}, {0, 4}, {4, 4});
    ResampleToTimestep(*channel, *channel, 0.5f);
    EXPECT_EQ(channel->keyValues, (std::vector<float>{0, 4}));
}

TEST(Resample, AFirstKeyBehindZeroFails) {
    const auto channel = MakeChannel(AnimInterp::QELHermite, 1, {0.5f, 1}, {0, 4}, {4, 4});
    EXPECT_EQ(ThrownText([&] { ResampleToTimestep(*channel, *channel, 4); }),
              "Failed to find key index when evaluating animation value.");
}

TEST(Resample, AnEndlessChannelIsRefused) {
    const auto channel = MakeChannel(AnimInterp::QELHermite, 1, {0, 3e7f}, {0, 4}, {4, 4});
    EXPECT_EQ(ThrownText([&] { ResampleToTimestep(*channel, *channel, 60); }),
              "Anim channel is too long to be resampled: 1800000001 samples of 1 values; at most "
              "8388736 values can be held.");
}

TEST(Resample, MoreSamplesThan32BitsCountAreTwo) {
    for (const float duration : {1e9f, 3e38f}) {
        const auto channel = MakeChannel(AnimInterp::QELHermite, 1, {0, duration}, {0, 4}, {4, 4});
        ResampleToTimestep(*channel, *channel, 60);
        EXPECT_EQ(channel->keyValues, (std::vector<float>{0, 4}));
    }
}

TEST(Resample, SamplesAreTheCurveAtTheirTimes) {
    const auto was = MakeChannel(AnimInterp::QELHermite, 2, {0, 0.7f, 1.9f}, {1, 2, 3, 5, -1, 0},
                                 {0, 1, 2, -1, 0, 4});
    const auto out = std::make_unique<VokAnimChannel>();
    ResampleToTimestep(*out, *was, 60);
    EXPECT_EQ(out->numKeys, 115u);
    EXPECT_EQ(out->GetKeyStride(), 2u);
    for (unsigned i = 0; i < out->numKeys; ++i) {
        std::array<float, 2> value{};
        Evaluate(value.data(), *was, static_cast<float>(i) / 114.0f * 1.9f, nullptr);
        EXPECT_EQ(out->keyValues[2 * i], value[0]);
        EXPECT_EQ(out->keyValues[2 * i + 1], value[1]);
    }
    EXPECT_EQ(was->interp, AnimInterp::QELHermite);
}

TEST(Resample, ACurvesSamplesKeepTheStrideOfItsCoefficients) {
    const auto channel = MakeChannel(AnimInterp::QELCurve, 8, {0, 1},
                                     {1, 2, 1, 1, 0, 0, 0, 0, 2, 3, 0, 0, 0, 0, 0, 0});
    ResampleToTimestep(*channel, *channel, 2);
    EXPECT_EQ(channel->GetKeyStride(), 8u);
    EXPECT_EQ(channel->keyValues, (std::vector<float>{1, 2, 0, 0, 0, 0, 0, 0, 1.5f, 2.5f, 0, 0,
                                                      0, 0, 0, 0, 2, 3, 0, 0, 0,    0,    0, 0}));
}

TEST(Resample, TheLongestChannelIsBoundedToTheValue) {
    // 2^23 values and 64 for each of the eight; past that it is refused before anything is taken.
    const float longest = (8388608 + 64 * 8) / 4 - 1;
    const auto make = [](float duration) {
        return MakeChannel(AnimInterp::QELHermite, 4, {0, duration}, std::vector<float>(8),
                           std::vector<float>(8));
    };
    const auto held = make(longest);
    ResampleToTimestep(*held, *held, 1);
    EXPECT_EQ(held->keyValues.size(), 8389120u);
    const auto refused = make(longest + 1);
    EXPECT_EQ(ThrownText([&] { ResampleToTimestep(*refused, *refused, 1); }),
              "Anim channel is too long to be resampled: 2097281 samples of 4 values; at most "
              "8389120 values can be held.");
    EXPECT_EQ(refused->interp, AnimInterp::QELHermite);
}

TEST(Resample, AChannelOfSeveralHoursPasses) {
    const auto channel = MakeChannel(AnimInterp::QELHermite, 4, {0, 4 * 3600.0f},
                                     std::vector<float>(8), std::vector<float>(8));
    ResampleToTimestep(*channel, *channel, 60);
    EXPECT_EQ(channel->numKeys, 4u * 3600 * 60 + 1);
}

TEST(Resample, TimesThatAreNoNumbersGiveTwoSamplesOrFail) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();
    const auto endless = MakeChannel(AnimInterp::QELHermite, 1, {0, infinity}, {0, 4}, {0, 0});
    ResampleToTimestep(*endless, *endless, 60);
    EXPECT_EQ(endless->numKeys, 2u);
    const auto lost = MakeChannel(AnimInterp::QELHermite, 1, {0, nan}, {0, 4}, {0, 0});
    ResampleToTimestep(*lost, *lost, 60);
    EXPECT_EQ(lost->numKeys, 2u);
    const auto backwards = MakeChannel(AnimInterp::QELHermite, 1, {0, -5}, {0, 4}, {0, 0});
    EXPECT_EQ(ThrownText([&] { ResampleToTimestep(*backwards, *backwards, 60); }),
              "Failed to find key index when evaluating animation value.");
}

TEST(Resample, WhatHasNoKeysOrTimesIsRefused) {
    const auto none = MakeChannel(AnimInterp::QELHermite, 1, {}, {});
    EXPECT_EQ(ThrownText([&] { ResampleToTimestep(*none, *none, 60); }),
              "Anim channel has no keys.");
    const auto sampled = MakeTimestep(1, 1, {0, 1});
    EXPECT_EQ(ThrownText([&] { ResampleToTimestep(*sampled, *sampled, 60); }),
              "Anim channel has fewer key times than its number of keys asks for.");
}

}  // namespace
}  // namespace VokAnimUtil
