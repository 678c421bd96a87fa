#include <VokLib/Base/VokTypeId.h>

#include "VokLib/CoreScene.h"

using namespace CoreScene;

TEST(TypeId, IsTheComplementOfTheNamesCrc) {
    EXPECT_EQ(MakeTypeId("123456789"), ~0xCBF43926u);
    EXPECT_EQ(MakeTypeId(""), 0xFFFFFFFFu);
    EXPECT_EQ(VokWorld::TypeId(), MakeTypeId("QEL"));
}
