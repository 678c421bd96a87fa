#include "VokLib/Document/ParseTools.h"

#include <VokLib/Tree/VokScene.h>

#include <filesystem>
#include <fstream>
#include <string>

using namespace ParseTools;

namespace {

class ParseFile : public ReaderTest {
  protected:
    ~ParseFile() override { std::filesystem::remove(path); }

    std::string LoadFile(const std::string& contents) {
        std::ofstream(path, std::ios::binary) << contents;
        return ThrownText([&] { VokParse().ParseFile(world, path); });
    }
    /// A document of exactly `size` bytes with one joint at its end.
    static std::string DocumentOf(std::size_t size) {
        const std::string end = "<joint name='last'/>";
        const std::string inner = "<scene>" + end + "</scene>";
        const std::size_t bare = Document(inner).size();
        return Document("<scene>" + std::string(size - bare, ' ') + end + "</scene>");
    }

    std::string path =
        (std::filesystem::temp_directory_path() /
         ("ParseFile" + std::to_string(testing::UnitTest::GetInstance()->random_seed()) +
          testing::UnitTest::GetInstance()->current_test_info()->name() + ".qeli"))
            .string();
    VokWorld world;
};

TEST_F(ParseFile, MissingFileIsTold) {
    EXPECT_EQ(ThrownText([&] { VokParse().ParseFile(world, "/nowhere/at all.qeli"); }),
              "File open error: \"/nowhere/at all.qeli\"");
}

TEST_F(ParseFile, FolderIsNoDocument) {
    EXPECT_EQ(ThrownText([&] { VokParse().ParseFile(world, "/"); }), "File open error: \"/\"");
}

TEST_F(ParseFile, EmptyFileIsAFaultOfTheText) {
    EXPECT_EQ(LoadFile(""), "Libxml2 parse error: Line 1 Column 1");
}

TEST_F(ParseFile, SizesAroundTheBlocksLoad) {
    constexpr std::size_t kBlock = 0x100000;
    for (const std::size_t size : {kBlock - 1, kBlock, kBlock + 1, 2 * kBlock, 2 * kBlock + 1}) {
        VokWorld next;
        const std::string contents = DocumentOf(size);
        ASSERT_EQ(contents.size(), size);
        std::ofstream(path, std::ios::binary) << contents;
        EXPECT_EQ(ThrownText([&] { VokParse().ParseFile(next, path); }), "") << size;
        EXPECT_EQ(next.GetHierarchy()->GetChildCount(), 1u) << size;
    }
}

TEST_F(ParseFile, DocumentIsNamedByTheFile) {
    EXPECT_EQ(LoadFile(Document("")), "");
    EXPECT_EQ(world.GetFilename(), path);
}

TEST_F(ParseFile, FaultNamesTheFileAsTyped) {
    EXPECT_EQ(LoadFile(Document("</a>")),
              "Libxml2 parse error: 76 in \"" + path + "\" Line 3 Column 5");
}

TEST_F(ParseFile, RootBehindTheFirstBlockIsNotFound) {
    EXPECT_EQ(LoadFile("<?xml version=\"1.0\"?>\n<!--" + std::string(0x100000, 'x') + "-->\n" +
                       Document("").substr(44)),
              "Libxml2 parse error: Line 2 Column 1048555");
}

}  // namespace
