#include <VoktFramework/Errors/VoktError.h>
#include <VoktFramework/Saving/VoktBinaryFilenameQEL.h>
#include <gtest/gtest.h>

#include <string>

namespace {

std::string BinaryName(const std::string& path) {
    VoktBinaryFilenameQEL names;
    std::string out = "untouched";
    VoktBinaryFilename::Get().ToBinaryFilename(out, path);
    return out;
}

}  // namespace

TEST(BinaryFilename, IsTheLeafBehindTheLastSeparator) {
    EXPECT_EQ(BinaryName("a/b/c.bin"), "c.bin");
    EXPECT_EQ(BinaryName("C:\\a\\c.bin"), "c.bin");
    EXPECT_EQ(BinaryName("a/b\\c.bin"), "c.bin");
    EXPECT_EQ(BinaryName("a/"), "");
}

TEST(BinaryFilename, ABackslashCountsLast) {
    EXPECT_EQ(BinaryName("a\\b/c.bin"), "b/c.bin");
}

TEST(BinaryFilename, ANameWithoutASeparatorLeavesTheResultAlone) {
    EXPECT_EQ(BinaryName("c.bin"), "untouched");
    EXPECT_EQ(BinaryName(""), "untouched");
}

TEST(BinaryFilename, TheWayBackIsNotSupplied) {
    VoktBinaryFilenameQEL names;
    try {
        names.ToSystemFilename();
        FAIL() << "nothing was thrown";
    } catch (const VoktError& error) {
        EXPECT_EQ(error.GetId(), 203);
        EXPECT_EQ(error.GetCauseMessage(),
                  "Attempt to get from binary filename to usable system filename failed because "
                  "the current version of the singleton does not implement that method.");
    }
}
