#include <Platform/TemporaryFile.h>

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

/// Another folder for temporary files while it lives.
class TemporaryFolders {
  public:
    explicit TemporaryFolders(const std::string& folder) : before(std::getenv("TMP")) {
        setenv("TMP", folder.c_str(), 1);
    }
    TemporaryFolders(const TemporaryFolders&) = delete;
    TemporaryFolders& operator=(const TemporaryFolders&) = delete;
    ~TemporaryFolders() { setenv("TMP", before.c_str(), 1); }

  private:
    std::string before;
};

TEST(TemporaryFile, StandsInTheNamedFolderUnderAFreshName) {
    const TemporaryFolder folder;
    const TemporaryFolders name(folder.Path());
    const auto first = Platform::CreateTemporaryFile("DOT");
    const auto second = Platform::CreateTemporaryFile("DOT");
    ASSERT_TRUE(first && second);
    EXPECT_NE(*first, *second);
    for (const std::string& path : {*first, *second}) {
        EXPECT_EQ(path.substr(path.rfind('\\') + 1).rfind("DOT", 0), 0u) << path;
        EXPECT_TRUE(
            std::filesystem::equivalent(std::filesystem::path(path).parent_path(), folder.Path()));
        EXPECT_EQ(std::filesystem::file_size(path), 0u);
    }
    EXPECT_EQ(Platform::TemporaryFolder().back(), '\\');
}

TEST(TemporaryFile, IsNothingWhereTheFolderIsMissing) {
    const TemporaryFolders name("C:\\no\\such\\folder");
    EXPECT_EQ(Platform::CreateTemporaryFile("DOT"), std::nullopt);
}

}  // namespace
