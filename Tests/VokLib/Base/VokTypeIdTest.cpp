#include <VokLib/Base/VokTypeId.h>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

TEST(TypeId, IsTheComplementOfTheNamesCrc) {
    EXPECT_EQ(MakeTypeId("123456789"), ~0xCBF43926u);
    EXPECT_EQ(MakeTypeId(""), 0xFFFFFFFFu);
    EXPECT_EQ(VokWorld::TypeId(), MakeTypeId("QEL"));
}
