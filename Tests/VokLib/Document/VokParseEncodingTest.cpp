#include "Document/DocumentEncoding.h"
#include "VokLib/Document/ParseTools.h"
#include "VokLib/Document/ParserComparison.h"

#include <VokLib/CustomData/VokCustomAttributeFloatArray.h>
#include <VokLib/CustomData/VokCustomAttributeString.h>
#include <VokLib/Document/VokParse.h>
#include <VokLib/Tree/VokScene.h>

#include <string>
#include <vector>

using namespace ParseTools;

namespace {

class ParseEncoding : public ReaderTest {
  protected:
    void Load(const std::string& document) { ParseTools::Parse(parse, world, document); }
    VokObj& First() { return *world.GetHierarchy()->GetChild(0); }
    template <class Attribute>
    const Attribute& Custom(std::size_t index) {
        return dynamic_cast<const Attribute&>(First().GetCustomData().GetAttribute(index));
    }

    VokWorld world;
    VokParse parse;
};

constexpr const char* kNode =
    "<scene><node name='H\xFC"
    "fte'><customData>"
    "<attribute name='\xE9' type='string'>caf\xE9 &#233; \xA0</attribute>"
    "<attribute name='n' type='floatarray' count='2'>1.5 \xE9 2.5</attribute>"
    "</customData></node></scene>";

TEST_F(ParseEncoding, NamesAndTextsArriveInSingleBytes) {
    Load(Document(kNode));
    EXPECT_EQ(First().GetName(),
              "H\xFC"
              "fte");
    EXPECT_EQ(Custom<VokCustomAttributeString>(0).GetName(), "\xE9");
    EXPECT_EQ(Custom<VokCustomAttributeString>(0).GetValue(), "caf\xE9 \xE9 \xA0");
}

TEST_F(ParseEncoding, EveryEncodingGivesTheSameTexts) {
    const std::string utf8 = Document(
        "<scene><node name='H\xC3\xBC"
        "fte'><customData><attribute name='\xC3\xA9' type='string'>caf\xC3\xA9"
        "</attribute></customData></node></scene>",
        {.encoding = "UTF-8"});
    Load(utf8);
    EXPECT_EQ(First().GetName(),
              "H\xFC"
              "fte");
    EXPECT_EQ(Custom<VokCustomAttributeString>(0).GetValue(), "caf\xE9");
}

TEST_F(ParseEncoding, NumbersAreNotConverted) {
    // The two bytes of the letter in UTF-8 are one token that is no number.
    Load(Document(kNode));
    EXPECT_EQ(Custom<VokCustomAttributeFloatArray>(1).GetValue(), (std::vector<float>{1.5f, 0.0f}));
}

TEST_F(ParseEncoding, CharactersBeyondTheSingleBytesAreRefused) {
    const std::string text = "Failed to convert libxml string to ISO-8859-1 form.";
    EXPECT_EQ(LoadText(Document("<scene><node name='&#8364;'/></scene>")), text);
    EXPECT_EQ(LoadText(Document("<scene><node name='a'><customData><attribute name='b' "
                                "type='string'>&#8364;</attribute>"
                                "</customData></node></scene>")),
              text);
    // Where nobody reads it as a text, it does no harm.
    EXPECT_EQ(
        LoadText(Document("<scene><node name='a'><translate>&#8364;</translate></node></scene>")),
        "");
}

TEST_F(ParseEncoding, AWideDocumentThatEndsInsideACharacterIsRefused) {
    const std::string narrow = Document("<scene><node name='a'/></scene>", {.encoding = "UTF-16"});
    std::string wide = "\xFF\xFE";
    for (const char byte : narrow) wide += {byte, '\0'};
    EXPECT_EQ(LoadText(wide), "");
    for (const std::string& odd : {std::string("\n"), std::string(1, '\0')})
        EXPECT_EQ(LoadText(wide + odd), "The document ends inside a character.");
    // The first fault is the one that is told.
    EXPECT_EQ(LoadText(wide.substr(0, wide.size() - 3)), LoadText(wide.substr(0, wide.size() - 4)));
}

TEST_F(ParseEncoding, WrongEncodingIsAFaultOfTheText) {
    const std::string document = Document("<scene>\xE9</scene>", {.encoding = "UTF-8"});
    EXPECT_EQ(LoadText(document, "a"), "Libxml2 parse error: 9 in \"a\" Line 3 Column 9");
}

}  // namespace
