#include "Update/VokUpdateQelServer.h"

#include "VokLib/Update/UpdateTools.h"

#include <VokLib/Base/VokException.h>
#include <VokLib/Base/VokLimits.h>
#include <VokLib/Objects/Sets/VokObjSet.h>
#include <VokLib/Tree/VokNode.h>
#include <VokLib/Tree/VokScene.h>
#include <VokLib/Tree/VokWorld.h>

using namespace UpdateTools;

namespace {

std::string Nested(std::size_t depth) {
    std::string text;
    for (std::size_t i = 0; i < depth; ++i) text += "<node name=\"n\">";
    for (std::size_t i = 0; i < depth; ++i) text += "</node>";
    return text;
}

class VokUpdateQelServerTest : public UpdateTest {
  protected:
    static std::string Old(const std::string& contents, const std::string& version) {
        return "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<QEL xmlns=\"" +
               VersionNamespace(version) + "\" filenameform=\"qelirelative\">" + contents +
               "</QEL>";
    }
    /// What a load of `document` throws, or "".
    std::string Load(const std::string& document) {
        world = std::make_unique<VokWorld>();
        VokParse parse;
        parse.SetAllowUpdate(true);
        return ThrownText([&] { ParseTools::Parse(parse, *world, document, "old.qeli"); });
    }

    std::unique_ptr<VokWorld> world;
};

TEST_F(VokUpdateQelServerTest, DocumentsOfEveryVersionLoad) {
    for (std::size_t i = 1; i < Versions().size(); ++i) {
        EXPECT_EQ(
            Load(Old("<scene><node name='a'><node name='\xE9'/></node></scene>", Versions()[i])),
            "")
            << Versions()[i];
        ASSERT_NE(world->FindChild(""), nullptr);
        EXPECT_EQ(world->GetHierarchy()->GetChild(0)->GetChild(0)->GetName(), "\xE9")
            << Versions()[i];
        EXPECT_EQ(world->GetFilenameForm(),
                  i >= 11 || Versions()[i] == "1_28_1" ? "qelirelative" : "qelrootrelative")
            << Versions()[i];
    }
}

TEST_F(VokUpdateQelServerTest, ADocumentFromBeforeVersionsCannotBeToldFromAnUnknownOne) {
    EXPECT_EQ(Load("<QEL><scene/></QEL>"),
              "Failed to extract version information from .qeli file.");
}

TEST_F(VokUpdateQelServerTest, TheInputIsGivenBackOnceItIsATree) {
    std::ostringstream out;
    Input input(Old("", "1_14_1"));
    server->Update(out, input, VersionNamespace("1_14_1"));
    EXPECT_TRUE(input.isFreed);
    Input broken("<QEL>");
    EXPECT_THROW(server->Update(out, broken, VersionNamespace("1_14_1")), VokException);
}

TEST_F(VokUpdateQelServerTest, AMalformedOldDocumentFailsWithLineAndColumn) {
    EXPECT_EQ(Load(Old("\n<scene>\n</scen>", "1_8_0")),
              "Failed to parse out of date .qeli document. Libxml2 parse error: 76 Line 4 Column "
              "8");
}

TEST_F(VokUpdateQelServerTest, TheWayIsFoundBeforeTheDocumentIsParsed) {
    EXPECT_EQ(Failure("<broken", "1' or '1'='1"),
              "Failed to evaluate xpath expression to find update process.");
}

TEST_F(VokUpdateQelServerTest, StagesRunFromTheOldestAndEachInItsOrder) {
    EXPECT_EQ(Failure(Old("", "1_0_4"), VersionNamespace("1_0_4")), "");
    std::vector<std::string> sheets;
    for (const std::string& uri : server->loaded)
        if (uri.ends_with(".xslt")) sheets.push_back(uri);
    std::vector<std::string> expected;
    for (std::size_t i = 1; i + 1 < Versions().size(); ++i)
        expected.push_back(Uri(Versions()[i] + "/" + Versions()[i + 1] + ".xslt"));
    EXPECT_EQ(sheets, expected);
}

TEST_F(VokUpdateQelServerTest, NothingIsKeptBetweenCalls) {
    const std::string first = Updated(Old("<scene/>", "1_5_0"), VersionNamespace("1_5_0"));
    EXPECT_NE(Failure("<QEL xmlns='x'/>", VersionNamespace("1_5_0")), "");
    EXPECT_EQ(Updated(Old("<scene/>", "1_5_0"), VersionNamespace("1_5_0")), first);
}

TEST_F(VokUpdateQelServerTest, AllRulesMeetInOneDocument) {
    EXPECT_EQ(Updated("<QEL xmlns='" + VersionNamespace("1_0_4") +
                          "' dropped='1'><camera name='c'><hzFov>1</hzFov></camera><light "
                          "name='l'><direction>1</direction></light><!-- c --><anim name='a' "
                          "target='|n'><animChannel channel='t' inputObject=''><animData "
                          "interp='Timestep' timeStep='2' numKeys='3'/></animChannel></anim></QEL>",
                      VersionNamespace("1_0_4")),
              "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n"
              "<QEL schemaLocation=\"http://qel.example/ns/qeli/1_28_1/qeli "
              "http://qel.example/ns/qeli/1_28_1/qeli.xsd\" filenameform=\"qelrootrelative\" "
              "xmlns=\"http://qel.example/ns/qeli/1_28_1/qeli\" "
              "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
              "xmlns:to=\"http://qel.example/ns/qeli/1_9_0/qeli\"><camera name=\"c\"><focalLength>"
              "3.5e-2</focalLength><horizontalFilmAperture>0.0382411742890653"
              "</horizontalFilmAperture></camera><light name=\"l\"/><animclip "
              "name=\"xsltUpdateClip\"><anim name=\"a\" target=\"||n\"><animChannel name=\"t\" "
              "channel=\"t\" inputObject=\"\"><animData interp=\"Timestep\" duration=\"4\" "
              "numKeys=\"3\"/></animChannel></anim></animclip></QEL>");
}

TEST_F(VokUpdateQelServerTest, TheOldestVersionsLoseTheirBadLinks) {
    const std::string contents =
        "<scene><node name='n'/></scene><objset name='s' type='t'><member path='|n'/>"
        "<member path='|gone'/></objset>";
    for (const char* version : {"1_0_4", "1_0_5", "1_0_7", "1_2_0", "1_2_1"}) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(Load(Old(contents, version)), "") << version;
        const std::string rule(65, '-');
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  rule +
                      "\nWarning: The automatic update process found links within the file\n"
                      "         that would be invalid in a newer, stricter qeli version.\n"
                      "         These links have been removed.\n" +
                      rule + "\nUnresolved link: |s->||gone\n")
            << version;
        ASSERT_NE(world->FindChild("s"), nullptr);
    }
    for (const char* version : {"1_4_0", "1_14_1", "1_27_3"})
        EXPECT_EQ(Load(Old(contents, version)), "Unresolved VokObjLinks") << version;
}

