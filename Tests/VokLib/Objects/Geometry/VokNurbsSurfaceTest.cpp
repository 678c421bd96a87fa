#include "VokLib/SceneTestTools.h"

#include <VokLib/Objects/Geometry/VokNurbsSurface.h>

#include <gtest/gtest.h>

namespace SceneTest {

namespace {

bool ClaimsTooMuch(const Failure& failure) {
    return failure.text.starts_with(
        "Counts in the document announce values that its text does not hold: ");
}

TEST(NurbsSurface, RoundTripsWhole) {
    const std::string nurbs =
        "<nurbs name=\"s\">\n<surface uOrder=\"3\" vOrder=\"4\" uMin=\"0.0\" uMax=\"1.0\" "
        "vMin=\"-0.5\" vMax=\"2.0\">\n<controlVertices numCVinU=\"2\" numCVinV=\"1\">0.0 1.0 2.0 "
        "3.0 4.0 5.0</controlVertices>\n<knotsInU numKnotsInU=\"2\">0.0 1.0</knotsInU>\n<knotsInV "
        "numKnotsInV=\"3\">0.0 0.5 1.0</knotsInV>\n</surface>\n<node name=\"n\">\n</node>\n"
        "</nurbs>";
    EXPECT_EQ(Rewritten<VokNurbsSurface>(nurbs), nurbs);
}

TEST(NurbsSurface, WithNothingItWritesAnEmptySurface) {
    EXPECT_EQ(Rewritten<VokNurbsSurface>(R"(<nurbs name="s"/>)"),
              "<nurbs name=\"s\">\n<surface uOrder=\"0\" vOrder=\"0\" uMin=\"0.0\" uMax=\"0.0\" "
              "vMin=\"0.0\" vMax=\"0.0\">\n<controlVertices numCVinU=\"0\" "
              "numCVinV=\"0\">\n</controlVertices>\n<knotsInU numKnotsInU=\"0\">\n</knotsInU>\n"
              "<knotsInV numKnotsInV=\"0\">\n</knotsInV>\n</surface>\n</nurbs>");
}

TEST(NurbsSurface, AGridBeyondAnyNumberIsRefused) {
    for (const char* grid :
         {R"(numCVinU="2147483647" numCVinV="2147483647")", R"(numCVinU="65536" numCVinV="65536")",
          R"(numCVinU="4294967295" numCVinV="4294967295")"})
        EXPECT_TRUE(ClaimsTooMuch(LoadFailure(R"(<nurbs name="s"><surface><controlVertices )" +
                                              std::string(grid) +
                                              ">1 2 3</controlVertices></surface></nurbs>")))
            << grid;
    Scene scene(R"(<nurbs name="s"><surface><controlVertices numCVinU="-3" numCVinV="7">1 2
</controlVertices><knotsInU numKnotsInU="2">1</knotsInU></surface></nurbs>)");
    EXPECT_TRUE(scene.First<VokNurbsSurface>().controlVertices.Get().empty());
    EXPECT_EQ(scene.First<VokNurbsSurface>().knotsInU.Get(), (std::vector<float>{1, 0}));
}

TEST(NurbsSurface, ListsOutsideASurfaceAreUnknown) {
    EXPECT_EQ(LoadFailure(R"(<nurbs name="s"><knotsInU numKnotsInU="0"/></nurbs>)"),
              (Failure{"Unknown tag \"knotsInU\"", "|s"}));
}

}  // namespace

}  // namespace SceneTest
