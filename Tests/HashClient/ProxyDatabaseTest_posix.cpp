#include <HashClient/ProxyDatabase.h>

#include "Platform/ScopedEnvironment.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

TEST(ProxyDatabase, BesideALinkedOneStandsNothing) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.Path("far"));
    std::filesystem::create_symlink("second", folder.Path("first"));
    std::filesystem::create_symlink(folder.Path("far/names.db"), folder.Path("second"));
    const ScopedEnvironment variable("QEL_HASH_DATABASE", folder.Path("first"));
    const std::string far = folder.Path("far/names.db");
    EXPECT_EQ(ProxyDatabaseFiles(),
              (std::vector<std::string>{folder.Path("first"), far + "-journal", far + "-wal",
                                        far + "-shm"}));
    std::filesystem::remove(folder.Path("second"));
    std::filesystem::create_symlink("first", folder.Path("second"));
    EXPECT_EQ(ProxyDatabaseFiles().size(), 4u) << "a circle of links has an end";
}

}  // namespace
