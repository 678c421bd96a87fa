#include "Support/DeepWorkingFolder.h"
#include "Support/ThisSystem.h"
#include "VokLib/Document/ParseTools.h"

#include <QelTools/Exception.h>
#include <VokLib/Document/VokParse.h>
#include <VokLib/Tree/VokCast.h>
#include <VokLib/Tree/VokFactory.h>
#include <VokLib/Tree/VokScene.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

using namespace ParseTools;

namespace {

/// Writes down what the reader calls.
class Probe : public VokObj {
  public:
    static inline std::vector<std::string> log;
    static VokObj* Make() { return new Probe; }

    void ParseAttributes(VokParse& parse) override {
        log.push_back("attributes " + Attributes(parse));
    }
    void ParseStartTag(VokParse& parse) override {
        const std::string tag(parse.GetTag());
        log.push_back("start " + tag + Attributes(parse) +
                      (parse.GetNewObject() != nullptr ? " new!" : ""));
        EXPECT_EQ(parse.GetTagId(), MakeTypeId(tag));
        if (tag == "skip") parse.Skip();
        if (tag == "twice") {
            auto child = std::make_unique<Probe>();
            AddChild(child.get());
            parse.PushNewObject(child.get());
            parse.PushNewObject(child.release());
        }
        if (tag == "throw") QelTools::Common::ThrowException("the object's own text");
        if (tag == "probe") {
            auto child = std::make_unique<Probe>();
            AddChild(child.get());
            parse.PushNewObject(child.release());
        }
    }
    void ParseData(VokParse& parse) override {
        log.push_back("data " + std::string(parse.GetTag()) + " [" + parse.ReadString() + "]");
    }
    void ParseEndTag(VokParse& parse) override {
        log.push_back("end " + std::string(parse.GetTag()) + Attributes(parse) + " [" +
                      std::string(parse.GetText()) + "]");
    }
    std::string_view GetElementName() const override { return "probe"; }

  private:
    static std::string Attributes(VokParse& parse) {
        std::string text;
        const VokAttributes& attributes = parse.GetAttributes();
        for (std::size_t i = 0; i < attributes.GetCount(); ++i)
            text += std::string(" ") + attributes.GetName(i) + "=" + attributes.GetValue(i);
        return text;
    }
};

using Log = std::vector<std::string>;

class ParseEvents : public ReaderTest {
  protected:
    ParseEvents() { VokFactory::RegisterFactory("probe", Probe::Make); }
    ~ParseEvents() override { VokFactory::UnregisterFactory("probe"); }

