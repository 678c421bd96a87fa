#include <VokLib/Objects/Animation/VokAnimClip.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

TEST(VokAnimClip, WritesWhatItReads) {
    const std::string text =
        "<animclip name=\"a\">\n<anim name=\"b\" target=\"\">\n</anim>\n</animclip>";
    EXPECT_EQ(Rewritten<VokAnimClip>(text), text);
}
