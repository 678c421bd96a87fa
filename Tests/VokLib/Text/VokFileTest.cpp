#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <VokLib/Base/VokException.h>
#include <VokLib/Text/VokDocumentFile.h>
#include <VokLib/Text/VokTextReader.h>

namespace {

class FileTest : public testing::Test {
  protected:
    std::string Text() const { return stream.str(); }

    std::ostringstream stream;
    VokDocumentFile file{stream};
    const VokAttributes none{};
};

TEST_F(FileTest, Header) {
    file.WriteHeader();
    file.OpenTag("a");
    EXPECT_EQ(Text(), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<a>");
}

TEST_F(FileTest, OpeningTagDirectlyFollowedByItsEndIsPartedByALineFeed) {
    file.OpenTag("a");
    file.CloseTag("a");
    EXPECT_EQ(Text(), "<a>\n</a>");
}

TEST_F(FileTest, TagsBehindTagsStandOnNewLines) {
    file.OpenTag("a");
    file.OpenTag("b");
    file.WriteInt(1);
    file.CloseTag("b");
    file.EmptyTag("c", none);
    file.EmptyTag("d", none);
    file.OpenTag("e");
    file.WriteText("t");
    file.CloseTag("e");
    file.CloseTag("a");
    EXPECT_EQ(Text(), "<a>\n<b>1</b>\n<c />\n<d />\n<e>t</e>\n</a>");
}

TEST_F(FileTest, EmptyTextKeepsTheEndOnTheLine) {
    file.OpenTag("a");
    file.WriteText("");
    file.CloseTag("a");
    EXPECT_EQ(Text(), "<a></a>");
}

TEST_F(FileTest, TagsBehindNumbersTextAndRawStandWhereTheyAre) {
    file.OpenTag("a");
    file.WriteInt(1);
    file.EmptyTag("b", none);
    file.WriteText("t");
    file.OpenTag("c");
    file.WriteRaw(" ");
    file.CloseTag("c");
    file.WriteRaw("\n");
    file.CloseTag("a");
    EXPECT_EQ(Text(), "<a>1<b />t<c> </c>\n</a>");
}

TEST_F(FileTest, AttributesInOrderAndEscaped) {
    VokAttributes attributes;
    attributes.Add("b", "a & \"b\" 'c' <d> &amp;");
    attributes.Add("a", "");
    file.OpenTag("t", attributes);
    file.EmptyTag("u", attributes);
    const std::string text = " b=\"a &amp; &quot;b&quot; &apos;c&apos; <d> &amp;amp;\" a=\"\"";
    EXPECT_EQ(Text(), "<t" + text + ">\n<u" + text + " />");
}

TEST_F(FileTest, TextEscapesLessThanAndAmpersandAlone) {
    file.WriteText("a & \"b\" 'c' <d> &&");
    EXPECT_EQ(Text(), "a &amp; \"b\" 'c' &lt;d> &amp;&amp;");
}

TEST_F(FileTest, RawGoesOutAsItStands) {
    file.WriteRaw("<&\"'>");
    EXPECT_EQ(Text(), "<&\"'>");
}

TEST_F(FileTest, NumbersInARowArePartedByOneBlank) {
    file.OpenTag("a");
    file.WriteInt(-1);
    file.WriteUnsigned(4294967295u);
    file.WriteBool(true);
    file.WriteBool(false);
    file.WriteFloat(0.1f);
    file.WriteText(",");
    file.WriteInt(2);
    file.WriteText("");
    file.WriteInt(3);
    file.WriteRaw(" ");
    file.WriteInt(4);
    file.WriteInt(5);
    file.CloseTag("a");
    EXPECT_EQ(Text(), "<a>-1 4294967295 1 0 1.00000001e-1,23 4 5</a>");
}

TEST_F(FileTest, VectorsAndMatrices) {
    file.WriteVector2({1, 2});
    file.WriteVector3({3, 4, 5});
    file.WriteVector4({6, 7, 8, 9});
    VokMatrix matrix;
    matrix[0][0] = 1;
    matrix[3] = {4, 5, 6, 1};
    file.WriteMatrix(matrix);
    const float floats[] = {-0.0f, 0.5f};
    file.WriteFloats(floats, 2);
    EXPECT_EQ(Text(),
              "1.0 2.0 3.0 4.0 5.0 6.0 7.0 8.0 9.0 "
              "1.0 0.0 0.0 0.0 0.0 0.0 0.0 0.0 0.0 0.0 0.0 0.0 4.0 5.0 6.0 1.0 -0.0 0.5");
}

TEST_F(FileTest, FloatArrayHasABlankBehindEach) {
    file.WriteInt(2);
    file.WriteFloatArray({1, 2});
    file.WriteInt(3);
    EXPECT_EQ(Text(), "2 1.0 2.0 3");
    file.WriteFloatArray({});
    file.WriteInt(4);
    EXPECT_EQ(Text(), "2 1.0 2.0 3 4");
}

TEST_F(FileTest, IndexedFloatsReadBack) {
    const std::vector<std::pair<int, float>> pairs{{3, 0.5f}, {-1, 2}};
    file.WriteIndexedFloats(pairs);
    EXPECT_EQ(Text(), "2 3 0.5 4294967295 2.0");
    VokTextReader reader;
    reader.AppendText(Text().data(), Text().size());
    reader.RewindText();
    std::vector<std::pair<int, float>> back;
    reader.ReadIndexedFloats(back);
    EXPECT_EQ(back, pairs);
}

TEST_F(FileTest, ClosingAnotherTagIsRefused) {
    const auto expectRefusal = [&](const char* name) {
        try {
            file.CloseTag(name);
            ADD_FAILURE() << name;
        } catch (const VokException& failure) {
            EXPECT_STREQ(failure.what(), "VokFile::PopTag() error");
        }
    };
    expectRefusal("a");
    file.OpenTag("a");
    file.OpenTag("b");
    expectRefusal("a");
    file.CloseTag("b");
    file.CloseTag("a");
    expectRefusal("a");
}

TEST_F(FileTest, WordsOfFloats) {
    file.WriteFloat(std::numeric_limits<float>::infinity());
    file.WriteFloat(std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(Text(), "INF NAN");
}

TEST_F(FileTest, StreamsFormatDoesNotReachTheNumbers) {
    stream << std::hex << std::showpos << std::boolalpha;
    file.WriteInt(255);
    file.WriteBool(true);
    file.WriteFloat(1);
    EXPECT_EQ(Text(), "255 1 1.0");
}

}  // namespace
