#include <AnimUtil/Animation/VokAnimUtil.h>
#include <VokLib/Objects/Animation/VokAnim.h>

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <string>

#include "AnimUtil/ChannelTestTools.h"

namespace VokAnimUtil {
namespace {

/// Gives `anim` the channel under the text of what it animates.
VokAnimChannel& Add(VokAnim& anim, const char* text, std::unique_ptr<VokAnimChannel> channel) {
    channel->SetChannel(text);
    anim.AddChild(channel.get());
    return *channel.release();
}

std::unique_ptr<VokAnim> MakeAnim() {
    return std::make_unique<VokAnim>();
}

/// A curve of three components that bends in each.
std::unique_ptr<VokAnimChannel> MakeBentHermite() {
    return MakeChannel(AnimInterp::QELHermite, 3, {0, 0.5f, 2}, {1, 2, 3, 4, 5, 6, 0, 1, -2},
                       {0, 1, 2, 3, -1, 0, 1, 1, 1});
}

TEST(Transform, TranslationsGoFromZUpToYUp) {
    const auto anim = MakeAnim();
    const VokAnimChannel& channel = Add(*anim, "translate", MakeTimestep(3, 1, {1, 2, 3, 4, 5, 6}));
    Transform(*anim);
    EXPECT_EQ(channel.interp, AnimInterp::Timestep);
    EXPECT_EQ(channel.keyValues, (std::vector<float>{1, 3, -2, 4, 6, -5}));
    EXPECT_EQ(channel.GetDuration(), 1);
}

TEST(Transform, QuaternionsAreTurnedFromTheLeft) {
    const auto anim = MakeAnim();
    const VokAnimChannel& channel =
        Add(*anim, "rotate", MakeTimestep(4, 1, {0, 0, 0, 1, 0.5f, -0.25f, 2, 1}));
    Transform(*anim);
    // Sine and cosine of half the quarter turn are the same float; the products round singly.
    const float h = std::bit_cast<float>(0x3F3504F3u);
    EXPECT_EQ(channel.keyValues, (std::vector<float>{-h, 0, 0, h, h * 0.5f - h, h * -0.25f + h * 2,
                                                     h * 2 + -h * -0.25f, h - -h * 0.5f}));
}

TEST(Transform, ADrivenKeyIsNotTouched) {
    const auto anim = MakeAnim();
    VokAnimChannel& channel = Add(*anim, "translate", MakeTimestep(2, 1, {1, 2, 4, 5}));
    channel.attributes.SetString("inputObject", "||a");
    Transform(*anim);
    EXPECT_EQ(channel.keyValues, (std::vector<float>{1, 2, 4, 5}));
}

TEST(Transform, OtherChannelsAreNotTouched) {
    const auto anim = MakeAnim();
    const std::vector<float> values{1, 2, 3, 4, 5, 6};
    for (const char* text : {"scale", "translateX", "rotateX", "Translate", "", "translate "})
        Add(*anim, text, MakeTimestep(3, 1, values));
    Transform(*anim);
    for (std::size_t i = 0; i < anim->GetChannelCount(); ++i)
        EXPECT_EQ(anim->GetChannel(i).keyValues, values) << anim->GetChannel(i).GetChannel();
}

TEST(Transform, ARotationThatIsNoQuaternionIsNotTouched) {
    const auto anim = MakeAnim();
    const VokAnimChannel& angles = Add(*anim, "rotate", MakeTimestep(3, 1, {1, 2, 3, 4, 5, 6}));
    const VokAnimChannel& curve =
        Add(*anim, "rotate", MakeChannel(AnimInterp::QELCurve, 16, {0}, std::vector<float>(16)));
    const VokAnimChannel& smooth =
        Add(*anim, "rotate", MakeChannel(AnimInterp::Smooth, 1, {0, 1}, {0, 1}));
    Transform(*anim);
    EXPECT_EQ(angles.keyValues, (std::vector<float>{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(curve.interp, AnimInterp::QELCurve);
    EXPECT_EQ(smooth.interp, AnimInterp::Smooth);
}

TEST(Transform, ATranslationOfAnotherStrideIsRefused) {
    for (const unsigned stride : {1u, 2u, 4u, 5u}) {
        const auto anim = MakeAnim();
        Add(*anim, "translate", MakeTimestep(stride, 1, std::vector<float>(2 * stride)));
        EXPECT_EQ(ThrownText([&] { Transform(*anim); }),
                  "Unexpected stride for anim channel: translate");
    }
}

TEST(Transform, ATranslationOfAnotherStrideIsSampledBeforeItIsRefused) {
    const auto anim = MakeAnim();
    const VokAnimChannel& channel = Add(
        *anim, "translate", MakeChannel(AnimInterp::QELCurve, 12, {0, 1}, std::vector<float>(24)));
    EXPECT_EQ(ThrownText([&] { Transform(*anim); }),
              "Unexpected stride for anim channel: translate");
    EXPECT_EQ(channel.interp, AnimInterp::Timestep);
    EXPECT_EQ(channel.numKeys, 61u);
}

TEST(Transform, ChannelsInFrontOfOneThatFailsAreTurned) {
    const auto anim = MakeAnim();
    const VokAnimChannel& first = Add(*anim, "translate", MakeTimestep(3, 1, {1, 2, 3, 4, 5, 6}));
    Add(*anim, "translate", MakeTimestep(1, 1, {1, 2}));
    const VokAnimChannel& third = Add(*anim, "translate", MakeTimestep(3, 1, {1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(ThrownText([&] { Transform(*anim); }),
              "Unexpected stride for anim channel: translate");
    EXPECT_EQ(first.keyValues, (std::vector<float>{1, 3, -2, 4, 6, -5}));
    EXPECT_EQ(third.keyValues, (std::vector<float>{1, 2, 3, 4, 5, 6}));
}

TEST(Transform, AHermiteTranslationComesBackAsHermiteOnItsSamples) {
    const auto before = MakeBentHermite();
    const auto anim = MakeAnim();
    const VokAnimChannel& channel = Add(*anim, "translate", MakeBentHermite());
    Transform(*anim);
    EXPECT_EQ(channel.interp, AnimInterp::QELHermite);
    EXPECT_EQ(channel.GetKeyStride(), 3u);
    EXPECT_EQ(channel.keyTimes.front(), 0);
    EXPECT_EQ(channel.keyTimes.back(), 2);
    EXPECT_GT(channel.numKeys, 3u);
    std::array<float, 3> is{}, was{};
    for (int i = 0; i <= 120; ++i) {
        const float time = static_cast<float>(i) / 120.0f * 2.0f;
        Evaluate(is.data(), channel, time, nullptr);
        Evaluate(was.data(), *before, time, nullptr);
        EXPECT_NEAR(is[0], was[0], 3e-6f) << i;
        EXPECT_NEAR(is[1], was[2], 3e-6f) << i;
        EXPECT_NEAR(is[2], -was[1], 3e-6f) << i;
    }
}

TEST(Transform, ACurveOfQuaternionStrideHoldsOneComponent) {
    // Its keys are the four coefficients of one value; each sample is that value and three zeros.
    const auto anim = MakeAnim();
    const VokAnimChannel& channel = Add(
        *anim, "rotate", MakeChannel(AnimInterp::QELCurve, 4, {0, 1}, {2, 0, 0, 0, 2, 0, 0, 0}));
    Transform(*anim);
    EXPECT_EQ(channel.interp, AnimInterp::QELCurve);
    ASSERT_EQ(channel.GetKeyStride(), 16u);
    const float h = std::bit_cast<float>(0x3F3504F3u);
    EXPECT_EQ(channel.keyTimes, (std::vector<float>{0, 1}));
    EXPECT_EQ(channel.keyValues[0], h * 2);
    EXPECT_EQ(channel.keyValues[3], 2 * h);
}

TEST(Transform, AKindThatCannotBeEvaluatedIsRefused) {
    const auto anim = MakeAnim();
    Add(*anim, "translate", MakeChannel(AnimInterp::Linear, 3, {0, 1}, std::vector<float>(6)));
    EXPECT_EQ(ThrownText([&] { Transform(*anim); }),
              "Evaluate not yet implemented for animations of type \"Linear\".");
}

TEST(Transform, ATranslationWithoutTimeToFitIsRefused) {
    const auto anim = MakeAnim();
    Add(*anim, "translate",
        MakeChannel(AnimInterp::QELHermite, 3, {0, 0.0005f}, {1, 2, 3, 4, 5, 6},
                    std::vector<float>(6)));
    EXPECT_EQ(ThrownText([&] { Transform(*anim); }), "animation time is too short");
}

TEST(Transform, SamplesThatAreMissingAreRefused) {
    const auto anim = MakeAnim();
    Add(*anim, "translate", MakeTimestep(3, 1, {1, 2, 3})).numKeys = 2;
    EXPECT_EQ(ThrownText([&] { Transform(*anim); }),
              "Anim channel has fewer key values than its number of keys and its stride ask for.");
}

TEST(Transform, ManyChannelsTogetherAreBoundedToTheValue) {
    // 121 samples of three values; the channel's own six allow for 384 more.
    const auto transform = [](std::size_t valuesBefore) {
        const auto anim = MakeAnim();
        Add(*anim, "translate",
            MakeChannel(AnimInterp::QELHermite, 3, {0, 2}, {1, 2, 3, 4, 5, 6},
                        {0, 1, 2, 3, -1, 0}));
        ResampledTotal total{.values = valuesBefore};
        Transform(*anim, total);
        EXPECT_EQ(total.values, valuesBefore + 363);
        EXPECT_EQ(total.most, 67108864u + 384);
    };
    transform(67108864 + 384 - 363);
    EXPECT_EQ(ThrownText([&] { transform(67108864 + 384 - 363 + 1); }),
              "Anim channels are too long together to be resampled: 67109249 values so far; at "
              "most 67109248 values can be held.");
}

TEST(Transform, FitsOfManyChannelsTogetherAreBounded) {
    const auto anim = MakeAnim();
    for (int i = 0; i < 2; ++i)
        Add(*anim, "translate",
            MakeChannel(AnimInterp::QELHermite, 3, {0, 2}, {1, 2, 3, 4, 5, 6},
                        {0, 1, 2, 3, -1, 0}));
    ResampledTotal total;
    Transform(*anim, total);
    EXPECT_EQ(total.fits.GetMost(), 2147483648u + 512 * 242);
    const std::uint64_t looks = total.fits.GetLooks();
    EXPECT_GT(looks, 242u);
    total.fits = Qel::LeastSquares::FitEffort(looks / 2, 0);
    EXPECT_EQ(
        ThrownText([&] { Transform(*anim, total); }),
        "Anim channels are too long together to be fitted: at most " + std::to_string(looks / 2) +
            " looks at samples can be taken, and those that hold a value for long take many.");
}

}  // namespace
}  // namespace VokAnimUtil
