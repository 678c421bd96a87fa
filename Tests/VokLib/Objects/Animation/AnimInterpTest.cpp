#include <VokLib/Objects/Animation/AnimInterp.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

TEST(AnimInterpText, TenTextsInTheOrderOfTheValues) {
    const char* const texts[] = {"Timestep", "Linear",    "Flat",         "Smooth",
                                 "Tangent",  "WTangent",  "SplitTangent", "WSplitTangent",
                                 "QELCurve", "QELHermite"};
    for (unsigned i = 0; i < 10; ++i) {
        EXPECT_EQ(FindAnimInterp(texts[i]), static_cast<AnimInterp>(i));
        EXPECT_EQ(GetAnimInterpText(static_cast<AnimInterp>(i)), texts[i]);
    }
    EXPECT_EQ(FindAnimInterp("timestep"), std::nullopt);
}
