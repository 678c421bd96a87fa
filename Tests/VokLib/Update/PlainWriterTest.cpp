#include "Update/PlainWriter.h"

#include "VokLib/Update/UpdateTools.h"

using namespace UpdateTools;

namespace {

constexpr const char* kHead = "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n";

class PlainWriterTest : public UpdateTest {
  protected:
    /// `text` parsed as libxml2 does by itself, then written.
    static std::string Written(const std::string& text) {
        const XmlDocument document(xmlReadMemory(text.data(), static_cast<int>(text.size()),
                                                 nullptr, nullptr, XML_PARSE_NOENT));
        std::ostringstream out;
        WritePlain(out, *document);
        return out.str();
    }
};

TEST_F(PlainWriterTest, ElementsAttributesAndTextsAreWritten) {
    EXPECT_EQ(Written("<a b='1' c=\"2\"><d/>x<e>y</e> z\n</a>"),
              std::string(kHead) + "<a b=\"1\" c=\"2\"><d/>x<e>y</e> z\n</a>");
}

TEST_F(PlainWriterTest, AttributesLosePrefixesAndStandBeforeDeclarations) {
    EXPECT_EQ(Written("<a xmlns='one' xmlns:p='two'><p:b p:c='1' xmlns:q='th&amp;ree'/></a>"),
              std::string(kHead) +
                  "<a xmlns=\"one\" xmlns:p=\"two\"><b c=\"1\" xmlns:q=\"th&ree\"/></a>");
}

TEST_F(PlainWriterTest, AttributeValuesEscapeQuotesAndAmpersandsAlone) {
    EXPECT_EQ(Written("<a b='\"&amp;&apos;&lt;&gt;&#10;'/>"),
              std::string(kHead) + "<a b=\"&quot;&amp;&apos;<>\n\"/>");
}

TEST_F(PlainWriterTest, TextsEscapeBracketsToo) {
    EXPECT_EQ(Written("<a>\"&amp;'&lt;&gt;é]]&gt;</a>"),
              std::string(kHead) + "<a>&quot;&amp;&apos;&lt;&gt;é]]&gt;</a>");
}

TEST_F(PlainWriterTest, CommentsInstructionsAndTypesAreDropped) {
    EXPECT_EQ(Written("<!DOCTYPE a [<!ELEMENT a ANY>]><!-- c --><?p i?><a>1<!-- c -->2<?p i?>3</a>"
                      "<!-- end -->"),
              std::string(kHead) + "<a>123</a>");
}

TEST_F(PlainWriterTest, TextsBeyondItsBufferAreWholeAndInOrder) {
    const std::string longText(200000, 'x');
    EXPECT_EQ(Written("<a><b/>" + longText + "<c>&amp;" + longText + "</c></a>"),
              kHead + ("<a><b/>" + longText + "<c>&amp;" + longText + "</c></a>"));
}

}  // namespace
