#include <AnimUtil/Animation/CompressionFilter.h>

#include <gtest/gtest.h>

#include <memory>
#include <tuple>

#include "AnimUtil/ChannelTestTools.h"

namespace VokAnimUtil {
namespace {

TEST(CompressionFilterDefault, AnswersFromItsFields) {
    CompressionFilterDefault filter;
    filter.baseTolerance = 0.001f;
    filter.toleranceSplit = 0.5f;
    filter.fixedTolerance = 0.25f;
    filter.fixedSecondaryTolerance = 0.125f;
    VokAnimChannel* made = new VokAnimChannel;
    const std::unique_ptr<VokAnimChannel> channel(made);
    EXPECT_EQ(filter.GetTolerance("", *channel), 0.001f);
    EXPECT_EQ(filter.GetSecondaryTolerance("", *channel), 0.0005f);
    filter.flags = 1;
    EXPECT_EQ(filter.GetTolerance("", *channel), 0.001f);
    filter.flags = 2;
    EXPECT_EQ(filter.GetTolerance("", *channel), 0.0005f);
    filter.flags = 4;
    EXPECT_EQ(filter.GetTolerance("", *channel), 0.0005f);
    filter.useFixedTolerance = true;
    filter.useFixedSecondary = true;
    EXPECT_EQ(filter.GetTolerance("", *channel), 0.25f);
    EXPECT_EQ(filter.GetSecondaryTolerance("", *channel), 0.125f);
    for (const auto& [text, rotate, translate, scale] : {std::tuple{"rotate", true, false, false},
                                                         {"translate", false, true, false},
                                                         {"scale", false, false, true},
                                                         {"rotateX", false, false, false}}) {
        channel->SetChannel(text);
        EXPECT_EQ(filter.IsRotate("", *channel), rotate);
        EXPECT_EQ(filter.IsRotation("", *channel), rotate);
        EXPECT_EQ(filter.IsTranslate("", *channel), translate);
        EXPECT_EQ(filter.IsScale("", *channel), scale);
        EXPECT_EQ(filter.IsOther("", *channel), !rotate && !translate && !scale);
    }
}

TEST(CompressionFilterDefault, EveryFieldIsTheAnswerToItsOwnQuestion) {
    const auto channel = std::make_unique<VokAnimChannel>();
    CompressionFilterDefault filter;
    EXPECT_EQ(filter.GetFlags("", *channel), 0);
    EXPECT_EQ(filter.GetMaxComplexity("", *channel), 0);
    EXPECT_FALSE(filter.GetLooping("", *channel));
    EXPECT_FALSE(filter.GetSnapToSamples("", *channel));
    filter.flags = 8;
    filter.baseTolerance = 0.75f;
    filter.maxComplexity = 12;
    filter.looping = true;
    EXPECT_EQ(filter.GetFlags("", *channel), 8);
    EXPECT_EQ(filter.GetBaseTolerance("", *channel), 0.75f);
    EXPECT_EQ(filter.GetTolerance("", *channel), 0.75f);
    EXPECT_EQ(filter.GetMaxComplexity("", *channel), 12);
    EXPECT_TRUE(filter.GetLooping("", *channel));
    EXPECT_FALSE(filter.GetSnapToSamples("", *channel));
    filter.snapToSamples = true;
    EXPECT_TRUE(filter.GetSnapToSamples("", *channel));
    filter.useFixedSecondary = true;
    EXPECT_EQ(filter.GetTolerance("", *channel), 0.75f);
    filter.fixedTolerance = 0.5f;
    filter.useFixedSecondary = false;
    filter.useFixedTolerance = true;
    filter.toleranceSplit = 0.25f;
    EXPECT_EQ(filter.GetTolerance("", *channel), 0.5f);
    EXPECT_EQ(filter.GetSecondaryTolerance("", *channel), 0.5625f);
}

TEST(CompressionFilterDefault, ASplitToleranceIsRoundedOnce) {
    const auto channel = std::make_unique<VokAnimChannel>();
    CompressionFilterDefault filter;
    filter.flags = 2;
    filter.baseTolerance = 0.1f;
    filter.toleranceSplit = 0.3f;
    EXPECT_EQ(filter.GetTolerance("", *channel), static_cast<float>(double{0.1f} * double{0.3f}));
}

/// A filter that answers what it must and nothing else.
class PlainFilter : public CompressionFilter {
  public:
    int GetFlags(const std::string&, const VokAnimChannel&) const override { return 0; }
    float GetBaseTolerance(const std::string&, const VokAnimChannel&) const override { return 1; }
    float GetTolerance(const std::string&, const VokAnimChannel&) const override { return 1; }
    float GetSecondaryTolerance(const std::string&, const VokAnimChannel&) const override {
        return 1;
    }
    bool GetLooping(const std::string&, const VokAnimChannel&) const override { return false; }
    bool GetSnapToSamples(const std::string&, const VokAnimChannel&) const override {
        return false;
    }
    bool IsRotate(const std::string& name, const VokAnimChannel&) const override {
        return name == "turns";
    }
};

TEST(CompressionFilter, HasNoLimitOfItsOwnAndAsksForRotations) {
    const auto channel = std::make_unique<VokAnimChannel>();
    const PlainFilter filter;
    EXPECT_EQ(filter.GetMaxComplexity("", *channel), 0);
    EXPECT_TRUE(filter.IsRotation("turns", *channel));
    EXPECT_FALSE(filter.IsOther("turns", *channel));
    EXPECT_FALSE(filter.IsRotation("", *channel));
    EXPECT_TRUE(filter.IsOther("", *channel));
}

}  // namespace
}  // namespace VokAnimUtil
