#include "VokLib/Update/UpdateTools.h"

using namespace UpdateTools;

namespace {

/// Paths begin with a bar from 1.8.2 on.
class StageInto182 : public StageTest {
  protected:
    StageInto182() : StageTest("1_8_0", "1_8_2") {}

    /// `contents` with a bar in front of each value that begins with "P".
    static std::string WithBars(std::string contents) {
        for (std::size_t at = contents.find("\"P"); at != std::string::npos;
             at = contents.find("\"P", at + 1))
            contents.insert(at + 1, "|");
        return contents;
    }
};

constexpr const char* kPaths[] = {
    "<aimConstraint constrain=\"P1\"><target name=\"P2\" weight=\"1\"/></aimConstraint>",
    "<orientationConstraint constrain=\"P1\"><target name=\"P2\"/></orientationConstraint>",
    "<parentConstraint constrain=\"P1\"><target name=\"P2\"/></parentConstraint>",
    "<scaleConstraint constrain=\"P1\"><target name=\"P2\"/></scaleConstraint>",
    "<translationConstraint constrain=\"P1\"><target name=\"P2\"/></translationConstraint>",
    "<anim name=\"a\" target=\"P\"/>",
    "<animChannel channel=\"c\" inputObject=\"P\" inputChannel=\"x\"/>",
    "<blendshape controller=\"P\"/>",
    "<cgshader><binding tag=\"t\" source=\"P\"/></cgshader>",
    "<material><binding source=\"P\"/></material>",
    "<shader><binding source=\"P\"/></shader>",
    "<deformer target=\"P\"/>",
    "<expression><input object=\"P1\" channel=\"c\"/><output object=\"P2\"/></expression>",
    "<instance target=\"P\"/>",
    "<primitives shader=\"P\"/>",
    "<primitive shader=\"P\"/>",
    "<objset><member path=\"P\" membership=\"m\"/></objset>",
    "<pmdataQEL target=\"P\"/>",
    "<pose><element target=\"P\"/></pose>",
    "<skin><influence target=\"P\"/></skin>",
};

TEST_F(StageInto182, EveryPathBeginsWithABar) {
    for (const std::string contents : kPaths) EXPECT_EQ(Inside(contents), WithBars(contents));
}

TEST_F(StageInto182, EveryPathIsTold) {
    for (const std::string contents : kPaths) {
        const bool hasTwo = contents.find("P1") != std::string::npos;
        EXPECT_EQ(Messages(contents),
                  hasTwo ? "Updating VokPath: P1\nUpdating VokPath: P2\n" : "Updating VokPath: P\n")
            << contents;
    }
}

TEST_F(StageInto182, EmptyPathsStayEmpty) {
    EXPECT_EQ(Inside("<anim target=''/><instance target=''/>"),
              "<anim target=\"\"/><instance target=\"\"/>");
    EXPECT_EQ(Messages("<anim target=''/>"), "");
}

TEST_F(StageInto182, APathThatHasABarGetsAnother) {
    EXPECT_EQ(Inside("<anim target='|a&amp;b'/>"), "<anim target=\"||a&amp;b\"/>");
}

TEST_F(StageInto182, TheSameNamesElsewhereAreNoPaths) {
    for (const std::string contents :
         {"<node target=\"n\" path=\"p\" source=\"s\" shader=\"x\" constrain=\"c\"/>",
          "<target name=\"t\"/>", "<binding source=\"s\"/>", "<member path=\"p\"/>",
          "<element target=\"t\"/>", "<influence target=\"t\"/>", "<input object=\"o\"/>",
          "<blendshape><target name=\"t\"/></blendshape>",
          "<springConstraint constrain=\"c\"><target name=\"t\"/></springConstraint>",
          "<motionPath constrain=\"c\" curvePath=\"p\"/>"})
        EXPECT_EQ(Inside(contents), contents);
}

TEST_F(StageInto182, WhatStandsInsideIsTakenAlong) {
    EXPECT_EQ(
        Inside("<anim target='P'>1<animChannel inputObject='P'><x>2</x></animChannel></anim>"),
        "<anim target=\"|P\">1<animChannel inputObject=\"|P\"><x>2</x></animChannel></anim>");
}

class StageInto190 : public StageTest {
  protected:
    StageInto190() : StageTest("1_8_2", "1_9_0") {}
};

TEST_F(StageInto190, TheRootTellsTheFormOfFileNamesInTheNewNamespace) {
    const XmlStylesheet sheet = server->LoadStylesheet(Sheet());
    const std::string old = "<QEL xmlns='" + VersionNamespace("1_8_2") + "'/>";
    const OldDocument document = ParseOldDocument(old.data(), old.size());
    const XmlDocument result(xsltApplyStylesheet(sheet.get(), document.tree.get(), nullptr));
    const std::unique_ptr<xmlChar, void (*)(void*)> form(
        xmlGetNsProp(xmlDocGetRootElement(result.get()), ToXml("filenameform"),
                     ToXml(VersionNamespace("1_9_0").c_str())),
        [](void* text) { xmlFree(text); });
    EXPECT_EQ(FromXml(form.get()), "qelrootrelative") << "the stylesheet's own default";
}

class StageInto115 : public StageTest {
  protected:
    StageInto115() : StageTest("1_14_1", "1_15_0") {}
};

TEST_F(StageInto115, AChannelIsNamedAfterItsAttribute) {
    EXPECT_EQ(Inside("<animChannel channel='translateX' inputObject='|n'>x</animChannel>"),
              "<animChannel name=\"translateX\" channel=\"translateX\" inputObject=\"|n\">x"
              "</animChannel>");
    EXPECT_EQ(Inside("<animChannel name='old' channel='new'/>"),
              "<animChannel name=\"new\" channel=\"new\"/>");
    EXPECT_EQ(Inside("<animChannel/>"), "<animChannel name=\"\"/>");
}

TEST_F(StageInto115, EvenlySpacedKeysTellTheirDuration) {
    EXPECT_EQ(Inside("<animData interp='Timestep' timeStep='0.25' numKeys='5' keyStride='3'>"
                     "<keyValues>1</keyValues></animData>"),
              "<animData interp=\"Timestep\" duration=\"1\" numKeys=\"5\" keyStride=\"3\">"
              "<keyValues>1</keyValues></animData>");
    EXPECT_EQ(Inside("<animData numKeys='1' timeStep='4.16666679e-2' interp='Timestep'/>"),
              "<animData numKeys=\"1\" duration=\"0\" interp=\"Timestep\"/>");
    EXPECT_EQ(Inside("<animData numKeys='31' timeStep='0.0416666679' interp='Timestep'/>"),
              "<animData numKeys=\"31\" duration=\"1.250000037\" interp=\"Timestep\"/>");
}

TEST_F(StageInto115, OtherKeysStay) {
    for (const std::string contents :
         {"<animData interp=\"QELCurve\" timeStep=\"1\" numKeys=\"2\"/>",
          "<animData timeStep=\"1\" numKeys=\"2\"/>", "<animData interp=\"Timestep\"/>",
          "<node interp=\"Timestep\" timeStep=\"1\" numKeys=\"2\"/>"})
        EXPECT_EQ(Inside(contents), contents);
}

}  // namespace
