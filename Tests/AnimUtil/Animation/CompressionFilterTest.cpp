#include "AnimUtil/ChannelTestTools.h"

#include <AnimUtil/Animation/CompressionFilter.h>
#include <AnimUtil/Animation/VokAnimUtil.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <tuple>

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

}  // namespace

}  // namespace VokAnimUtil
