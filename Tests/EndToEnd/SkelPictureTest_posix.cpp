#include "EndToEnd/PictureRun.h"

// Names that are bytes and need not be text.

namespace {

using SkelPicture = PictureRun;

TEST_F(SkelPicture, NamesOfFilesAreTextWhateverTheirBytes) {
    EXPECT_EQ(TitleOfPicture("H\xFC"
                             "fte.bin"),
              "H\xC3\xBC"
              "fte.bin");
    EXPECT_EQ(TitleOfPicture("two\nlines\x7F"), "two\\x0Alines\\x7F");
}

}  // namespace
