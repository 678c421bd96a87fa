#include "AnimUtil/ChannelTestTools.h"

#include <AnimUtil/Animation/CompressionFilter.h>
#include <AnimUtil/Animation/VokAnimUtil.h>
#include <VokLib/Objects/Animation/VokAnimDiscontinuities.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <tuple>

namespace VokAnimUtil {

namespace {

TEST(ConvertSamples, FewKeysWithinTheTolerance) {
    std::vector<float> samples;
    for (int i = 0; i <= 120; ++i) samples.push_back(static_cast<float>(std::sin(i / 30.0)));
    const auto sampled = MakeTimestep(1, 4, samples);
    sampled->SetChannel("rotateX");
    sampled->timeOffset = 10;
    CompressionFilterDefault filter;
    filter.baseTolerance = 0.001f;
    VokAnimChannel& channel = *sampled;
    ConvertTypeIfNeeded(channel, AnimInterp::QELHermite, &filter);
    EXPECT_LT(channel.numKeys, 16u);
    EXPECT_EQ(channel.keyTimes.front(), 10);
    EXPECT_EQ(channel.keyTimes.back(), 14);
    for (int i = 0; i <= 120; ++i) {
        float value = 0;
        Evaluate(&value, channel, std::min(14.0f, 10 + static_cast<float>(i) / 30.0f), nullptr);
        EXPECT_NEAR(value, samples[static_cast<std::size_t>(i)], 0.0015f);
    }
}

TEST(ConvertSamples, AStepBecomesTwoKeysAtOneTime) {
    const auto channel = MakeTimestep(1, 4, {0, 0, 8, 8, 8});
    auto* marks = new VokAnimDiscontinuities;
    channel->AddChild(marks);
    marks->Add(VokAnimDiscontinuities::Kind::Step, 2);
    marks->GetBefore(0)[0] = 0;
    marks->GetAfter(0)[0] = 8;
    ConvertTimestepToQelHermite(*channel, *channel, 0.001f, false, false, 0);
    EXPECT_EQ(channel->keyTimes, (std::vector<float>{0, 2, 2, 4}));
    EXPECT_EQ(channel->keyValues[0], 0);
    EXPECT_NEAR(channel->keyValues[1], 0, 1e-4f);
    EXPECT_NEAR(channel->keyValues[2], 8, 1e-4f);
    EXPECT_EQ(channel->keyValues[3], 8);
}

TEST(ConvertSamples, ACornerBetweenSamplesGoesInAtItsOwnTimeWithTheValueItHas) {
    // A corner that a document gives carries no value: its slice is zeros, and the curve goes
    // through zero there.
    const auto channel = MakeTimestep(1, 4, {5, 5, 5, 5, 5});
    auto* marks = new VokAnimDiscontinuities;
    channel->AddChild(marks);
    marks->Add(VokAnimDiscontinuities::Kind::Corner, 1.75f);
    ConvertTimestepToQelHermite(*channel, *channel, 0.001f, false, false, 0);
    float value = 1;
    Evaluate(&value, *channel, 1.75f, nullptr);
    EXPECT_NEAR(value, 0, 0.001f);
}

TEST(ConvertSamples, SnappingMovesAMarkToTheNearestSample) {
    const auto channel = MakeTimestep(1, 4, {0, 0, 8, 8, 8});
    auto* marks = new VokAnimDiscontinuities;
    channel->AddChild(marks);
    marks->Add(VokAnimDiscontinuities::Kind::Step, 1.75f);
    marks->GetAfter(0)[0] = 8;
    ConvertTimestepToQelHermite(*channel, *channel, 0.001f, false, true, 0);
    EXPECT_EQ(channel->keyTimes, (std::vector<float>{0, 2, 2, 4}));
}

TEST(ConvertSamples, ADrivenKeyNeedsItsInputChannelAndOneComponent) {
    const auto noChannel = MakeTimestep(1, 1, {0, 1, 0});
    noChannel->attributes.SetString("inputObject", "||a");
    EXPECT_EQ(TextThrownBy([&] {
                  ConvertTimestepToQelHermite(*noChannel, *noChannel, 0.001f, false, false, 0);
              }),
              "Channel has input object but no input channel.");
    const auto wide = MakeTimestep(2, 1, {0, 0, 1, 1, 0, 0});
    wide->attributes.SetString("inputObject", "||a");
    wide->attributes.SetString("inputChannel", "rotateX");
    EXPECT_EQ(
        TextThrownBy([&] { ConvertTimestepToQelHermite(*wide, *wide, 0.001f, false, false, 0); }),
        "Driven key animation with multiple channels. This is not supported.");
}

TEST(ConvertSamples, MoreThanFourComponentsFailInTheFitter) {
    const auto channel = MakeTimestep(5, 1, std::vector<float>(10));
    EXPECT_EQ(TextThrownBy([&] {
                  ConvertTimestepToQelHermite(*channel, *channel, 0.001f, false, false, 0);
              }),
              "component count must be between 1 and 4");
}

}  // namespace

}  // namespace VokAnimUtil
