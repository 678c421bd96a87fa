#include "VokLib/Document/ParseTools.h"

#include <QelTools/Exception.h>
#include <VokLib/Tree/VokCast.h>
#include <VokLib/Tree/VokFactory.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

using namespace ParseTools;

namespace {

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

TEST_F(ParseLinks, LinkToALaterObjectResolves) {
    EXPECT_EQ(LoadText(Document("<objset name='set'><member path='||late'/></objset><scene><joint "
                                "name='late'/></scene>")),
              "");
}

TEST_F(ParseLinks, CurrentDocumentMustBeClean) {
    EXPECT_EQ(LoadText(Linked("||gone")), "Unresolved VokObjLinks");
}

TEST_F(ParseLinks, LinkIntoAReferenceIsNeverBad) {
    EXPECT_EQ(LoadText(Document("<reference name='r' uri='a.qeli' namespace='other'/>"
                                "<objset name='set'><member path='|other:thing'/></objset>")),
              "");
}

TEST_F(ParseLinks, OldestVersionsLoseTheirBadLinksWithAWarning) {
    for (const char* version : {"1_0_3", "1_0_4", "1_0_5", "1_0_7", "1_2_0", "1_2_1"}) {
        VokWorld old;
        update.result = Linked("||gone");
        parse.SetAllowUpdate(true);
        testing::internal::CaptureStderr();
        EXPECT_EQ(ThrownText([&] { ParseTools::Parse(parse, old, Linked("|gone", version)); }), "");
        const std::string rule(65, '-');
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  rule +
                      "\nWarning: The automatic update process found links within the file\n"
                      "         that would be invalid in a newer, stricter qeli version.\n"
                      "         These links have been removed.\n" +
                      rule + "\nUnresolved link: |set->||gone\n");
        const VokObj* set = old.FindChild("set");
        ASSERT_NE(set, nullptr);
    }
}

TEST_F(ParseLinks, CompatibleDocumentOfTheOldestVersionsIsTreatedAlike) {
    update.compatible = true;
    testing::internal::CaptureStderr();
    EXPECT_EQ(Load(Linked("||gone", "1_2_1")), "");
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
}

TEST_F(ParseLinks, LaterOldVersionsMustBeClean) {
    update.result = Linked("||gone");
    for (const char* version : {"1_4_0", "1_10_0"}) {
        VokWorld old;
        parse.SetAllowUpdate(true);
        EXPECT_EQ(ThrownText([&] { ParseTools::Parse(parse, old, Linked("|gone", version)); }),
                  "Unresolved VokObjLinks");
    }
    update.compatible = true;
    EXPECT_EQ(Load(Linked("||gone", "1_27_3")), "Unresolved VokObjLinks");
}

}  // namespace
