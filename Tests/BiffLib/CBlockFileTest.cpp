#include <BiffLib/CBlock.h>
#include <QelTools/Exception.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "BiffLib/WrittenBytes.h"

using Biff::CBlock;
using Biff::ReserveLabel;
using QelTools::Common::TextException;

namespace {

// A folder of the test's own that goes with it.
class CBlockFile : public testing::Test {
  protected:
    CBlockFile() {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        folder = std::filesystem::temp_directory_path() /
                 (std::string("CBlockFileTest.") + test->name());
        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder);
        block.AppendOffset(label, Biff::kRelative, 4, 1);
        block.AppendAlign(16);
        block.AppendLabel(label);
        block.AppendU32(0x01020304u);
    }
    ~CBlockFile() override { std::filesystem::remove_all(folder); }

    std::string PathOf(const char* name) const { return (folder / name).string(); }

    static std::string Content(const std::string& path) {
        std::ifstream file(path, std::ios_base::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

    std::filesystem::path folder;
    std::uint32_t label = ReserveLabel();
    CBlock block;
};

}  // namespace

TEST_F(CBlockFile, HoldsWhatAStreamWouldHold) {
    const std::string path = PathOf("skel.bin");
    block.WriteToPath(path, Biff::kLittleEndian);
    EXPECT_EQ(Content(path), Little(block));
    block.WriteToPath(path, Biff::kBigEndian);
    EXPECT_EQ(Content(path), Big(block));
}

TEST_F(CBlockFile, TakesThePlaceOfALongerFile) {
    const std::string path = PathOf("skel.bin");
    std::ofstream(path) << std::string(1000, 'x');
    block.WriteToPath(path, Biff::kLittleEndian);
    EXPECT_EQ(Content(path), Little(block));
}

TEST_F(CBlockFile, OfAnEmptyBlockIsEmpty) {
    const std::string path = PathOf("skel.bin");
    CBlock empty;
    empty.WriteToPath(path, Biff::kLittleEndian);
    EXPECT_TRUE(std::filesystem::exists(path));
    EXPECT_EQ(Content(path), "");
}

TEST_F(CBlockFile, ThatCannotBeOpenedIsToldByTheText) {
    const auto text = [&](const std::string& path) {
        return ThrownText<TextException>([&] { block.WriteToPath(path, Biff::kLittleEndian); });
    };
    EXPECT_EQ(text(PathOf("missing/skel.bin")), "Failed to open file for Biff write.");
    EXPECT_EQ(text(folder.string()), "Failed to open file for Biff write.");
    EXPECT_EQ(text(""), "Failed to open file for Biff write.");
}

TEST_F(CBlockFile, StaysWithWhatWasWrittenBeforeAFailure) {
    const std::string path = PathOf("skel.bin");
    block.AppendLabel(label);
    block.AppendU32(5);
    EXPECT_THROW(block.WriteToPath(path, Biff::kLittleEndian), TextException);
    EXPECT_EQ(Content(path), std::string(16, '\0') + Bytes("\4\3\2\1"));
}

TEST_F(CBlockFile, KeepsPlaceholdersWhenAnOffsetDoesNotFit) {
    const std::string path = PathOf("skel.bin");
    const std::uint32_t far = ReserveLabel();
    CBlock wide;
    wide.AppendOffset(far, Biff::kAbsolute, 1, 1);
    wide.AppendAlign(4);
    wide.AppendData(std::string(300, 'x').data(), 1, 300);
    wide.AppendLabel(far);
    EXPECT_EQ(ThrownText<TextException>([&] { wide.WriteToPath(path, Biff::kLittleEndian); }),
              "Offset is too large to fit in given storage.");
    EXPECT_EQ(Content(path), Bytes("\xFF\0\0\0") + std::string(300, 'x'));
}

TEST_F(CBlockFile, OnAFullDiskIsAFailureThatNamesThePath) {
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP();
    const std::string text = "Failed to write \"/dev/full\": No space left on device.";
    const auto write = [&] { block.WriteToPath("/dev/full", Biff::kLittleEndian); };
    EXPECT_EQ(ThrownText<QelTools::Common::Exception>(write), text);
    const std::string large(1 << 20, 'x');
    block.AppendData(large.data(), 1, static_cast<std::uint32_t>(large.size()));
    EXPECT_EQ(ThrownText<QelTools::Common::Exception>(write), text);
}

TEST_F(CBlockFile, ContinuesAnOpenFile) {
    const std::string path = PathOf("skel.bin");
    std::FILE* file = std::fopen(path.c_str(), "wb");
    ASSERT_NE(file, nullptr);
    std::fputs("ab", file);
    block.alignment = 8;
    block.WriteFile(file, Biff::kBigEndian);
    std::fputs("!", file);
    std::fclose(file);
    EXPECT_EQ(Content(path), Bytes("ab\0\0\0\0\0\0"
                                   "\0\0\0\x08\0\0\0\0"
                                   "\1\2\3\4!"));
    EXPECT_EQ(block.position, 8u);
}

TEST_F(CBlockFile, ThatIsNotOpenForWritingIsAFailure) {
    const std::string path = PathOf("skel.bin");
    std::ofstream(path) << "x";
    std::FILE* file = std::fopen(path.c_str(), "rb");
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(ThrownText<QelTools::Common::Exception>(
                  [&] { block.WriteFile(file, Biff::kLittleEndian); }),
              "Failed to write the Biff file: Bad file descriptor.");
    std::fclose(file);
}
