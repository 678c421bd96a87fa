#include <VokLib/Objects/Animation/VokAnimDiscontinuities.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

namespace {

using Kind = VokAnimDiscontinuities::Kind;
using Floats = std::vector<float>;

std::string Element(std::string_view content, std::string_view stride = "2") {
    return "<animDiscontinuities name=\"d\" keyStride=\"" + std::string(stride) + "\">\n" +
           std::string(content) + "</animDiscontinuities>";
}

Floats List(std::span<const float> values) {
    return {values.begin(), values.end()};
}

}  // namespace

TEST(VokAnimDiscontinuities, WritesWhatItReads) {
    const std::string text = Element(
        "<step time=\"0.5\">\n<before>1.0 2.0</before>\n<after>3.0 4.0</after>\n</step>\n"
        "<corner time=\"1.5\" />\n"
        "<step time=\"2.5\">\n<before>5.0 6.0</before>\n<after>7.0 8.0</after>\n</step>\n");
    EXPECT_EQ(Rewritten<VokAnimDiscontinuities>(text), text);
}

TEST(VokAnimDiscontinuities, TheStrideIsAlwaysWritten) {
    EXPECT_EQ(Rewritten<VokAnimDiscontinuities>(R"(<animDiscontinuities name="d"/>)"),
              "<animDiscontinuities name=\"d\" keyStride=\"1\">\n</animDiscontinuities>");
}

TEST(VokAnimDiscontinuities, ValuesThatAreNotGivenAreZeros) {
    Scene scene(Element(
        R"(<corner time="1">7 7</corner><step time="2"><after>3 4 5</after></step><step time="x"/>)"));
    const auto& d = scene.First<VokAnimDiscontinuities>();
    ASSERT_EQ(d.GetCount(), 3u);
    EXPECT_EQ(d.GetDiscontinuity(0).kind, Kind::Corner);
    EXPECT_EQ(d.GetDiscontinuity(0).time, 1);
    EXPECT_EQ(List(d.GetDiscontinuity(0).before), (Floats{0, 0}));
    EXPECT_EQ(d.GetDiscontinuity(1).kind, Kind::Step);
    EXPECT_EQ(List(d.GetDiscontinuity(1).before), (Floats{0, 0}));
    EXPECT_EQ(List(d.GetDiscontinuity(1).after), (Floats{3, 4}));
    EXPECT_EQ(d.GetDiscontinuity(2).time, 0);
}

TEST(VokAnimDiscontinuities, TheTimeIsRequired) {
    for (const char* entry : {"<corner/>", "<step/>"})
        EXPECT_EQ(LoadFailure(Element(entry)),
                  (Failure{"Internal error - please report as a bug", "|d"}));
}

TEST(VokAnimDiscontinuities, AStepHoldsItsTwoValuesAlone) {
    for (const char* inner :
         {"<corner time=\"1\"/>", "<step time=\"1\"/>", "<node name=\"n\"/>", "<x/>"})
        EXPECT_EQ(LoadFailure(Element("<step time=\"1\">" + std::string(inner) + "</step>")),
                  (Failure{"Unrecognised tag while parsing animation discontiniuties.", "|d"}))
            << inner;
}

TEST(VokAnimDiscontinuities, ValuesHoldNoElement) {
    for (const char* side : {"before", "after"})
        for (const char* inner : {"<before/>", "<after/>", "<x/>"})
            EXPECT_EQ(LoadFailure(Element("<step time=\"1\"><" + std::string(side) + ">" + inner +
                                          "</" + side + "></step>")),
                      (Failure{"Error when parsing animation discontinuities.", "|d"}))
                << side << inner;
}

TEST(VokAnimDiscontinuities, ValuesBelongInsideAStep) {
    EXPECT_EQ(LoadFailure(Element("<before>1 2</before>")),
              (Failure{"Unknown tag \"before\"", "|d"}));
    EXPECT_EQ(LoadFailure(Element("<corner time=\"1\"><after/></corner>")),
              (Failure{"Unknown tag \"after\"", "|d"}));
}

TEST(VokAnimDiscontinuities, OtherElementsGoToTheBase) {
    Scene scene(
        Element(R"(<node name="n"/><customData><attribute name="a" type="string">t</attribute>
        </customData><corner time="1"/>)"));
    EXPECT_EQ(scene.First<VokAnimDiscontinuities>().GetChildCount(), 1u);
    EXPECT_EQ(scene.First<VokAnimDiscontinuities>().GetCount(), 1u);
}

TEST(VokAnimDiscontinuities, AComponentCountOfZeroIsRefused) {
    EXPECT_EQ(LoadFailure(Element("", "0")),
              (Failure{"AnimationDiscontinuities component count must be non-zero.", "|d"}));
}

TEST(VokAnimDiscontinuities, AnotherComponentCountKeepsTheLeadingFloats) {
    Scene scene(
        Element("<step time=\"1\"><before>1 2</before><after>3 4</after></step>"
                "<step time=\"2\"><before>5 6</before><after>7 8</after></step>"));
    auto& d = scene.First<VokAnimDiscontinuities>();
    d.SetComponentCount(3);
    EXPECT_EQ(List(d.GetDiscontinuity(0).after), (Floats{3, 4, 0}));
    EXPECT_EQ(List(d.GetDiscontinuity(1).before), (Floats{5, 6, 0}));
    d.SetComponentCount(3);
    d.SetComponentCount(1);
    EXPECT_EQ(List(d.GetDiscontinuity(0).before), (Floats{1}));
    EXPECT_EQ(List(d.GetDiscontinuity(1).after), (Floats{7}));
    d.SetComponentCount(2);
    EXPECT_EQ(List(d.GetDiscontinuity(1).after), (Floats{7, 0}));
}

TEST(VokAnimDiscontinuities, AnUnsetEntryIsNotWritten) {
    Library library;
    VokAnimDiscontinuities d;
    d.SetName("d");
    d.Add();
    d.Add(Kind::Step, 2);
    d.GetBefore(1)[0] = 4;
    d.GetAfter(1)[0] = 5;
    EXPECT_EQ(d.GetDiscontinuity(0).kind, Kind::Unset);
    EXPECT_EQ(
        Write(d),
        Element("<step time=\"2.0\">\n<before>4.0</before>\n<after>5.0</after>\n</step>\n", "1"));
}

TEST(VokAnimDiscontinuities, TheStrideIsAClaim) {
    EXPECT_NE(LoadFailure(Element("<corner time=\"1\"/>", "2147483647")).text, "");
}
