#include "Document/MarkupScanner.h"
#include "VokLib/Document/ParseTools.h"
#include "VokLib/Document/ParserComparison.h"

#include <string>

using namespace ParseTools;

namespace {

/// Where a text may be cut, by the scanner: every position at which no markup is open.
std::string CutsOf(std::string_view text, std::size_t block) {
    MarkupScanner scanner;
    std::string cuts;
    for (std::size_t at = 0; at < text.size(); at += block) {
        const std::size_t size = std::min(block, text.size() - at);
        const std::size_t complete = scanner.Scan(text.data() + at, size);
        for (std::size_t i = 0; i < size; ++i) cuts += i < complete ? text[at + i] : '_';
    }
    return cuts;
}

TEST(MarkupScanner, HoldsBackMarkupThatABlockLeavesIncomplete) {
    const std::string text =
        "12<a b='>\"' c=\">'\">3<!-->>--> 4</a ><![CDATA[]]>>]]><?p '>?><!DOCTYPE a [<!-- ' ]> "
        "--><?p \" ?><!E '>]>'>]>5";
    // Byte by byte, markup is held back up to its last byte; of a text only a bracket is.
    EXPECT_EQ(CutsOf(text, 1),
              "12________________>3________> 4____>___________>>__>_______>"
              "_____________________________________________>5");
    EXPECT_EQ(CutsOf(text, text.size()), text);
    for (std::size_t block = 2; block < text.size(); ++block) {
        const std::string cuts = CutsOf(text, block);
        EXPECT_EQ(cuts.back(), '5') << block;
        EXPECT_EQ(cuts.size(), text.size());
    }
}

}  // namespace
