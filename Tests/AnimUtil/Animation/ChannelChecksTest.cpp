#include "Animation/ChannelChecks.h"

#include <gtest/gtest.h>

#include <climits>
#include <limits>

#include "AnimUtil/ChannelTestTools.h"

namespace VokAnimUtil {
namespace {

TEST(ChannelChecks, AnArrayMayBeLongerThanTheKeysAskForAndNotShorter) {
    const auto channel =
        MakeChannel(AnimInterp::QELHermite, 2, {0, 1, 2}, {1, 2, 3, 4, 5, 6}, {1, 2, 3, 4, 5, 6});
    for (const unsigned keys : {1u, 2u, 3u}) {
        channel->numKeys = keys;
        EXPECT_NO_THROW(CheckHasKeys(*channel));
        EXPECT_NO_THROW(CheckValues(*channel));
        EXPECT_NO_THROW(CheckTimes(*channel));
        EXPECT_NO_THROW(CheckTangents(*channel));
    }
    channel->numKeys = 4;
    EXPECT_EQ(ThrownText([&] { CheckValues(*channel); }),
              "Anim channel has fewer key values than its number of keys and its stride ask for.");
    EXPECT_EQ(ThrownText([&] { CheckTimes(*channel); }),
              "Anim channel has fewer key times than its number of keys asks for.");
    EXPECT_EQ(ThrownText([&] { CheckTangents(*channel); }),
              "Anim channel has fewer tangents than its number of keys and its stride ask for.");
    channel->numKeys = 0;
    EXPECT_EQ(ThrownText([&] { CheckHasKeys(*channel); }), "Anim channel has no keys.");
    EXPECT_NO_THROW(CheckValues(*channel));
}

TEST(ChannelChecks, TheProductOfCountAndStrideDoesNotOverflow) {
    const auto channel = MakeChannel(AnimInterp::QELHermite, 1u << 31, {}, {});
    channel->numKeys = 2;
    EXPECT_EQ(ThrownText([&] { CheckValues(*channel); }),
              "Anim channel has fewer key values than its number of keys and its stride ask for.");
    EXPECT_EQ(ThrownText([&] { CheckTangents(*channel); }),
              "Anim channel has fewer tangents than its number of keys and its stride ask for.");
}

TEST(Truncate, GoesTowardsZeroAndWhatDoesNotFitIsTheLeastInteger) {
    EXPECT_EQ(Truncate(1.99f), 1);
    EXPECT_EQ(Truncate(-1.99f), -1);
    EXPECT_EQ(Truncate(-0.5f), 0);
    EXPECT_EQ(Truncate(2147483520.0f), 2147483520);
    EXPECT_EQ(Truncate(2147483648.0f), INT_MIN);
    EXPECT_EQ(Truncate(-2147483648.0f), INT_MIN);
    EXPECT_EQ(Truncate(-1e20f), INT_MIN);
    EXPECT_EQ(Truncate(std::numeric_limits<float>::infinity()), INT_MIN);
    EXPECT_EQ(Truncate(std::numeric_limits<float>::quiet_NaN()), INT_MIN);
}

}  // namespace
}  // namespace VokAnimUtil