TEST_F(VokUpdateQelServerTest, DeepTreesGoThroughEveryStage) {
    for (const std::size_t depth : {std::size_t{300}, std::size_t{2000}}) {
        const std::string inside = Nested(depth);
        const std::string text = Updated(Old(inside, "1_0_4"), VersionNamespace("1_0_4"));
        EXPECT_NE(text.find(">" + inside.substr(0, inside.find("></")) + "/></node>"),
                  std::string::npos)
            << depth;
    }
}

TEST_F(VokUpdateQelServerTest, AsDeepATreeAsTheReaderTakesGoesThrough) {
    const std::size_t inRoot = VokLimits::kMaxElementDepth - 1;
    EXPECT_EQ(Failure(Old(Nested(inRoot), "1_14_1"), VersionNamespace("1_14_1")), "");
    const std::string foreign = "<f:x xmlns:f='foreign'>" + Nested(inRoot - 1) + "</f:x>";
    EXPECT_EQ(Failure(Old(foreign, "1_10_0"), VersionNamespace("1_10_0")), "");
}

TEST_F(VokUpdateQelServerTest, ADeepDocumentFailsInTheSameWords) {
    server->SetVerbosity(1);
    testing::internal::CaptureStdout();
    EXPECT_EQ(Failure("<QEL xmlns='x'>" + Nested(1000) + "</QEL>", VersionNamespace("1_14_1")),
              "Failed to apply xslt \"http://qel.example/ns/qeli/1_14_1/1_15_0.xslt\" when "
              "updating old version .qeli file.");
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Error: Input .qeli file is incorrect version. Expected namespace "
              "\"http://qel.example/ns/qeli/1_14_1/qeli\". Found namespace \"x\".\n");
}

TEST_F(VokUpdateQelServerTest, OneArrayOf50MegabytesLoads) {
    std::string numbers;
    while (numbers.size() < 50000000) numbers += "1.0 2.5 -3.25e-2 ";
    EXPECT_EQ(Load(Old("<anim name='a' target=''><animChannel channel='c'><animData "
                       "interp='Timestep' timeStep='1' numKeys='" +
                           std::to_string(numbers.size() / 17 * 3) + "'><keyValues>" + numbers +
                           "</keyValues></animData></animChannel></anim>",
                       "1_14_1")),
              "");
}

TEST_F(VokUpdateQelServerTest, ValuesThatCannotBeWrittenPlainlyFailInTheReader) {
    const std::string text =
        Updated(Old("<scene><node name='a&lt;b'/></scene>", "1_14_1"), VersionNamespace("1_14_1"));
    EXPECT_EQ(Load(Old("<scene><node name='a&lt;b'/></scene>", "1_14_1")),
              "Libxml2 parse error: 73 in \"old.qeli\" Line 2 Column " +
                  std::to_string(text.find("<b") - text.find("<QEL") + 1));
}

}  // namespace
