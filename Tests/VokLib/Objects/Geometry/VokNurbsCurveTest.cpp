#include "VokLib/SceneTestTools.h"

#include <VokLib/Objects/Geometry/VokNurbsCurve.h>

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
    EXPECT_EQ(scene.First<VokNurbsCurve>().points.Get(), (std::vector<float>{1, 2, 3, 4, 0, 0}));
    EXPECT_TRUE(scene.First<VokNurbsCurve>().knots.Get().empty());
}

}  // namespace

}  // namespace SceneTest
