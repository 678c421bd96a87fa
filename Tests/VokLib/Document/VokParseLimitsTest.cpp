#include "Document/MarkupScanner.h"
#include "VokLib/Document/ParseTools.h"
#include "VokLib/Document/ParserComparison.h"

#include <VokLib/Base/VokLimits.h>
#include <VokLib/CustomData/VokCustomAttributeString.h>
#include <VokLib/Document/VokParse.h>
#include <VokLib/Tree/VokScene.h>

#include <string>

using namespace ParseTools;

namespace {

std::string Repeat(std::string_view text, std::size_t count) {
    std::string all;
    all.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) all += text;
    return all;
}

class ParseLimits : public ReaderTest {};

/// Joints one inside the other, between the root and the deepest at `depth`.
std::string NestedNodes(std::size_t depth) {
    return Document("<scene>" + Repeat("<node name='n'>", depth) + Repeat("</node>", depth) +
                    "</scene>");
}

TEST_F(ParseLimits, DepthIsReadUpToTheLimit) {
    // The root and the scene are two.
    EXPECT_EQ(LoadText(NestedNodes(VokLimits::kMaxElementDepth - 2)), "");
}

TEST_F(ParseLimits, DepthPastTheLimitIsRefused) {
    const std::size_t column =
        std::string("<scene>").size() + 15 * (VokLimits::kMaxElementDepth - 1) + 0;
    EXPECT_EQ(
        LoadText(NestedNodes(VokLimits::kMaxElementDepth - 1), "deep.qeli"),
        "Document limit exceeded: more than 10000 nested elements in \"deep.qeli\" Line 3 Column " +
            std::to_string(column));
}

TEST_F(ParseLimits, DepthIsBoundInWhatIsSkippedToo) {
    const std::size_t depth = VokLimits::kMaxElementDepth;
    const std::string skipped = "<parseacceleration>" + Repeat("<a>", depth) +
                                Repeat("</a>", depth) + "</parseacceleration>";
    EXPECT_EQ(LoadText(Document(skipped)).substr(0, 54),
              "Document limit exceeded: more than 10000 nested elemen");
}

TEST_F(ParseLimits, DepthIsBoundInFrontOfTheRoot) {
    const std::string million = Repeat("<a>", 1000000);
    EXPECT_EQ(
        LoadText(million, "x"),
        "Document limit exceeded: more than 10000 nested elements in \"x\" Line 1 Column 30003");
}

TEST_F(ParseLimits, MillionNestedElementsEndInTheLimit) {
    const std::string million = Document("<scene>" + Repeat("<node name='n'>", 1000000));
    EXPECT_EQ(LoadText(million).substr(0, 54),
              "Document limit exceeded: more than 10000 nested elemen");
}

std::string WithAttributes(std::size_t count) {
    std::string attributes;
    for (std::size_t i = 1; i < count; ++i) attributes += " a" + std::to_string(i) + "=''";
    return Document("<scene><node name='n'" + attributes + "/></scene>");
}

TEST_F(ParseLimits, AttributesAreReadUpToTheLimit) {
    EXPECT_EQ(LoadText(WithAttributes(VokLimits::kMaxAttributes)), "");
}

TEST_F(ParseLimits, AttributesPastTheLimitAreRefused) {
    const std::string text =
        "Document limit exceeded: more than 256 attributes on one element in \"wide.qeli\" Line 3 "
        "Column 8";
    EXPECT_EQ(LoadText(WithAttributes(VokLimits::kMaxAttributes + 1), "wide.qeli"), text);
    EXPECT_EQ(LoadText(WithAttributes(200000), "wide.qeli"), text);
}

TEST_F(ParseLimits, AttributesOfTheRootAreBoundToo) {
    std::string attributes;
    for (int i = 0; i < 200000; ++i) attributes += " a" + std::to_string(i) + "='1'";
    EXPECT_EQ(LoadText("<QEL" + attributes + "/>", "x"),
              "Document limit exceeded: more than 256 attributes on one element in \"x\" Line 1 "
              "Column 1");
    EXPECT_EQ(LoadText("<other" + attributes + "/>", "x"),
              "Document limit exceeded: more than 256 attributes on one element in \"x\" Line 1 "
              "Column 1");
}

TEST_F(ParseLimits, ManyElementsWithFewAttributesEachAreFine) {
    EXPECT_EQ(
        LoadText(Document("<scene>" + Repeat("<node name='n' a='' b=\"\"/>", 2000) + "</scene>")),
        "");
}

/// A node whose start tag has exactly `bytes` bytes.
std::string WithTagOf(std::size_t bytes) {
    const std::string begin = "<node name='n' a='";
    const std::string end = "'/>";
    return Document("<scene>" + begin + std::string(bytes - begin.size() - end.size(), 'x') + end +
                    "</scene>");
}

TEST_F(ParseLimits, MarkupIsReadUpToTheLimit) {
    EXPECT_EQ(LoadText(WithTagOf(VokLimits::kMaxMarkupBytes)), "");
    const std::string comment = "<!--" + std::string(VokLimits::kMaxMarkupBytes - 7, ' ') + "-->";
    EXPECT_EQ(LoadText(Document(comment)), "");
    const std::string cdata =
        "<![CDATA[" + std::string(VokLimits::kMaxMarkupBytes - 12, ' ') + "]]>";
    EXPECT_EQ(LoadText(Document(cdata)), "");
}

