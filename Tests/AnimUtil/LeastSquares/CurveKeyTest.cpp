#include "LeastSquares/CurveKey.h"

#include <gtest/gtest.h>

#include <vector>

namespace Qel::LeastSquares {
namespace {

/// Three keys, on the first, the third and the fourth of four samples.
struct ThreeKeys {
    ThreeKeys() {
        for (std::size_t i = 0; i < 4; ++i) {
            const auto value = static_cast<float>(i);
            samples[i].time = 10 * value;
            samples[i].positionBefore = {value};
            samples[i].tangentBefore = {value, 1};
            samples[i].positionAfter = {value, 2};
            samples[i].tangentAfter = {value, 3};
        }
        keys.samples = &samples;
        for (const int sample : {0, 2, 3}) keys.Append(sample);
    }
    std::vector<int> Forward() const {
        std::vector<int> order;
        for (int k = keys.first; k != -1; k = keys.At(k).next) order.push_back(k);
        return order;
    }
    std::vector<int> Backward() const {
        std::vector<int> order;
        for (int k = keys.last; k != -1; k = keys.At(k).previous) order.push_back(k);
        return order;
    }
    std::vector<CurveSample> samples{4};
    KeyList keys;
};

TEST(KeyList, KeysStandInOrderOnTheirSamplesWithTheirValues) {
    const ThreeKeys three;
    EXPECT_EQ(three.Forward(), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(three.Backward(), (std::vector<int>{2, 1, 0}));
    EXPECT_EQ(three.keys.SampleAt(1).time, 20);
    const CurveKey& key = three.keys.At(1);
    EXPECT_EQ(key.sample, 2);
    EXPECT_EQ(key.positionBefore, (Components{2}));
    EXPECT_EQ(key.tangentBefore, (Components{2, 1}));
    EXPECT_EQ(key.positionAfter, (Components{2, 2}));
    EXPECT_EQ(key.tangentAfter, (Components{2, 3}));
    EXPECT_EQ(three.keys.CountSegments(), 2u);
}

TEST(KeyList, AnUnlinkedKeyComesBackToItsPlace) {
    ThreeKeys three;
    three.keys.Unlink(1);
    EXPECT_EQ(three.Forward(), (std::vector<int>{0, 2}));
    EXPECT_EQ(three.Backward(), (std::vector<int>{2, 0}));
    EXPECT_EQ(three.keys.CountSegments(), 1u);
    three.keys.Relink(1);
    EXPECT_EQ(three.Forward(), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(three.Backward(), (std::vector<int>{2, 1, 0}));
}

TEST(KeyList, ASegmentGoesFromBehindOneKeyToBeforeTheNext) {
    const ThreeKeys three;
    const CurveSegment segment = three.keys.SegmentBetween(1, 2);
    EXPECT_EQ(segment.startTime, 20);
    EXPECT_EQ(segment.endTime, 30);
    EXPECT_EQ(segment.startPosition, (Components{2, 2}));
    EXPECT_EQ(segment.startTangent, (Components{2, 3}));
    EXPECT_EQ(segment.endPosition, (Components{3}));
    EXPECT_EQ(segment.endTangent, (Components{3, 1}));
}

}  // namespace
}  // namespace Qel::LeastSquares
