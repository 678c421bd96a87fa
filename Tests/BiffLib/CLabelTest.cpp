#include <BiffLib/CLabel.h>
#include <QelTools/Exception.h>
#include <gtest/gtest.h>

#include "BiffLib/WrittenBytes.h"

using Biff::CBlock;
using Biff::ReserveLabel;
using QelTools::Common::TextException;

TEST(Label, NumbersGoUpByOneFromFifteen) {
    const std::uint32_t first = ReserveLabel();
    EXPECT_GE(first, 15u);
    EXPECT_EQ(ReserveLabel(), first + 1);
    EXPECT_EQ(ReserveLabel(), first + 2);
}

TEST(Label, TakesNoBytesAndLeavesTheKind) {
    CBlock block;
    block.AppendLabel(ReserveLabel());
    EXPECT_EQ(block.kind, Biff::kEmptyBlock);
    EXPECT_EQ(block.items.front()->SizeAt(5), 0u);
    EXPECT_EQ(Little(block), "");
}

TEST(Label, AppendedTwiceFailsWhenWriting) {
    CBlock block;
    const std::uint32_t label = ReserveLabel();
    block.AppendLabel(label);
    block.AppendLabel(label);
    EXPECT_EQ(ThrownText<TextException>([&] { Little(block); }),
              "Offset written out twice, this probably indicates that a label from "
              "Biff::ReserveLabel was passed to Biff::AppendLabel( label ) more than once.");
}

TEST(Label, IsForgottenWhenTheNextWriteBegins) {
    CBlock failing;
    const std::uint32_t label = ReserveLabel();
    failing.AppendLabel(label);
    failing.AppendLabel(label);
    EXPECT_THROW(Little(failing), TextException);

    CBlock other;
    other.AppendU8(1);
    other.AppendOffset(label, Biff::kAbsolute, 1, 1);
    EXPECT_EQ(Little(other), Bytes("\1\xFF"));
}

TEST(Label, OfOneBlockMeansNothingInAnother) {
    CBlock first;
    const std::uint32_t label = ReserveLabel();
    first.AppendLabel(label);
    Little(first);
    CBlock second;
    second.AppendOffset(label, Biff::kAbsolute, 2, 1);
    EXPECT_EQ(Little(second), Bytes("\xFF\xFF"));
}

TEST(Label, IsForgottenWhenTheWriteEnds) {
    CBlock block;
    const std::uint32_t label = ReserveLabel();
    block.AppendData("abcd", 1, 4);
    block.AppendLabel(label);
    std::ostringstream stream;
    block.Write(stream, Biff::kLittleEndian);
    Biff::COffset(label, Biff::kAbsolute, 4, 1).Resolve(stream, Biff::kLittleEndian);
    EXPECT_EQ(stream.str(), "abcd");
}
