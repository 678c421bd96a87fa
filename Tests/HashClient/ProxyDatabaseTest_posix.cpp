#include <HashClient/ProxyDatabase.h>

#include "Platform/ScopedEnvironment.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

TEST(ProxyDatabase, OfALinkedOneTheFilesBesideBothNamesAreMeant) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.Path("far"));
    std::filesystem::create_symlink("second", folder.Path("first"));
    std::filesystem::create_symlink(folder.Path("far/names.db"), folder.Path("second"));
    const ScopedEnvironment variable("QEL_HASH_DATABASE", folder.Path("first"));
    std::vector<std::string> expected = {folder.Path("first")};
    for (const std::string& name : {folder.Path("first"), folder.Path("far/names.db")})
        for (const char* end : {"-journal", "-wal", "-shm"}) expected.push_back(name + end);
    EXPECT_EQ(ProxyDatabaseFiles(), expected);
    std::filesystem::remove(folder.Path("second"));
    std::filesystem::create_symlink("first", folder.Path("second"));
    EXPECT_EQ(ProxyDatabaseFiles().size(), 4u) << "a circle of links has an end";
}

}  // namespace
