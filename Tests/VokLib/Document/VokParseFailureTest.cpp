#include "VokLib/Document/ParseTools.h"

#include <VokLib/Base/VokLimits.h>
#include <VokLib/Document/VokParseFailure.h>
#include <VokLib/Tree/VokFactory.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Links = std::vector<std::string>;

class ParseFailure : public testing::Test {
  protected:
    VokParseFailure FailureIn(std::string_view contents, const DocumentRoot& root = {}) {
        return FailureOfWhole(Document(contents, root));
    }
    VokParseFailure FailureOfWhole(std::string_view document) {
        VokWorld world;
        words = ThrownText([&] { ParseTools::Parse(reader, world, document); });
        EXPECT_NE(words, "");
        return GetParseFailure(reader);
    }
    static std::string PlaceWords(const VokParseFailure& failure) {
        return " Line " + std::to_string(failure.line) + " Column " +
               std::to_string(failure.column);
    }

    VokLib library{true, true, true, true, true};
    VokParse reader;
    std::string words;
};

TEST_F(ParseFailure, TellsThePlaceAndTheObjectInHand) {
    const VokParseFailure failure =
        FailureIn("<scene><joint name=\"a\">\n <jiont name=\"b\"/></joint></scene>");
    EXPECT_EQ(failure.line, 4);
    EXPECT_EQ(failure.column, 17);
    EXPECT_EQ(failure.object, "||a");
    EXPECT_EQ(failure.unresolvedLinks, Links{});
}

TEST_F(ParseFailure, TellsThePlaceOfBrokenMarkup) {
    const VokParseFailure failure = FailureIn("<scene><joint name=\"a\">\n</scene>");
    EXPECT_EQ(failure.line, 4);
    EXPECT_EQ(failure.column, 9);
    EXPECT_EQ(failure.object, "||a");
}

TEST_F(ParseFailure, TellsThePlaceOfAFaultInFrontOfTheRoot) {
    const VokParseFailure failure = FailureOfWhole("\n no document");
    EXPECT_EQ(failure.line, 2);
    EXPECT_EQ(words, "Libxml2 parse error:" + PlaceWords(failure));
}

TEST_F(ParseFailure, TellsThePlaceBehindWhatTheParserHeldBackWhereALimitWasMet) {
    // A text is held back for as long as no tag follows it, and the tag is never pushed.
    const VokParseFailure failure =
        FailureIn("<scene>ab\ncd<node " + std::string(VokLimits::kMaxMarkupBytes, 'x'));
    EXPECT_EQ(failure.line, 4);
    EXPECT_EQ(failure.column, 3);
    EXPECT_TRUE(words.starts_with("Document limit exceeded: ")) << words;
    EXPECT_TRUE(words.ends_with(PlaceWords(failure))) << words;
}

TEST_F(ParseFailure, OfAnOldDocumentOnlyThePlacesOfItsOwnTextAreTold) {
    reader.SetAllowUpdate(true);
    const DocumentRoot old{.version = "1_5_0"};
    VokParseFailure failure = FailureIn("<scene><joint name=\"a\">\n</scene>", old);
    EXPECT_EQ(failure.line, 4);
    EXPECT_EQ(failure.column, 9);
    EXPECT_TRUE(words.starts_with("Failed to parse out of date .qeli document. ")) << words;
    EXPECT_TRUE(words.ends_with(PlaceWords(failure))) << words;

    failure = FailureIn("<scene><joint name=\"a\"><jiont/></joint></scene>", old);
    EXPECT_EQ(words, "Unknown tag \"jiont\"");
    EXPECT_EQ(failure.object, "||a");
    EXPECT_EQ(failure.line, 0);
    EXPECT_EQ(failure.column, 0);
}

TEST_F(ParseFailure, ListsTheLinksWithoutATargetAndBlamesNoPlace) {
    const VokParseFailure failure = FailureIn(
        "<scene><node name=\"n\"/></scene><objset name=\"s\"><member path=\"||y\"/>"
        "<member path=\"||n\"/><member path=\"||x\"/></objset>");
    EXPECT_EQ(failure.unresolvedLinks, (Links{"|s->||x", "|s->||y"}));
    EXPECT_EQ(failure.line, 0);
    EXPECT_EQ(failure.column, 0);
    EXPECT_EQ(failure.object, "");
}

TEST_F(ParseFailure, OfManyLinksWithoutATargetTheFirstAreListedAndAllAreCounted) {
    std::string members;
    for (int i = 0; i < 21; ++i) members += "<member path=\"||" + std::to_string(i) + "\"/>";
    const VokParseFailure failure =
        FailureIn("<objset name=\"s\">" + members + "</objset><scene/>");
    ASSERT_EQ(failure.unresolvedLinks.size(), 20u);
    EXPECT_EQ(failure.unresolvedLinks[2], "|s->||10");
    EXPECT_EQ(failure.unresolvedLinks[19], "|s->||8");
    EXPECT_EQ(failure.unresolvedCount, 21u);
}

TEST_F(ParseFailure, IsGoneWithTheNextLoad) {
    FailureIn("<jiont/>");
    EXPECT_NE(GetParseFailure(reader).line, 0);
    VokWorld world;
    ParseTools::Parse(reader, world, Document("<scene/>"));
    EXPECT_EQ(GetParseFailure(reader).line, 0);
    FailureIn("<jiont/>");
    EXPECT_ANY_THROW(reader.ParseFile(world, "no such folder/none.qeli"));
    EXPECT_EQ(GetParseFailure(reader).line, 0);
}

TEST_F(ParseFailure, TheNamesOfTheElementsAreSorted) {
    const std::vector<std::string_view> names = VokFactory::GetNames();
    EXPECT_EQ(names.size(), VokFactory::FactoryCount());
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
    EXPECT_TRUE(std::binary_search(names.begin(), names.end(), "joint"));
}

}  // namespace