    Log LogOf(const std::string& contents) {
        Probe::log.clear();
        EXPECT_EQ(LoadText(Document(contents)), "");
        return Probe::log;
    }
};

TEST_F(ParseEvents, ObjectHearsItsElementsInOrderAndItsOwnEnd) {
    EXPECT_EQ(LogOf("<probe a='1' b='two'><x c='3'>7 8</x></probe>"),
              (Log{"attributes  a=1 b=two", "start x c=3", "data x [7 8]", "end x c=3 []",
                   "data x []", "end probe c=3 []"}));
}

TEST_F(ParseEvents, PushedObjectTakesOverUntilItsOwnEnd) {
    EXPECT_EQ(
        LogOf("<probe><probe n='1'><y/></probe><z/></probe>"),
        (Log{"attributes ", "start probe n=1", "start y", "data y []", "end y []", "data y []",
             "end probe []", "start z", "data z []", "end z []", "data z []", "end probe []"}));
}

TEST_F(ParseEvents, TextInFrontOfAChildIsDroppedAndTextBehindTheLastOneKept) {
    EXPECT_EQ(LogOf("<probe>lost<x>kept</x>lost too<y/>behind</probe>"),
              (Log{"attributes ", "start x", "data x [kept]", "end x []", "start y", "data y []",
                   "end y []", "data y [behind]", "end probe []"}));
}

TEST_F(ParseEvents, CommentsAndInstructionsInsideATextJoinIt) {
    EXPECT_EQ(LogOf("<probe>1 2<!-- 9 > ' -->3<?pi 4?><![CDATA[ 5<6]]>&amp;&#x41;</probe>"),
              (Log{"attributes ", "data probe [1 23 5<6&A]", "end probe []"}));
}

TEST_F(ParseEvents, SkippedElementIsLeftOutWithEverythingInIt) {
    EXPECT_EQ(LogOf("<probe>a<skip>text<skip/><probe>more</probe></skip>b<x/></probe>"),
              (Log{"attributes ", "start skip", "start x", "data x []", "end x []", "data x []",
                   "end probe []"}));
}

TEST_F(ParseEvents, EmptyElementCanBeSkipped) {
    EXPECT_EQ(LogOf("<probe><skip/>behind</probe>"),
              (Log{"attributes ", "start skip", "data skip [behind]", "end probe []"}));
}

TEST_F(ParseEvents, SecondObjectForOneStartTagIsRefused) {
    EXPECT_EQ(LoadText(Document("<probe><twice/></probe>")),
              "Attempt to push two new objects when reading start tag.");
}

TEST_F(ParseEvents, FailureOfAnObjectGoesBeforeLaterFaultsOfTheText) {
    EXPECT_EQ(LoadText(Document("<probe><throw/></x> & <")), "the object's own text");
    EXPECT_EQ(LoadText(Document("<node name='n'><unheard/></y>")), "Unknown tag \"unheard\"");
}

TEST_F(ParseEvents, SkippingOutsideOfADocumentIsRefused) {
    VokParse parse;
    EXPECT_EQ(ThrownText([&] { parse.Skip(); }), "No parser");
}

TEST_F(ParseEvents, BorderOfABlockMayFallAnywhere) {
    const std::string document = Document(
        "<probe a='x>y' b=\"it's\">t&lt;&#65;x<x c='>'>1.5 2.5</x><!-- > ' "
        "--><skip><y>\"</y></skip>z</probe>");
    const std::size_t first = document.find("<probe");
    VokWorld whole;
    VokParse parse;
    Probe::log.clear();
    ParseTools::Parse(parse, whole, document);
    const Log expected = Probe::log;
    for (std::size_t cut = first; cut <= document.size(); ++cut) {
        Probe::log.clear();
        VokWorld world;
        parse.ParseBuffer(world, document.data(), cut, VokParse::kFirstBlock, nullptr);
        parse.ParseBuffer(world, document.data() + cut, document.size() - cut, VokParse::kLastBlock,
                          nullptr);
        EXPECT_EQ(Probe::log, expected) << cut;
    }
    Probe::log.clear();
    VokWorld world;
    ParseInBlocks(parse, world, document, 1, first);
    EXPECT_EQ(Probe::log, expected);
}

class Parse : public ReaderTest {};

TEST_F(Parse, StageFlagsAreChecked) {
    VokWorld world;
    VokParse parse;
    EXPECT_EQ(ThrownText([&] { parse.ParseBuffer(world, "", 0, 0x1000, nullptr); }),
              "Invalid buffer stage parameter.");
    EXPECT_EQ(
        ThrownText([&] { parse.ParseBuffer(world, "", 0, VokParse::kFirstBlock | 1, nullptr); }),
        "Invalid buffer stage parameter.");
}

TEST_F(Parse, BlockThatContinuesNoDocumentIsRefused) {
    VokWorld world;
    VokParse parse;
    const std::string text = "Failed to extract version information from .qeli file.";
    EXPECT_EQ(ThrownText([&] { parse.ParseBuffer(world, "x", 1, 0, nullptr); }), text);
    EXPECT_NE(ThrownText([&] { ParseTools::Parse(parse, world, Document("<unheard/>")); }), "");
    EXPECT_EQ(ThrownText([&] { parse.ParseBuffer(world, "x", 1, 0, nullptr); }), text);
    EXPECT_EQ(ThrownText([&] { ParseTools::Parse(parse, world, Document("")); }), "");
    EXPECT_EQ(ThrownText([&] { parse.ParseBuffer(world, "x", 1, VokParse::kLastBlock, nullptr); }),
              text);
}

TEST_F(Parse, OneReaderReadsOneDocumentAfterAnother) {
    VokParse parse;
    for (int i = 0; i < 3; ++i) {
        VokWorld world;
        EXPECT_NE(ThrownText([&] {
                      ParseTools::Parse(parse, world, Document("<joint name='a'><translate>1"));
                  }),
                  "");
        VokWorld next;
        ParseTools::Parse(parse, next, Document("<scene><joint name='b'/></scene>"));
        EXPECT_EQ(next.GetHierarchy()->GetChildCount(), 1u);
    }
}

TEST_F(Parse, DocumentIsNamedByItsAbsolutePath) {
    VokWorld world;
    VokParse parse;
    ParseTools::Parse(parse, world, Document(""), "/assets/./rigs//hero.qeli");
    const std::filesystem::path root = std::filesystem::current_path().root_path();
    EXPECT_EQ(world.GetFilename(),
              (root / "assets" / "rigs" / "hero.qeli").make_preferred().string());
    VokWorld relative;
    ParseTools::Parse(parse, relative, Document(""), "rigs/../hero.qeli");
    EXPECT_EQ(relative.GetFilename(), (std::filesystem::current_path() / "hero.qeli").string());
    VokWorld nameless;
    ParseTools::Parse(parse, nameless, Document(""));
    EXPECT_EQ(nameless.GetFilename(), "");
}

TEST_F(Parse, NameThatNeedsAWorkingFolderIsRefusedWhereItCannotBeTold) {
    const DeepWorkingFolder deep;
    VokWorld world;
    VokParse parse;
    for (const std::string name : {"hero.qeli", "rigs/hero.qeli"})
        EXPECT_EQ(ThrownText([&] { ParseTools::Parse(parse, world, Document(""), name.c_str()); }),
                  "Failed to retrieve current working directory");
    const std::string complete = std::filesystem::temp_directory_path().string() + "/hero.qeli";
    EXPECT_EQ(ThrownText([&] { ParseTools::Parse(parse, world, Document(""), complete.c_str()); }),
              "");
}

TEST_F(Parse, NameIsSetEvenWhenTheVersionIsRefused) {
    if (kIsWindows) GTEST_SKIP() << "full names begin with a drive";
    VokWorld world;
    VokParse parse;
    EXPECT_NE(ThrownText([&] {
                  ParseTools::Parse(parse, world, Document("", {.version = "1_27_3"}), "/a.qeli");
              }),
              "");
    EXPECT_EQ(world.GetFilename(), "/a.qeli");
}

TEST_F(Parse, FaultOfTheTextTellsCodeAndPlace) {
    EXPECT_EQ(LoadText(Document("<node name='n'>\n  </nodes>"), "rig.qeli"),
              "Libxml2 parse error: 76 in \"rig.qeli\" Line 4 Column 11");
    EXPECT_EQ(LoadText(Document("<node name='n'>\n  </nodes>")),
              "Libxml2 parse error: 76 in \"\" Line 4 Column 11");
}

TEST_F(Parse, FaultInFrontOfTheRootTellsThePlaceAlone) {
    EXPECT_EQ(LoadText(""), "Libxml2 parse error: Line 1 Column 1");
    EXPECT_EQ(LoadText("no document"), "Libxml2 parse error: Line 1 Column 1");
    EXPECT_EQ(LoadText("<a>\n<b></a>"), "Libxml2 parse error: Line 2 Column 8");
}

TEST_F(Parse, FaultBehindTheRootIsNoMatterOfTheVersion) {
    EXPECT_EQ(
        LoadText("<QEL xmlns='other'></QE"),
        std::string(".qeli instance is not the correct version. Expected version namespace of \"") +
            QelCurrentNamespace + "\" but got \"other\".");
}

class ParseVersion : public ReaderTest {
  protected:
    std::string Load(const std::string& document) {
        parse.SetAllowUpdate(true);
        return ThrownText([&] { ParseTools::Parse(parse, world, document, "old.qeli"); });
    }

    VokWorld world;
    VokParse parse;
};

class ParseLinks : public ParseVersion {
  protected:
    static std::string Linked(std::string_view path, std::string_view version = "1_28_1") {
        return Document("<objset name='set'><member path='" + std::string(path) + "'/></objset>",
                        {.version = version});
    }
};

TEST(ParseWithoutLibrary, NeedsFactories) {
    const VokLib library(false, true, true, true, true);
    VokWorld world;
    VokParse parse;
    const std::string text =
        "Attempt to parse without registering any factories. Tools must initialise VokLib before "
        "parsing.";
    EXPECT_EQ(ThrownText([&] { ParseTools::Parse(parse, world, Document("")); }), text);
    EXPECT_EQ(ThrownText([&] { parse.ParseFile(world, "/nowhere/at/all.qeli"); }), text);
}

}  // namespace
