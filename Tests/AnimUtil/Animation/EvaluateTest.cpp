#include <AnimUtil/Animation/VokAnimUtil.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>

#include "AnimUtil/ChannelTestTools.h"

namespace VokAnimUtil {
namespace {

float Value(const VokAnimChannel& channel, float time, unsigned* hint = nullptr) {
    std::array<float, 8> result{};
    Evaluate(result.data(), channel, time, hint);
    return result[0];
}

TEST(FindKeyIndex, TheLastKeysTimeFallsInTheLastSegment) {
    const auto channel = MakeChannel(AnimInterp::QELHermite, 1, {0, 1, 3}, {0, 1, 2}, {0, 0, 0});
    EXPECT_EQ(FindKeyIndex(*channel, 3, nullptr), 1);
    EXPECT_EQ(FindKeyIndex(*channel, 0, nullptr), 0);
    EXPECT_EQ(FindKeyIndex(*channel, 1, nullptr), 1);
    EXPECT_EQ(FindKeyIndex(*channel, 2.9f, nullptr), 1);
    EXPECT_EQ(FindKeyIndex(*channel, -0.1f, nullptr), -1);
    EXPECT_EQ(FindKeyIndex(*channel, 3.1f, nullptr), -1);
}

TEST(FindKeyIndex, OfTwoKeysAtOneTimeTheSecondHoldsIt) {
    const auto channel =
        MakeChannel(AnimInterp::QELHermite, 1, {0, 1, 1, 2}, {0, 5, 7, 9}, {0, 0, 0, 0});
    EXPECT_EQ(FindKeyIndex(*channel, 1, nullptr), 2);
    EXPECT_EQ(Value(*channel, 1), 7);
}

TEST(FindKeyIndex, NoKeysHaveNoIndex) {
    const auto channel = MakeChannel(AnimInterp::QELHermite, 1, {}, {});
    EXPECT_EQ(FindKeyIndex(*channel, 0, nullptr), -1);
}

TEST(FindKeyIndex, TheHintMovesAsTheRuleSays) {
    const auto channel =
        MakeChannel(AnimInterp::QELHermite, 1, {0, 1, 2, 3, 4, 5}, {0, 0, 0, 0, 0, 0});
    unsigned hint = 1;
    EXPECT_EQ(FindKeyIndex(*channel, 1.5f, &hint), 1);
    EXPECT_EQ(hint, 1u);
    EXPECT_EQ(FindKeyIndex(*channel, 2.5f, &hint), 2);
    EXPECT_EQ(hint, 2u);
    EXPECT_EQ(FindKeyIndex(*channel, 4.5f, &hint), 4);
    EXPECT_EQ(hint, 4u);
    EXPECT_EQ(FindKeyIndex(*channel, 0.5f, &hint), 0);
    EXPECT_EQ(hint, 0u);
    hint = 99;
    EXPECT_EQ(FindKeyIndex(*channel, 9, &hint), -1);
    EXPECT_EQ(hint, 0u);
    hint = 5;
    EXPECT_EQ(FindKeyIndex(*channel, 5, &hint), 5);
    hint = 3;
    EXPECT_EQ(FindKeyIndex(*channel, 2, &hint), 2);
}

TEST(Evaluate, TimestepIsLinearBetweenSamples) {
    const auto channel = MakeTimestep(1, 1, {2, 6});
    EXPECT_EQ(Value(*channel, 0.5f), 4);
    EXPECT_EQ(Value(*channel, 0), 2);
    EXPECT_EQ(Value(*channel, 1), 6);
    EXPECT_EQ(Value(*channel, 7), 6);
    EXPECT_EQ(Value(*channel, -3), 2);
}

TEST(Evaluate, TimestepRunsOnForOneStepBeforeItsStart) {
    const auto channel = MakeTimestep(1, 2, {2, 6, 7});
    EXPECT_EQ(Value(*channel, -0.5f), 0);
}

TEST(Evaluate, TimestepWithTimesPastAnIntegerTakesTheFirstSample) {
    const auto channel = MakeTimestep(1, 1, {2, 6});
    EXPECT_EQ(Value(*channel, 1e20f), 2);
    EXPECT_EQ(Value(*channel, std::numeric_limits<float>::quiet_NaN()), 2);
}

TEST(Evaluate, TimestepTakesEveryComponent) {
    const auto channel = MakeTimestep(3, 1, {0, 10, 20, 2, 14, 26});
    std::array<float, 3> result{};
    Evaluate(result.data(), *channel, 0.5f, nullptr);
    EXPECT_EQ(result, (std::array<float, 3>{1, 12, 23}));
}

TEST(Evaluate, QelCurveIsACubicInTheDistanceFromItsKey) {
    const auto channel = MakeChannel(AnimInterp::QELCurve, 8, {1, 3},
                                     {1, 10, 2, 20, 3, 30, 4, 40, 9, 9, 0, 0, 0, 0, 0, 0});
    std::array<float, 2> result{};
    Evaluate(result.data(), *channel, 3, nullptr);
    EXPECT_EQ(result,
              (std::array<float, 2>{1 + 2 * 2 + 3 * 4 + 4 * 8, 10 + 20 * 2 + 30 * 4 + 40 * 8}));
    EXPECT_EQ(GetComponentCount(*channel), 2u);
}

TEST(Evaluate, QelHermiteIsTheHermiteBasis) {
    const auto channel = MakeChannel(AnimInterp::QELHermite, 1, {1, 3}, {2, 6}, {1, -2});
    EXPECT_EQ(Value(*channel, 1), 2);
    EXPECT_EQ(Value(*channel, 3), 6);
    EXPECT_EQ(Value(*channel, 2), 4.75f);
}

TEST(Evaluate, OneHermiteKeyGivesItsValueAtItsTimeAlone) {
    const auto channel = MakeChannel(AnimInterp::QELHermite, 1, {1}, {2}, {5});
    EXPECT_EQ(Value(*channel, 1), 2);
    EXPECT_EQ(ThrownText([&] { Value(*channel, 1.5f); }),
              "Failed to find key index when evaluating animation value.");
}

TEST(Evaluate, AHintOnTheLastKeyGivesItsValue) {
    unsigned hint = 1;
    EXPECT_EQ(Value(*MakeChannel(AnimInterp::QELHermite, 1, {1, 3}, {2, 6}, {1, -2}), 3, &hint), 6);
}

TEST(Evaluate, ATimeOutsideTheKeysFails) {
    const auto curve = MakeChannel(AnimInterp::QELCurve, 4, {1, 2}, {1, 0, 0, 0, 1, 0, 0, 0});
    EXPECT_EQ(ThrownText([&] { Value(*curve, 0.5f); }),
              "Failed to find key index when evaluating animation value.");
}

TEST(Evaluate, OtherKindsAreRefusedByName) {
    for (const char* kind :
         {"Linear", "Flat", "Smooth", "Tangent", "WTangent", "SplitTangent", "WSplitTangent"}) {
        const auto channel = MakeChannel(*FindAnimInterp(kind), 1, {0, 1}, {0, 1}, {0, 0});
        EXPECT_EQ(
            ThrownText([&] { Value(*channel, 0); }),
            "Evaluate not yet implemented for animations of type \"" + std::string(kind) + "\".");
    }
}

TEST(Evaluate, AKeyAloneNeedsNoTangents) {
    const auto channel = MakeChannel(AnimInterp::QELHermite, 1, {1}, {2});
    EXPECT_EQ(Value(*channel, 1), 2);
    EXPECT_EQ(ThrownText([&] { Value(*channel, 0); }),
              "Failed to find key index when evaluating animation value.");
}

TEST(Evaluate, ArraysShorterThanTheKeysAreRefused) {
    auto channel = MakeChannel(AnimInterp::QELHermite, 1, {0, 1}, {0, 1}, {0});
    EXPECT_EQ(ThrownText([&] { Value(*channel, 0); }),
              "Anim channel has fewer tangents than its number of keys and its stride ask for.");
    channel->numKeys = 4000000000u;
    EXPECT_EQ(ThrownText([&] { Value(*channel, 0); }),
              "Anim channel has fewer key values than its number of keys and its stride ask for.");
    channel->numKeys = 2;
    channel->tangents[0] = {0, 0};
    channel->keyTimes = {0};
    EXPECT_EQ(ThrownText([&] { Value(*channel, 0); }),
              "Anim channel has fewer key times than its number of keys asks for.");
    EXPECT_EQ(ThrownText([&] { Value(*MakeTimestep(1, 1, {}), 0); }), "Anim channel has no keys.");
}

TEST(FindKeyIndex, AnyHintGivesWhatNoHintGives) {
    std::mt19937 random(4);
    for (int round = 0; round < 300; ++round) {
        std::vector<float> times{static_cast<float>(random() % 3)};
        while (times.size() < 1 + random() % 9)
            times.push_back(times.back() + static_cast<float>(random() % 3));
        const std::vector<float> zeros(times.size());
        const auto channel = MakeChannel(AnimInterp::QELHermite, 1, times, zeros, zeros);
        for (int i = 0; i < 40; ++i) {
            const float time = static_cast<float>(random() % 60) / 2 - 1;
            auto hint = static_cast<unsigned>(random() % 12);
            const int hinted = FindKeyIndex(*channel, time, &hint);
            const int plain = FindKeyIndex(*channel, time, nullptr);
            EXPECT_EQ(hinted == -1, plain == -1);
            // Either key's segment holds the time.
            if (hinted < 0) continue;
            const auto k = static_cast<std::size_t>(hinted);
            EXPECT_LE(times[k], time);
            EXPECT_LE(time, times[std::min(k + 1, times.size() - 1)]);
        }
    }
}

TEST(FindKeyIndex, ATimeThatIsNoNumberIsNotBeforeAndNotBehind) {
    const auto channel = MakeChannel(AnimInterp::QELHermite, 1, {0, 1, 2}, {0, 1, 2}, {0, 0, 0});
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(FindKeyIndex(*channel, nan, nullptr), 0);
    EXPECT_TRUE(std::isnan(Value(*channel, nan)));
}

TEST(Evaluate, IsContinuousButAtSteps) {
    std::mt19937 random(6);
    const auto draw = [&random] { return static_cast<float>(random() % 2001) / 1000 - 1; };
    std::vector<float> times{0}, values, tangents;
    for (int i = 1; i < 30; ++i)
        times.push_back(times.back() + (i % 5 == 0 ? 0 : 0.5f + static_cast<float>(i % 3) / 4));
    for (std::size_t i = 0; i < times.size(); ++i) {
        values.push_back(draw());
        tangents.push_back(draw());
    }
    const auto channel = MakeChannel(AnimInterp::QELHermite, 1, times, values, tangents);
    for (std::size_t i = 1; i + 1 < times.size(); ++i) {
        const float before = Value(*channel, std::nextafter(times[i], 0.0f));
        const float at = Value(*channel, times[i]);
        const bool first = times[i] == times[i + 1];
        const bool second = times[i] == times[i - 1];
        if (first) {
            EXPECT_NEAR(before, values[i], 1e-5f) << i;
            EXPECT_EQ(at, values[i + 1]) << i;
        } else if (!second) {
            EXPECT_NEAR(before, at, 1e-5f) << i;
            EXPECT_EQ(at, values[i]) << i;
        }
    }
}

TEST(Evaluate, TimestepIsContinuous) {
    const auto channel = MakeTimestep(1, 3, {0, 4, -2, 1, 1, 7, 0});
    for (int i = 1; i < 600; ++i) {
        const float time = static_cast<float>(i) / 200;
        EXPECT_NEAR(Value(*channel, time), Value(*channel, std::nextafter(time, 0.0f)), 1e-4f);
    }
}

TEST(Evaluate, TimestepOfNoDurationTakesAnEnd) {
    const auto channel = MakeTimestep(1, 0, {2, 6});
    EXPECT_EQ(Value(*channel, 1), 2);
    EXPECT_EQ(Value(*channel, 0), 2);
    EXPECT_EQ(Value(*channel, -1), 2);
    EXPECT_EQ(Value(*MakeTimestep(1, 1, {3}), 0.5f), 3);
}

TEST(Evaluate, AnEmptyCurveFailsLikeATimeOutside) {
    for (const AnimInterp kind : {AnimInterp::QELCurve, AnimInterp::QELHermite}) {
        const auto channel = MakeChannel(kind, 4, {}, {});
        EXPECT_EQ(ThrownText([&] { Value(*channel, 0); }),
                  "Failed to find key index when evaluating animation value.");
    }
}

}  // namespace
}  // namespace VokAnimUtil
