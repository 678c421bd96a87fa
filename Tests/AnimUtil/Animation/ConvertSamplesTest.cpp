#include <AnimUtil/Animation/CompressionFilter.h>
#include <AnimUtil/Animation/VokAnimUtil.h>
#include <VokLib/Objects/Animation/VokAnimDiscontinuities.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "AnimUtil/ChannelTestTools.h"

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
    EXPECT_EQ(ThrownText([&] {
                  ConvertTimestepToQelHermite(*noChannel, *noChannel, 0.001f, false, false, 0);
              }),
              "Channel has input object but no input channel.");
    const auto wide = MakeTimestep(2, 1, {0, 0, 1, 1, 0, 0});
    wide->attributes.SetString("inputObject", "||a");
    wide->attributes.SetString("inputChannel", "rotateX");
    EXPECT_EQ(
        ThrownText([&] { ConvertTimestepToQelHermite(*wide, *wide, 0.001f, false, false, 0); }),
        "Driven key animation with multiple channels. This is not supported.");
}

TEST(ConvertSamples, MoreThanFourComponentsFailInTheFitter) {
    const auto channel = MakeTimestep(5, 1, std::vector<float>(10));
    EXPECT_EQ(ThrownText([&] {
                  ConvertTimestepToQelHermite(*channel, *channel, 0.001f, false, false, 0);
              }),
              "component count must be between 1 and 4");
}

void Fit(VokAnimChannel& channel) {
    ConvertTimestepToQelHermite(channel, channel, 0.001f, false, false, 0);
}

VokAnimDiscontinuities& AddMarks(VokAnimChannel& channel) {
    auto* marks = new VokAnimDiscontinuities;
    channel.AddChild(marks);
    return *marks;
}

TEST(ConvertSamples, AMarkNearerThanATenThousandthBelongsToItsSample) {
    // One unit in the last place decides: 0.000099957 and 0.00010008 from the sample at 1.
    for (const bool near : {true, false}) {
        const auto channel = MakeTimestep(1, 2, {0, 0, 8, 8, 8});
        VokAnimDiscontinuities& marks = AddMarks(*channel);
        const float distance = near ? 838 * 0x1p-23f : 839 * 0x1p-23f;
        marks.Add(VokAnimDiscontinuities::Kind::Step, 1 + distance);
        marks.GetAfter(0)[0] = 8;
        EXPECT_EQ(distance < 0.0001f, near);
        // Beside the sample there would be two that are too close, and the plain one would go.
        Fit(*channel);
        EXPECT_EQ(channel->keyTimes, near ? (std::vector<float>{0, 1, 1, 2})
                                          : (std::vector<float>{0, 1 + distance, 1 + distance, 2}));
    }
}

TEST(ConvertSamples, AMarkExactlyATenThousandthFromItsSampleStandsByItself) {
    // Beside the start it is thinned out; merged into the start it would give its value.
    const float limit = 0.0001f;
    for (const bool below : {false, true}) {
        const auto channel = MakeTimestep(1, 2, {1, 2, 4});
        VokAnimDiscontinuities& marks = AddMarks(*channel);
        marks.Add(VokAnimDiscontinuities::Kind::Step, below ? std::nextafter(limit, 0.0f) : limit);
        marks.GetAfter(0)[0] = 50;
        Fit(*channel);
        EXPECT_EQ(channel->keyValues.front(), below ? 50 : 1);
    }
}

TEST(ConvertSamples, OfSeveralListsOfMarksTheLastCounts) {
    const auto channel = MakeTimestep(1, 4, {0, 0, 8, 8, 8});
    AddMarks(*channel).Add(VokAnimDiscontinuities::Kind::Unset, 1.25f);
    VokAnimDiscontinuities& marks = AddMarks(*channel);
    marks.Add(VokAnimDiscontinuities::Kind::Step, 2);
    marks.GetAfter(0)[0] = 8;
    channel->AddChild(new VokAnimChannel);
    Fit(*channel);
    EXPECT_EQ(channel->keyTimes, (std::vector<float>{0, 2, 2, 4}));
}

TEST(ConvertSamples, AMarkOfNoKindIsAFaultAtATimeOfItsOwn) {
    const auto channel = MakeTimestep(1, 4, {0, 0, 8, 8, 8});
    AddMarks(*channel).Add(VokAnimDiscontinuities::Kind::Unset, 1.25f);
    EXPECT_EQ(ThrownText([&] { Fit(*channel); }), "Internal error - please report as a bug");
}

TEST(ConvertSamples, WhatIsNotSampledIsTakenOverFromTheInput) {
    const auto in = MakeTimestep(1, 1, {0, 1, 0});
    in->SetChannel("a|b");
    in->attributes.SetString("inputObject", "||j");
    in->attributes.SetString("inputChannel", "rotateX");
    const auto out = MakeChannel(AnimInterp::SplitTangent, 3, {5}, {5, 5, 5}, {5, 5, 5});
    out->tangents[1] = {5, 5, 5};
    ConvertTimestepToQelHermite(*out, *in, 0.001f, false, false, 0);
    EXPECT_EQ(out->GetChannel(), "a|b");
    EXPECT_EQ(out->GetName(), "a_b");
    EXPECT_EQ(out->attributes.GetString("inputObject"), "||j");
    EXPECT_EQ(out->attributes.GetString("inputChannel"), "rotateX");
    EXPECT_EQ(out->interp, AnimInterp::QELHermite);
    EXPECT_EQ(out->GetKeyStride(), 1u);
    EXPECT_EQ(out->numKeys, 3u);
    EXPECT_TRUE(out->tangents[1].empty());
    EXPECT_EQ(in->interp, AnimInterp::Timestep);
}

