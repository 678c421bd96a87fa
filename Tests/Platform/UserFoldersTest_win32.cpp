#include <Platform/UserFolders.h>

#include "Platform/ScopedEnvironment.h"

#include <gtest/gtest.h>

namespace {

TEST(UserFolders, DataStandsWhereTheEnvironmentSays) {
    const ScopedEnvironment data("LOCALAPPDATA", "C:\\Users\\me\\AppData\\Local");
    EXPECT_EQ(Platform::UserDataFolder(), "C:\\Users\\me\\AppData\\Local");
    const ScopedEnvironment none("LOCALAPPDATA", std::nullopt);
    EXPECT_EQ(Platform::UserDataFolder(), std::nullopt);
}

TEST(UserFolders, TheUserHasAName) {
    const ScopedEnvironment user("USERNAME", "me");
    EXPECT_EQ(Platform::UserName(), "me");
}

}  // namespace
