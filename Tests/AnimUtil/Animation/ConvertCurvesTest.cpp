#include <AnimUtil/Animation/VokAnimUtil.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "AnimUtil/ChannelTestTools.h"

namespace VokAnimUtil {
namespace {

TEST(ConvertCurves, HermiteBecomesTheSameCubic) {
    const auto channel = MakeChannel(AnimInterp::QELHermite, 1, {0, 2}, {1, 5}, {3, -1});
    ConvertType(*channel, *channel, AnimInterp::QELCurve, nullptr);
    EXPECT_EQ(channel->interp, AnimInterp::QELCurve);
    EXPECT_EQ(channel->GetKeyStride(), 4u);
    EXPECT_EQ(channel->numKeys, 2u);
    EXPECT_EQ(channel->keyTimes, (std::vector<float>{0, 2}));
    EXPECT_EQ(channel->keyValues, (std::vector<float>{1, 3, 0.5f, -0.5f, 5, 0, 0, 0}));
    EXPECT_TRUE(channel->tangents[0].empty());
}

TEST(ConvertCurves, TwoKeysAtOneTimeAreNoSegment) {
    const auto channel =
        MakeChannel(AnimInterp::QELHermite, 1, {0, 1, 1, 2}, {0, 1, 5, 6}, {1, 1, 1, 1});
    ConvertQelHermiteToQelCurve(*channel, *channel);
    EXPECT_EQ(channel->keyTimes, (std::vector<float>{0, 1, 2}));
    EXPECT_EQ(channel->keyValues, (std::vector<float>{0, 1, 0, 0, 5, 1, 0, 0, 6, 0, 0, 0}));
}

TEST(ConvertCurves, ComponentsOfACurveKeyStandBlockByBlock) {
    const auto channel =
        MakeChannel(AnimInterp::QELHermite, 2, {0, 1}, {0, 10, 1, 12}, {1, 2, 1, 2});
    ConvertQelHermiteToQelCurve(*channel, *channel);
    EXPECT_EQ(channel->keyValues,
              (std::vector<float>{0, 10, 1, 2, 0, 0, 0, 0, 1, 12, 0, 0, 0, 0, 0, 0}));
}

TEST(ConvertCurves, ACurveGoesToHermiteAndBackWithinRounding) {
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

TEST(ConvertCurves, ABrokenCurveGetsAKeyWithTheNextValueAndItsOwnTangent) {
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

TEST(ConvertCurves, ASegmentIsBrokenWhereItMissesTheNextKeyByMoreThanAMillionth) {
    // By one unit in the last place, in value and in slope.
    const float limit = 1e-6f;
    for (const bool above : {false, true}) {
        const float miss = above ? std::nextafter(limit, 1.0f) : limit;
        for (const std::size_t coefficient : {0u, 1u}) {
            std::vector<float> values(12);
            values[4 + coefficient] = -miss;
            const auto channel = MakeChannel(AnimInterp::QELCurve, 4, {0, 1, 2}, values);
            ConvertQelCurveToQelHermite(*channel, *channel);
            EXPECT_EQ(channel->numKeys, above ? 4u : 3u) << coefficient;
        }
    }
}

TEST(ConvertCurves, TheLastSegmentIsNeverBroken) {
    const auto channel = MakeChannel(AnimInterp::QELCurve, 4, {0, 2}, {0, 1, 0, 0, 3, 5, 1, 1});
    ConvertQelCurveToQelHermite(*channel, *channel);
    EXPECT_EQ(channel->keyTimes, (std::vector<float>{0, 2}));
    EXPECT_EQ(channel->keyValues, (std::vector<float>{0, 3}));
    // The last key's tangent is made of its own coefficients over the last segment's length.
    EXPECT_EQ(channel->tangents[0], (std::vector<float>{1, (2 * 4 + 5 * 2 + 3 * 8) / 2.0f}));
}

TEST(ConvertCurves, WrongKindsAreRefusedByOneText) {
    const auto channel = MakeTimestep(1, 1, {0, 1});
    EXPECT_EQ(ThrownText([&] { ConvertQelCurveToQelHermite(*channel, *channel); }),
              "Input animation type is not QelHermite.");
    EXPECT_EQ(ThrownText([&] { ConvertQelHermiteToQelCurve(*channel, *channel); }),
              "Input animation type is not QelHermite.");
}

TEST(ConvertCurves, ChannelsWithoutKeysAreRefused) {
    const auto hermite = MakeChannel(AnimInterp::QELHermite, 1, {}, {});
    EXPECT_EQ(ThrownText([&] { ConvertQelHermiteToQelCurve(*hermite, *hermite); }),
              "Anim channel has no keys.");
    const auto curve = MakeChannel(AnimInterp::QELCurve, 4, {}, {});
    EXPECT_EQ(ThrownText([&] { ConvertQelCurveToQelHermite(*curve, *curve); }),
              "Anim channel has no keys.");
}

TEST(ConvertCurves, OnlyTimesOfTheSameBitsAreAStep) {
    // Zero and minus zero are one time of different bits: there is a segment of no length.
    const auto channel =
        MakeChannel(AnimInterp::QELHermite, 1, {-0.0f, 0.0f, 1}, {0, 1, 2}, {0, 0, 0});
    ConvertQelHermiteToQelCurve(*channel, *channel);
    EXPECT_EQ(channel->numKeys, 3u);
    EXPECT_FALSE(std::isfinite(channel->keyValues[2]));
}

TEST(ConvertCurves, OneKeyIsItsValue) {
    const auto hermite = MakeChannel(AnimInterp::QELHermite, 2, {3}, {1, 2}, {4, 5});
    ConvertQelHermiteToQelCurve(*hermite, *hermite);
    EXPECT_EQ(hermite->keyTimes, (std::vector<float>{3}));
    EXPECT_EQ(hermite->keyValues, (std::vector<float>{1, 2, 0, 0, 0, 0, 0, 0}));
    const auto curve = MakeChannel(AnimInterp::QELCurve, 4, {3}, {1, 2, 3, 4});
    ConvertQelCurveToQelHermite(*curve, *curve);
    EXPECT_EQ(curve->keyValues, (std::vector<float>{1}));
    EXPECT_EQ(curve->tangents[0], (std::vector<float>{2}));
}

TEST(ConvertCurves, StepsAloneAreOneKey) {
    const auto channel = MakeChannel(AnimInterp::QELHermite, 1, {2, 2, 2}, {1, 2, 3}, {0, 0, 0});
    ConvertQelHermiteToQelCurve(*channel, *channel);
    EXPECT_EQ(channel->keyTimes, (std::vector<float>{2}));
    EXPECT_EQ(channel->keyValues, (std::vector<float>{3, 0, 0, 0}));
}

TEST(ConvertCurves, TheOutputMayBeAnotherChannel) {
    const auto in = MakeChannel(AnimInterp::QELHermite, 1, {0, 2}, {1, 5}, {3, -1});
    const auto out = MakeChannel(AnimInterp::SplitTangent, 7, {9}, {9}, {9});
    out->tangents[1] = {9};
    ConvertQelHermiteToQelCurve(*out, *in);
    EXPECT_EQ(out->interp, AnimInterp::QELCurve);
    EXPECT_EQ(out->GetKeyStride(), 4u);
    EXPECT_EQ(out->numKeys, 2u);
    EXPECT_TRUE(out->tangents[0].empty());
    EXPECT_TRUE(out->tangents[1].empty());
    EXPECT_EQ(in->interp, AnimInterp::QELHermite);
    EXPECT_EQ(in->keyValues, (std::vector<float>{1, 5}));
    const auto back = MakeChannel(AnimInterp::Linear, 3, {}, {});
    ConvertQelCurveToQelHermite(*back, *out);
    EXPECT_EQ(back->interp, AnimInterp::QELHermite);
    EXPECT_EQ(back->GetKeyStride(), 1u);
    EXPECT_EQ(back->keyValues, (std::vector<float>{1, 5}));
}

TEST(ConvertCurves, ArraysShorterThanTheKeysAreRefused) {
    const auto hermite = MakeChannel(AnimInterp::QELHermite, 1, {0, 1}, {0, 1}, {0});
    EXPECT_EQ(ThrownText([&] { ConvertQelHermiteToQelCurve(*hermite, *hermite); }),
              "Anim channel has fewer tangents than its number of keys and its stride ask for.");
    hermite->tangents[0] = {0, 0};
    hermite->keyTimes = {0};
    EXPECT_EQ(ThrownText([&] { ConvertQelHermiteToQelCurve(*hermite, *hermite); }),
              "Anim channel has fewer key times than its number of keys asks for.");
    const auto curve = MakeChannel(AnimInterp::QELCurve, 4, {0, 1}, {0, 1, 2, 3, 4, 5, 6});
    EXPECT_EQ(ThrownText([&] { ConvertQelCurveToQelHermite(*curve, *curve); }),
              "Anim channel has fewer key values than its number of keys and its stride ask for.");
}

TEST(ConvertCurves, WhatIsNoNumberPassesThrough) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const auto channel =
        MakeChannel(AnimInterp::QELHermite, 1, {0, 1, nan}, {nan, 1, 2}, {0, 0, 0});
    ConvertQelHermiteToQelCurve(*channel, *channel);
    EXPECT_EQ(channel->numKeys, 3u);
    EXPECT_TRUE(std::isnan(channel->keyValues[0]));
    ConvertQelCurveToQelHermite(*channel, *channel);
    EXPECT_GE(channel->numKeys, 3u);
}

TEST(ConvertCurves, ACurveThereAndBackKeepsItsValues) {
    std::mt19937 random(12);
    const auto draw = [&random] { return static_cast<float>(random() % 4001) / 1000 - 2; };
    for (int round = 0; round < 40; ++round) {
        const auto n = static_cast<unsigned>(1 + random() % 3);
        std::vector<float> times{0}, values, tangents;
        while (times.size() < 12) {
            // A third of the keys are steps.
            const bool step = random() % 3 == 0 && times.size() > 1;
            times.push_back(times.back() +
                            (step ? 0 : 0.25f + static_cast<float>(random() % 8) / 8));
        }
        times.push_back(times.back() + 1);
        for (std::size_t i = 0; i < times.size() * n; ++i) {
            values.push_back(draw());
            tangents.push_back(draw());
        }
        const auto was = MakeChannel(AnimInterp::QELHermite, n, times, values, tangents);
        const auto curve = MakeChannel(AnimInterp::QELHermite, n, times, values, tangents);
        ConvertTypeIfNeeded(*curve, AnimInterp::QELCurve, nullptr);
        for (int i = 0; i <= 200; ++i) {
            const float time = times.back() * static_cast<float>(i) / 200;
            std::vector<float> a(n), b(n);
            Evaluate(a.data(), *was, time, nullptr);
            Evaluate(b.data(), *curve, time, nullptr);
            for (unsigned c = 0; c < n; ++c) EXPECT_NEAR(a[c], b[c], 2e-5f) << time;
        }
    }
}

}  // namespace
}  // namespace VokAnimUtil