TEST(ConvertSamples, WithoutAChannelAttributeTheOutputHasAnEmptyOne) {
    const auto in = MakeTimestep(1, 1, {0, 1, 0});
    const auto out = std::make_unique<VokAnimChannel>();
    ConvertTimestepToQelHermite(*out, *in, 0.001f, false, false, 0);
    EXPECT_TRUE(out->attributes.Has("channel"));
    EXPECT_EQ(out->GetChannel(), "");
    EXPECT_FALSE(out->IsDrivenKey());
}

TEST(ConvertSamples, OneSampleAndNoSampleAreTooFew) {
    const auto one = MakeTimestep(1, 1, {0});
    EXPECT_EQ(ThrownText([&] { Fit(*one); }),
              "at least two samples need to be added to the curve fitter before solving");
    const auto none = MakeTimestep(1, 1, {});
    EXPECT_EQ(ThrownText([&] { Fit(*none); }), "Anim channel has no keys.");
    none->numKeys = 4;
    EXPECT_EQ(ThrownText([&] { Fit(*none); }),
              "Anim channel has fewer key values than its number of keys and its stride ask for.");
}

TEST(ConvertSamples, ADurationWithoutTimeIsTooShort) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();
    for (const float duration : {0.0f, -0.0f, 0.0009f, -0.0009f, nan, infinity, -infinity}) {
        const auto channel = MakeTimestep(1, duration, {0, 1, 0});
        EXPECT_EQ(ThrownText([&] { Fit(*channel); }), "animation time is too short") << duration;
        const auto marked = MakeTimestep(1, duration, {0, 1, 0});
        AddMarks(*marked).Add(VokAnimDiscontinuities::Kind::Corner, 0.5f);
        EXPECT_EQ(ThrownText([&] { Fit(*marked); }), "animation time is too short") << duration;
    }
}

TEST(ConvertSamples, ANegativeDurationRunsBackwards) {
    const auto channel = MakeTimestep(1, -1, {0, 1, 4});
    Fit(*channel);
    EXPECT_EQ(channel->keyTimes.front(), -1);
    EXPECT_EQ(channel->keyValues.front(), 4);
    EXPECT_EQ(channel->keyTimes.back(), 0);
    EXPECT_EQ(channel->keyValues.back(), 0);
}

TEST(ConvertSamples, SamplesThatAreNoNumbersAreRefused) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();
    const auto notANumber = MakeTimestep(1, 1, {0, nan, 0, 1});
    EXPECT_EQ(ThrownText([&] { Fit(*notANumber); }),
              "cannot set discontinuous position on continuous sample");
    const auto endless = MakeTimestep(1, 1, {0, infinity, 0, 1, 0});
    EXPECT_EQ(ThrownText([&] { Fit(*endless); }),
              "cannot set discontinuous tangent on continuous sample");
    const auto marked = MakeTimestep(1, 1, {0, 1, 2, 3, 2});
    VokAnimDiscontinuities& marks = AddMarks(*marked);
    marks.Add(VokAnimDiscontinuities::Kind::Step, 0.5f);
    marks.GetBefore(0)[0] = nan;
    EXPECT_EQ(ThrownText([&] { Fit(*marked); }),
              "cannot set discontinuous tangent on continuous sample");
}

TEST(ConvertSamples, MarksAtTimesThatAreNoNumbersHarmNothing) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const auto channel = MakeTimestep(1, 4, {0, 1, 4, 9, 16});
    VokAnimDiscontinuities& marks = AddMarks(*channel);
    marks.Add(VokAnimDiscontinuities::Kind::Step, nan);
    marks.Add(VokAnimDiscontinuities::Kind::Corner, -std::numeric_limits<float>::infinity());
    Fit(*channel);
    EXPECT_EQ(channel->keyValues.back(), 16);
}

TEST(ConvertSamples, WhatTakesTooManyLooksIsRefused) {
    std::vector<float> samples(400, 5.0f);
    samples[200] = 6;
    const auto channel = MakeTimestep(1, 399, samples);
    CompressionFilterDefault filter;
    filter.baseTolerance = 0.001f;
    Qel::LeastSquares::FitEffort effort(1000, 2);
    filter.effort = &effort;
    EXPECT_EQ(ThrownText([&] { ConvertTypeIfNeeded(*channel, AnimInterp::QELCurve, &filter); }),
              "Anim channels are too long together to be fitted: at most 1800 looks at samples "
              "can be taken, and those that hold a value for long take many.");
    filter.effort = nullptr;
    ConvertTypeIfNeeded(*channel, AnimInterp::QELCurve, &filter);
    EXPECT_EQ(channel->interp, AnimInterp::QELCurve);
}

}  // namespace
}  // namespace VokAnimUtil
