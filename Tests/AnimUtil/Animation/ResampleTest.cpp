#include "AnimUtil/ChannelTestTools.h"

#include <AnimUtil/Animation/VokAnimUtil.h>

#include <gtest/gtest.h>

#include <cmath>

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
    EXPECT_EQ(TextThrownBy([&] { ResampleToTimestep(*channel, *channel, 4); }),
              "Failed to find key index when evaluating animation value.");
}

TEST(Resample, AnEndlessChannelIsRefused) {
    const auto channel = MakeChannel(AnimInterp::QELHermite, 1, {0, 3e7f}, {0, 4}, {4, 4});
    EXPECT_EQ(TextThrownBy([&] { ResampleToTimestep(*channel, *channel, 60); }),
              "Anim channel is too long to be resampled: 1800000001 samples of 1 values; at most "
              "67108864 values can "
              "be held.");
}

}  // namespace

}  // namespace VokAnimUtil
