#include <gtest/gtest.h>

#include <VokLib/Base/VokException.h>
#include <VokLib/Base/VokLimits.h>
#include <VokLib/Text/VokTextReader.h>

#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

class VokTextReaderTest : public testing::Test {
  protected:
    VokTextReader& With(std::string_view text) {
        reader.ClearText();
        reader.AppendText(text.data(), text.size());
        reader.RewindText();
        return reader;
    }

    VokTextReader reader;
};

TEST_F(VokTextReaderTest, ReadsTakeOneTokenAfterAnother) {
    With(" 1.5\n-2 4294967295\t7x 8");
    EXPECT_EQ(reader.ReadFloat(), 1.5f);
    EXPECT_EQ(reader.ReadInt(), -2);
    EXPECT_EQ(reader.ReadUnsigned(), 4294967295u);
    EXPECT_EQ(reader.ReadInt(), 7);
    EXPECT_EQ(reader.ReadFloat(), 8.0f);
}

TEST_F(VokTextReaderTest, MissingTokensAreZero) {
    With(" 1 2 ");
    EXPECT_EQ(reader.ReadVector3(), (VokVector3{1, 2, 0}));
    EXPECT_EQ(reader.ReadFloat(), 0.0f);
    EXPECT_EQ(reader.ReadInt(), 0);
    EXPECT_EQ(reader.ReadUnsigned(), 0u);
    EXPECT_FALSE(reader.ReadBool());
    EXPECT_EQ(reader.ReadMatrix(), VokMatrix{});
    EXPECT_EQ(reader.ReadString(), "");
}

TEST_F(VokTextReaderTest, TailOfATokenIsSkipped) {
    With("1.5.5 2");
    EXPECT_EQ(reader.ReadVector2(), (VokVector2{1.5f, 2}));
}

TEST_F(VokTextReaderTest, TextStartsEmpty) {
    VokTextReader fresh;
    EXPECT_EQ(fresh.GetText(), "");
    EXPECT_EQ(fresh.ReadString(), "");
}

TEST_F(VokTextReaderTest, PiecesJoinAndClearingForgets) {
    reader.AppendText("12", 2);
    reader.AppendText("3 4", 3);
    reader.AppendText("", 0);
    reader.RewindText();
    EXPECT_EQ(reader.GetText(), "123 4");
    EXPECT_EQ(reader.ReadInt(), 123);
    reader.ClearText();
    EXPECT_EQ(reader.GetText(), "");
    EXPECT_EQ(reader.ReadInt(), 0);
}

TEST_F(VokTextReaderTest, BoolIsTrueOnlyAsTheLastThingInTheText) {
    EXPECT_TRUE(With("true").ReadBool());
    EXPECT_TRUE(With(" \n1").ReadBool());
    for (const char* text : {"true ", "1\n", "True", "10", "truex", "0", "false", ""})
        EXPECT_FALSE(With(text).ReadBool()) << text;
    With("true true");
    EXPECT_FALSE(reader.ReadBool());
    EXPECT_TRUE(reader.ReadBool());
    EXPECT_FALSE(reader.ReadBool());
}

TEST_F(VokTextReaderTest, VectorsMatricesAndAngles) {
    EXPECT_EQ(With("1 2 3 4").ReadVector4(), (VokVector4{1, 2, 3, 4}));
    EXPECT_EQ(With("1 2 3 4").ReadVector3As4(), (VokVector4{1, 2, 3, 3}));
    const VokMatrix matrix = With("1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16").ReadMatrix();
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            EXPECT_EQ(matrix[row][static_cast<std::size_t>(column)],
                      static_cast<float>(row * 4 + column + 1));
    EulerRotation rotation{9, 9, 9, RotationOrder::zyx};
    With("1 2 3").ReadAngles(rotation);
    EXPECT_EQ(rotation, (EulerRotation{1, 2, 3, RotationOrder::zyx}));
}

TEST_F(VokTextReaderTest, ArraysHoldWhatTheCountSays) {
    std::vector<float> floats{9, 9, 9, 9, 9};
    With("1 2 3 4").ReadFloats(floats, 3);
    EXPECT_EQ(floats, (std::vector<float>{1, 2, 3}));
    EXPECT_EQ(reader.ReadInt(), 4);
    With("1 2").ReadFloats(floats, 4);
    EXPECT_EQ(floats, (std::vector<float>{1, 2, 0, 0}));
    With("1 2").ReadFloats(floats, -1);
    EXPECT_TRUE(floats.empty());
    std::vector<unsigned> numbers;
    With("4294967295 x").ReadUnsigneds(numbers, 3);
    EXPECT_EQ(numbers, (std::vector<unsigned>{4294967295u, 0, 0}));
    std::vector<int> integers;
    With("-1 2").ReadInts(integers, 2);
    EXPECT_EQ(integers, (std::vector<int>{-1, 2}));
}

