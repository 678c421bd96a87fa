#include "VokLib/SceneTestTools.h"

#include <VokLib/Objects/Geometry/VokCluster.h>

#include <gtest/gtest.h>

namespace SceneTest {

namespace {

TEST(Cluster, IsAnObjectWithChildrenAndNoMore) {
    EXPECT_EQ(Rewritten<VokCluster>(R"(<cluster name="c"><node name="n"/></cluster>)"),
              "<cluster name=\"c\">\n<node name=\"n\">\n</node>\n</cluster>");
    EXPECT_EQ(LoadFailure(R"(<cluster name="c"><weights/></cluster>)"),
              (Failure{"Unknown tag \"weights\"", "|c"}));
}

}  // namespace

}  // namespace SceneTest