TEST_F(ParseLimits, MarkupPastTheLimitIsRefused) {
    const std::string text =
        "Document limit exceeded: more than 4194304 bytes in one tag, comment or other markup in "
        "\"long.qeli\" Line 3 Column ";
    EXPECT_EQ(LoadText(WithTagOf(VokLimits::kMaxMarkupBytes + 1), "long.qeli"), text + "8");
    EXPECT_EQ(LoadText(WithTagOf(50000000), "long.qeli"), text + "8");
    const std::string comment = "<!--" + std::string(VokLimits::kMaxMarkupBytes - 6, ' ') + "-->";
    EXPECT_EQ(LoadText(Document(comment), "long.qeli"), text + "1");
    const std::string cdata =
        "<![CDATA[" + std::string(VokLimits::kMaxMarkupBytes - 11, ' ') + "]]>";
    EXPECT_EQ(LoadText(Document(cdata), "long.qeli"), text + "1");
    const std::string instruction = "<?pi " + std::string(VokLimits::kMaxMarkupBytes, ' ');
    EXPECT_EQ(LoadText(Document(instruction), "long.qeli"), text + "1");
}

std::string WithDoctypeOf(std::size_t bytes) {
    const std::string begin = "<!DOCTYPE QEL [";
    const std::string end = "]>";
    std::string document = Document("");
    return document.insert(document.find("<QEL"),
                           begin + std::string(bytes - begin.size() - end.size(), ' ') + end);
}

TEST_F(ParseLimits, DocumentTypeIsReadUpToTheLimit) {
    EXPECT_EQ(LoadText(WithDoctypeOf(VokLimits::kMaxDoctypeBytes)), "");
}

TEST_F(ParseLimits, DocumentTypePastTheLimitIsRefused) {
    EXPECT_EQ(LoadText(WithDoctypeOf(VokLimits::kMaxDoctypeBytes + 1), "dtd.qeli"),
              "Document limit exceeded: more than 131072 bytes in one document type in "
              "\"dtd.qeli\" Line 2 Column 1");
}

/// A document with `count` names: the root's and its attribute's, and those of elements that are
/// skipped.
std::string WithNames(std::size_t count) {
    std::string elements;
    for (std::size_t i = 0; i < count - 3; ++i) elements += "<n" + std::to_string(i) + "/>";
    return Document("<parseacceleration>" + elements + "</parseacceleration>");
}

TEST_F(ParseLimits, NamesAreReadUpToTheLimit) {
    EXPECT_EQ(LoadText(WithNames(VokLimits::kMaxNames)), "");
}

TEST_F(ParseLimits, NamesPastTheLimitAreRefused) {
    const std::string text =
        "Document limit exceeded: more than 10000 different names in \"names.qeli\" Line 3 Column ";
    EXPECT_EQ(LoadText(WithNames(VokLimits::kMaxNames + 1), "names.qeli"), text + "78892");
    EXPECT_EQ(LoadText(WithNames(1000000), "names.qeli"), text + "78892");
}

TEST_F(ParseLimits, NamesOfInstructionsCountToo) {
    std::string instructions;
    for (int i = 0; i < 200000; ++i) instructions += "<?n" + std::to_string(i) + "?>";
    EXPECT_EQ(LoadText(Document(instructions), "x").substr(0, 55),
              "Document limit exceeded: more than 10000 different name");
    EXPECT_EQ(LoadText(instructions, "x").substr(0, 55),
              "Document limit exceeded: more than 10000 different name");
}

std::string WithChoices(std::size_t count) {
    std::string names = "n";
    for (std::size_t i = 0; i < count; ++i) names += "|n" + std::to_string(i);
    std::string document = Document("");
    return document.insert(document.find("<QEL"),
                           "<!DOCTYPE QEL [<!ATTLIST a b (" + names + ") #IMPLIED>]>");
}

TEST_F(ParseLimits, ChoicesOfADocumentTypeAreReadUpToTheLimit) {
    EXPECT_EQ(LoadText(WithChoices(VokLimits::kMaxDoctypeChoices)), "");
}

TEST_F(ParseLimits, ChoicesOfADocumentTypePastTheLimitAreRefused) {
    const std::string text =
        "Document limit exceeded: more than 4096 choices in one document type in \"dtd.qeli\" Line "
        "2 Column 1";
    EXPECT_EQ(LoadText(WithChoices(VokLimits::kMaxDoctypeChoices + 1), "dtd.qeli"), text);
    EXPECT_EQ(LoadText(WithChoices(15000), "dtd.qeli"), text);
}

TEST_F(ParseLimits, FaultInFrontOfALimitIsReportedFirst) {
    const std::string document = Document("<scene></nod>" + WithAttributes(600));
    EXPECT_EQ(LoadText(document, "x"), "Libxml2 parse error: 76 in \"x\" Line 3 Column 14");
    EXPECT_EQ(LoadText(Document("<unheard/>" + WithAttributes(600))), "Unknown tag \"unheard\"");
}

TEST_F(ParseLimits, LongStringAttributeLoads) {
    VokWorld world;
    VokParse parse;
    const std::string text(1000000, 's');
    const std::string document =
        Document("<scene><node name='" + text + "'><customData><attribute name='a' type='string'>" +
                 text + "</attribute></customData></node></scene>");
    ParseInBlocks(parse, world, document, 0x10000);
    const VokObj& node = *world.GetHierarchy()->GetChild(0);
    EXPECT_EQ(node.GetName(), text);
    EXPECT_EQ(dynamic_cast<const VokCustomAttributeString&>(node.GetCustomData().GetAttribute(0))
                  .GetValue(),
              text);
}

TEST_F(ParseLimits, WideTreesAndManyLinksLoad) {
    std::string nodes;
    std::string members;
    for (int i = 0; i < 20000; ++i) {
        nodes += "<node name='n" + std::to_string(i) + "'/>";
        members += "<member path='||n" + std::to_string(i) + "'/>";
    }
    EXPECT_EQ(
        LoadText(Document("<scene>" + nodes + "</scene><objset name='s'>" + members + "</objset>")),
        "");
}

}  // namespace
