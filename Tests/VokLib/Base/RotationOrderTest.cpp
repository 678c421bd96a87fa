#include <VokLib/Base/RotationOrder.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

TEST(RotationOrderText, SixTextsInTheOrderOfTheValues) {
    const char* const texts[] = {"xyz", "yzx", "zxy", "xzy", "yxz", "zyx"};
    for (unsigned i = 0; i < 6; ++i) {
        EXPECT_EQ(FindRotationOrder(texts[i]), static_cast<RotationOrder>(i));
        EXPECT_EQ(GetRotationOrderText(static_cast<RotationOrder>(i)), texts[i]);
    }
    EXPECT_EQ(FindRotationOrder("XYZ"), std::nullopt);
    EXPECT_EQ(FindRotationOrder("xy"), std::nullopt);
    EXPECT_EQ(FindRotationOrder(""), std::nullopt);
}
