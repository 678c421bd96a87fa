#include <Platform/TemporaryFile.h>

#include "Platform/TemporaryFolderName.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <filesystem>

namespace {

TEST(TemporaryFile, StandsInTheNamedFolderUnderAFreshName) {
    const TemporaryFolder folder;
    const TemporaryFolderName name(folder.Path());
    const auto first = Platform::CreateTemporaryFile("DOT");
    const auto second = Platform::CreateTemporaryFile("DOT");
    ASSERT_TRUE(first && second);
    EXPECT_NE(*first, *second);
    EXPECT_EQ(first->rfind(folder.Path() + "/DOT", 0), 0u);
    struct stat status {};
    ASSERT_EQ(stat(first->c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600u);
    EXPECT_EQ(status.st_size, 0);
}

TEST(TemporaryFile, StandsInTmpWithoutANamedFolder) {
    const TemporaryFolderName name("");
    const auto path = Platform::CreateTemporaryFile("DOT");
    ASSERT_TRUE(path);
    EXPECT_EQ(path->rfind("/tmp/DOT", 0), 0u);
    std::filesystem::remove(*path);
}

TEST(TemporaryFile, IsNothingWhereTheFolderIsMissing) {
    const TemporaryFolderName name("/no/such/folder");
    EXPECT_EQ(Platform::CreateTemporaryFile("DOT"), std::nullopt);
}

}  // namespace