TEST_F(VokTextReaderTest, ArraysTakeNoMoreMemoryThanTheyNeed) {
    std::vector<float> floats;
    With("1 2 3 4 5").ReadFloats(floats, 5);
    EXPECT_EQ(floats.capacity(), 5u);
    std::vector<float> padded;
    With("1 2 3 4 5").ReadFloats(padded, 50);
    EXPECT_EQ(padded.capacity(), 50u);
}

TEST_F(VokTextReaderTest, IndexedFloats) {
    std::vector<std::pair<int, float>> pairs;
    const std::vector<std::pair<int, float>> two{{5, 0.5f}, {-1, 2}};
    With("2 5 0.5 4294967295 2 3").ReadIndexedFloats(pairs);
    EXPECT_EQ(pairs, two);
    EXPECT_EQ(reader.ReadInt(), 3);
    const std::vector<std::pair<int, float>> padded{{5, 0}, {0, 0}};
    With("2 5").ReadIndexedFloats(pairs);
    EXPECT_EQ(pairs, padded);
    With("-3 1 2").ReadIndexedFloats(pairs);
    EXPECT_TRUE(pairs.empty());
    With("").ReadIndexedFloats(pairs);
    EXPECT_TRUE(pairs.empty());
}

TEST_F(VokTextReaderTest, StringIsTheRestWithItsBlanks) {
    With(" a b \n");
    EXPECT_EQ(reader.ReadString(), " a b \n");
    EXPECT_EQ(reader.ReadString(), "");
    With("7 rest ");
    reader.ReadInt();
    EXPECT_EQ(reader.ReadString(), " rest ");
    EXPECT_EQ(With("caf\xC3\xA9").ReadString(), "caf\xE9");
}

TEST_F(VokTextReaderTest, AngryCountIsRefusedBeforeMemoryIsTaken) {
    std::vector<float> floats;
    const std::string start =
        "Counts in the document announce values that its text does not hold: ";
    reader.SetDocumentBytes(100);
    try {
        With("1 2").ReadFloats(floats, std::numeric_limits<long long>::max());
        FAIL();
    } catch (const VokException& failure) {
        EXPECT_EQ(failure.what(), start + "9223372036854775805 more after 0, the limit is 65636.");
    }
    EXPECT_LT(floats.capacity(), 10u);
    std::vector<std::pair<int, float>> pairs;
    EXPECT_THROW(With("2000000000").ReadIndexedFloats(pairs), VokException);
    EXPECT_EQ(pairs.capacity(), 0u);
}

TEST_F(VokTextReaderTest, PaddingIsABudgetOfTheDocument) {
    std::vector<float> floats;
    reader.SetDocumentBytes(10);
    const auto limit = static_cast<long long>(VokLimits::kFreePaddedValues) + 10;
    With("1").ReadFloats(floats, limit);
    With("").ReadFloats(floats, 1);
    EXPECT_THROW(With("").ReadFloats(floats, 1), VokException);
    With("1").ReadFloats(floats, 1);
    reader.SetDocumentBytes(11);
    With("").ReadFloats(floats, 1);
    EXPECT_THROW(With("").ReadFloats(floats, 1), VokException);
    reader.ResetPadding();
    With("").ReadFloats(floats, limit + 1);
    EXPECT_EQ(floats.size(), static_cast<std::size_t>(limit) + 1);
}

TEST_F(VokTextReaderTest, LongTextsInSmallPieces) {
    std::string expected;
    for (int i = 0; i < 300000; ++i) {
        const std::string piece = std::to_string(i % 1000) + " ";
        reader.AppendText(piece.data(), piece.size());
        expected += piece;
    }
    EXPECT_EQ(reader.GetText(), expected);
    reader.RewindText();
    std::vector<float> floats;
    reader.ReadFloats(floats, 300000);
    ASSERT_EQ(floats.size(), 300000u);
    for (std::size_t i = 0; i < floats.size(); ++i)
        ASSERT_EQ(floats[i], static_cast<float>(i % 1000));
}

}  // namespace
