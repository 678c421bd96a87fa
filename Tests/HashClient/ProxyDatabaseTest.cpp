#include <HashClient/ProxyDatabase.h>
#include <Platform/Paths.h>
#include <Platform/UserFolders.h>

#include "Platform/ScopedEnvironment.h"

#include <gtest/gtest.h>

namespace {

using Files = std::vector<std::string>;

TEST(ProxyDatabase, TheVariableNamesIt) {
    const ScopedEnvironment variable("QEL_HASH_DATABASE", "folder/none/../names.db");
    const std::string full = *Platform::FullPath("folder/names.db");
    EXPECT_EQ(ProxyDatabaseFile(), full);
    EXPECT_EQ(ProxyDatabaseFiles(), (Files{full, full + "-journal", full + "-wal", full + "-shm"}));
}

TEST(ProxyDatabase, WithoutAVariableItStandsAmongTheUsersData) {
    const ScopedEnvironment variable("QEL_HASH_DATABASE", "");
    const auto folder = Platform::UserDataFolder();
    ASSERT_TRUE(folder.has_value());
    EXPECT_EQ(ProxyDatabaseFile(), Platform::FullPath(*folder + "/QelHashProxy/registry.sqlite"));
}

}  // namespace
