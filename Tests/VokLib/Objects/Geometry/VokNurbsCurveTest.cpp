#include "VokLib/SceneTestTools.h"

#include <VokLib/Objects/Geometry/VokNurbsCurve.h>
#include <VokLib/Objects/Geometry/VokNurbsSurface.h>

#include <gtest/gtest.h>

namespace SceneTest {
namespace {

bool ClaimsTooMuch(const Failure& failure) {
    return failure.text.starts_with(
        "Counts in the document announce values that its text does not hold: ");
}

TEST(NurbsCurve, RoundTripsWholeInEveryForm) {
    for (const char* form : {"open", "closed", "periodic"}) {
        const std::string curve =
            "<nurbsCurve name=\"c\" degree=\"3\" form=\"" + std::string(form) +
            "\">\n<points count=\"2\">0.0 1.0 2.0 3.0 4.0 5.0</points>\n<knots count=\"3\">0.0 0.5 "
            "1.0</knots>\n<node name=\"n\">\n</node>\n</nurbsCurve>";
        EXPECT_EQ(Rewritten<VokNurbsCurve>(curve), curve);
    }
}

TEST(NurbsCurve, WithoutListsItWritesEmptyOnesAndIsOpen) {
    EXPECT_EQ(Rewritten<VokNurbsCurve>(R"(<nurbsCurve name="c" degree="4294967295"/>)"),
              "<nurbsCurve name=\"c\" degree=\"4294967295\" form=\"open\">\n<points "
              "count=\"0\">\n</points>\n<knots count=\"0\">\n</knots>\n</nurbsCurve>");
}

TEST(NurbsCurve, NeedsItsAttributes) {
    EXPECT_EQ(LoadFailure(R"(<nurbsCurve name="c" form="open"/>)"),
              (Failure{"Nurbs curve missing degree attribute", "|c"}));
    EXPECT_EQ(LoadFailure(R"(<nurbsCurve name="c" degree="1"><points/></nurbsCurve>)"),
              (Failure{"Nurbs curve missing points count attribute", "|c"}));
    EXPECT_EQ(LoadFailure(R"(<nurbsCurve name="c" degree="1"><knots/></nurbsCurve>)"),
              (Failure{"Nurbs curve missing knots count attribute", "|c"}));
}

TEST(NurbsCurve, AnUnknownFormIsRefused) {
    EXPECT_EQ(LoadFailure(R"(<nurbsCurve name="c" degree="1" form="Open"/>)"),
              (Failure{"NurbsCurve has no form for string \"Open\".", "|c"}));
    EXPECT_EQ(LoadFailure(R"(<nurbsCurve name="c" degree="1" form=""/>)"),
              (Failure{"NurbsCurve has no form for string \"\".", "|c"}));
    Scene scene(R"(<nurbsCurve name="c" degree="1"/>)");
    scene.First<VokNurbsCurve>().form = VokNurbsCurve::Form{3};
    EXPECT_EQ(FailureOf([&] { Write(scene.First<VokNurbsCurve>()); }),
              (Failure{"NurbsCurve form enum is out of range.", "|c"}));
}

TEST(NurbsCurve, CountsThatLieAreFilledOrRefused) {
    const auto claimsTooMuch = [](std::string_view list) {
        return ClaimsTooMuch(LoadFailure(R"(<nurbsCurve name="c" degree="1">)" + std::string(list) +
                                         "</nurbsCurve>"));
    };
    EXPECT_TRUE(claimsTooMuch(R"(<points count="4000000000">1 2 3</points>)"));
    EXPECT_TRUE(claimsTooMuch(R"(<knots count="2000000000">1 2 3</knots>)"));
    Scene scene(R"(<nurbsCurve name="c" degree="1"><points count="2">1 2 3 4</points>
<knots count="-2">1 2</knots></nurbsCurve>)");
    EXPECT_EQ(scene.First<VokNurbsCurve>().points, (std::vector<float>{1, 2, 3, 4, 0, 0}));
    EXPECT_TRUE(scene.First<VokNurbsCurve>().knots.empty());
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
    EXPECT_TRUE(scene.First<VokNurbsSurface>().controlVertices.empty());
    EXPECT_EQ(scene.First<VokNurbsSurface>().knotsInU, (std::vector<float>{1, 0}));
}

TEST(NurbsSurface, ListsOutsideASurfaceAreUnknown) {
    EXPECT_EQ(LoadFailure(R"(<nurbs name="s"><knotsInU numKnotsInU="0"/></nurbs>)"),
              (Failure{"Unknown tag \"knotsInU\"", "|s"}));
}

}  // namespace
}  // namespace SceneTest
