#include <VokLib/Text/VokTextReader.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

/// Keeps what it is given, call by call.
class Pieces : public VokTextStream {
  public:
    void Take(VokTextReader& text) override { pieces.emplace_back(text.ReadString()); }
    std::vector<std::string> pieces;
};

void Append(VokTextReader& text, std::string_view piece) {
    text.AppendText(piece.data(), piece.size());
}

}  // namespace

TEST(SpecialText, CountedTextIsNotCollected) {
    VokTextReader text;
    text.CountText();
    Append(text, "1.5 2");
    Append(text, ".5 3");
    EXPECT_EQ(text.GetText(), "");
    text.SkipValues(3);
    text.ClearText();
    Append(text, "4 5");
    EXPECT_EQ(text.GetText(), "4 5");
    EXPECT_EQ(text.ReadInt(), 4);
}

TEST(SpecialText, ClaimsBeyondTheWordsAreMeasuredAsEver) {
    for (const bool counted : {false, true}) {
        VokTextReader text;
        if (counted) text.CountText();
        Append(text, "1 2");
        EXPECT_NO_THROW(text.SkipValues(2 + (1 << 16)));
        EXPECT_ANY_THROW(text.SkipValues(3));
    }
}

TEST(SpecialText, StreamsAreGivenWholeWords) {
    VokTextReader text;
    text.StreamText(std::make_unique<Pieces>());
    for (const std::string_view piece : {"12", "3 4", "5 6\n7", " ", "", "8"}) Append(text, piece);
    text.RewindText();
    EXPECT_EQ(text.FinishStream(Pieces()).pieces,
              (std::vector<std::string>{"123 ", "45 6\n", "7 ", "8"}));
}

TEST(SpecialText, WithoutAStreamTheWholeTextGoesToAFreshOne) {
    VokTextReader text;
    text.StreamText(std::make_unique<Pieces>());
    Append(text, "lost ");
    text.ClearText();
    Append(text, "1 2");
    text.RewindText();
    EXPECT_EQ(text.FinishStream(Pieces()).pieces, std::vector<std::string>{"1 2"});
}
