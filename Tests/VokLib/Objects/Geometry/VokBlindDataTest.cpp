#include "VokLib/SceneTestTools.h"

#include <VokLib/Base/VokLimits.h>
#include <VokLib/Objects/Geometry/VokMesh.h>

#include <gtest/gtest.h>

namespace SceneTest {
namespace {

std::string InMesh(std::string_view table) {
    return "<mesh name=\"m\">\n<vertexArray>\n" + std::string(table) + "\n</vertexArray>\n</mesh>";
}

/// A table `b` of `rows` rows in a mesh.
std::string Table(int rows, std::string_view contents) {
    return InMesh("<blindData name=\"b\" component=\"Vert\" numComponents=\"" +
                  std::to_string(rows) + "\">\n" + std::string(contents) + "\n</blindData>");
}

// A table stands in no tree, so that its failures name no path.

VokBlindData& TableOf(Scene& scene) {
    return *scene.First<VokMesh>().blindData.at(0);
}

TEST(BlindData, RoundTripsWhole) {
    const std::string mesh = Table(3,
                                   "<components>4 -1 7</components>\n"
                                   "<attribute name=\"on\" type=\"Bool\">0 0 1</attribute>\n"
                                   "<attribute name=\"id\" type=\"Int\">1 -2 3</attribute>\n"
                                   "<attribute name=\"kind\" type=\"Enum\">0 1 2</attribute>\n"
                                   "<attribute name=\"w\" type=\"Float\">0.5 1.0 -0.0</attribute>\n"
                                   "<node name=\"n\">\n</node>\n<customData>\n"
                                   "<attribute name=\"k\" type=\"string\">v</attribute>\n"
                                   "</customData>");
    EXPECT_EQ(Rewritten<VokMesh>(mesh), mesh);
}

TEST(BlindData, EveryComponentHasItsText) {
    for (const char* component : {"Invalid", "Poly", "Edge", "Vert"}) {
        const std::string mesh =
            InMesh("<blindData name=\"b\" component=\"" + std::string(component) +
                   "\" numComponents=\"0\">\n</blindData>");
        EXPECT_EQ(Rewritten<VokMesh>(mesh), mesh);
    }
    EXPECT_EQ(LoadFailure(InMesh(R"(<blindData name="b" component="poly" numComponents="0"/>)")),
              (Failure{"Unknown component type", ""}));
}

TEST(BlindData, NeedsItsAttributes) {
    EXPECT_EQ(LoadFailure(InMesh(R"(<blindData component="Poly" numComponents="0"/>)")).text,
              "Missing attribute in parse");
    const Failure missing{"Missing attribute in parse", ""};
    EXPECT_EQ(LoadFailure(InMesh(R"(<blindData name="b" numComponents="0"/>)")), missing);
    EXPECT_EQ(LoadFailure(InMesh(R"(<blindData name="b" component="Poly"/>)")), missing);
    EXPECT_EQ(LoadFailure(R"(<blindData name="b" component="Poly" numComponents="0"/>)"),
              (Failure{"Unknown tag \"blindData\"", ""}))
        << "only a mesh makes one";
}

TEST(BlindData, NamesComponentsOnlyWhereTheDocumentDoes) {
    Scene with(Table(0, "<components/>"));
    EXPECT_TRUE(TableOf(with).namesComponents);
    EXPECT_NE(Write(TableOf(with)).find("<components>\n</components>"), std::string::npos);
}

TEST(BlindData, WithoutComponentsNoneAreWritten) {
    Scene scene(Table(2, ""));
    EXPECT_FALSE(TableOf(scene).namesComponents);
    EXPECT_EQ(Write(TableOf(scene)),
              "<blindData name=\"b\" component=\"Vert\" numComponents=\"2\">\n</blindData>");
}

TEST(BlindData, AColumnHasAValueForEachRow) {
    Scene scene(Table(3, R"(<attribute name="a" type="Int">1</attribute>
<attribute name="b" type="Float">1 2 3 4</attribute><attribute name="c" type="Enum"/>)"));
    EXPECT_EQ(TableOf(scene).GetColumnOf<int>(0).values.Get(), (std::vector<int>{1, 0, 0}));
    EXPECT_EQ(TableOf(scene).GetColumnOf<float>(1).values.Get(), (std::vector<float>{1, 2, 3}));
    EXPECT_EQ(TableOf(scene).GetColumnOf<int>(2).values.Get(), (std::vector<int>{0, 0, 0}));
    EXPECT_EQ(TableOf(scene).GetColumn(2).GetType(), BlindDataType::Enum);
}

TEST(BlindData, OfAListOfBoolsTheLastAloneCanBeTrue) {
    Scene scene(Table(2, R"(<attribute name="a" type="Bool">true true</attribute>
<attribute name="b" type="Bool">1 0</attribute><attribute name="c" type="Bool">0 1 </attribute>)"));
    EXPECT_EQ(TableOf(scene).GetColumnOf<bool>(0).values.Get(), (std::vector<bool>{false, true}));
    EXPECT_EQ(TableOf(scene).GetColumnOf<bool>(1).values.Get(), (std::vector<bool>{false, false}));
    EXPECT_EQ(TableOf(scene).GetColumnOf<bool>(2).values.Get(), (std::vector<bool>{false, false}));
}

TEST(BlindData, AColumnNeedsAKnownType) {
    EXPECT_EQ(LoadFailure(Table(1, R"(<attribute name="a"/>)")),
              (Failure{"Missing 'type' attribute on blind data", ""}));
    EXPECT_EQ(LoadFailure(Table(1, R"(<attribute name="a" type="float"/>)")),
              (Failure{"Unknown data type", ""}));
    EXPECT_EQ(LoadFailure(Table(1, R"(<attribute name="a" type="Invalid"/>)")),
              (Failure{"Unknown blind data type", ""}));
}

TEST(BlindData, ANameCanBeUsedAgainWithItsOwnTypeAlone) {
    const std::string twice = Table(1,
                                    "<attribute name=\"a\" type=\"Int\">1</attribute>\n"
                                    "<attribute name=\"a\" type=\"Int\">2</attribute>");
    EXPECT_EQ(Rewritten<VokMesh>(twice), twice);
    const Failure reused{"Attempt to re-use blind data name with different type", ""};
    EXPECT_EQ(LoadFailure(Table(1, R"(<attribute name="a" type="Int">1</attribute>
<attribute name="a" type="Float">2</attribute>)")),
              reused);
    EXPECT_EQ(LoadFailure(Table(1, R"(<attribute name="a" type="Int">1</attribute>
<attribute name="a" type="Enum">2</attribute>)")),
              reused);
}

TEST(BlindData, ColumnsTakeTheirOwnKindOfValueAlone) {
    Scene scene(Table(1, R"(<attribute name="i" type="Int">1</attribute>
<attribute name="f" type="Float">1</attribute><attribute name="b" type="Bool">1</attribute>)"));
    VokBlindData& table = TableOf(scene);
    table.GetColumn(0).SetInt(0, 5);
    table.GetColumn(1).SetFloat(0, 2.5f);
    table.GetColumn(2).SetBool(0, false);
    EXPECT_EQ(table.GetColumnOf<int>(0).values.Get(), std::vector<int>{5});
    EXPECT_EQ(table.GetColumnOf<float>(1).values.Get(), std::vector<float>{2.5f});
    EXPECT_EQ(table.GetColumnOf<bool>(2).values.Get(), std::vector<bool>{false});
    EXPECT_EQ(FailureOf([&] { table.GetColumn(1).SetInt(0, 1); }),
              (Failure{"Attempt to set int blind data on non-int array", ""}));
    EXPECT_EQ(FailureOf([&] { table.GetColumn(2).SetFloat(0, 1); }),
              (Failure{"Attempt to set float blind data on non-float array", ""}));
    EXPECT_EQ(FailureOf([&] { table.GetColumn(0).SetBool(0, true); }),
              (Failure{"Attempt to set bool blind data on non-bool array", ""}));
    EXPECT_EQ(FailureOf([&] { table.GetColumnOf<float>(0); }),
              (Failure{"Blind data type mismatch", ""}));
}

TEST(BlindData, AColumnOfAnotherLengthCannotBeWritten) {
    Scene scene(Table(1, R"(<attribute name="i" type="Int">1</attribute>)"));
    TableOf(scene).GetColumn(0).SetInt(1, 2);
    EXPECT_EQ(FailureOf([&] { Write(TableOf(scene)); }),
              (Failure{"Attempt to write invalid blind data", ""}));
}

TEST(BlindData, CountsThatLieAreZeroOrRefused) {
    EXPECT_TRUE(LoadFailure(Table(2000000000, R"(<attribute name="a" type="Bool">1</attribute>)"))
                    .text.starts_with("Counts in the document announce values"));
    Scene scene(Table(-5, R"(<attribute name="a" type="Int">1 2</attribute>)"));
    EXPECT_EQ(TableOf(scene).numComponents, 0u);
    EXPECT_EQ(TableOf(scene).GetColumn(0).GetCount(), 0u);
}

/// `levels` meshes, each in the blind data of the one before.
std::string Nested(int levels) {
    std::string open;
    std::string close;
    for (int i = 0; i < levels; ++i) {
        open += R"(<mesh name="m"><vertexArray><blindData name="b" component="Poly" )"
                R"(numComponents="0">)";
        close += "</blindData></vertexArray></mesh>";
    }
    return open + close;
}

TEST(BlindData, NestingIsLimitedForItIsWrittenOneInsideTheOther) {
    {
        Scene scene(Nested(VokLimits::kMaxHeldDepth));
        EXPECT_FALSE(Write(scene.First<VokMesh>()).empty());
    }
    EXPECT_EQ(LoadFailure(Nested(VokLimits::kMaxHeldDepth + 1)).text,
              "Blend targets and blind data are nested too deep: at most 256 may stand in one "
              "another.");
}

}  // namespace
}  // namespace SceneTest
