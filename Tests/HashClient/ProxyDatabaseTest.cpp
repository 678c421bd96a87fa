#include <HashClient/ProxyDatabase.h>
#include <Platform/UserFolders.h>

#include "Platform/ScopedEnvironment.h"

#include <gtest/gtest.h>

namespace {

using Files = std::vector<std::string>;

TEST(ProxyDatabase, TheVariableNamesIt) {
    const ScopedEnvironment variable("QEL_HASH_DATABASE", "folder/names.db");
    EXPECT_EQ(ProxyDatabaseFile(), "folder/names.db");
    EXPECT_EQ(ProxyDatabaseFiles(), (Files{"folder/names.db", "folder/names.db-journal",
                                           "folder/names.db-wal", "folder/names.db-shm"}));
}

TEST(ProxyDatabase, WithoutAVariableItStandsAmongTheUsersData) {
    const ScopedEnvironment variable("QEL_HASH_DATABASE", "");
    const auto folder = Platform::UserDataFolder();
    ASSERT_TRUE(folder.has_value());
    EXPECT_EQ(ProxyDatabaseFile(), *folder + "/QelHashProxy/registry.sqlite");
}

}  // namespace
