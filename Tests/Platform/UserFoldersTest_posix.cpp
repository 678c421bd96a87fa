#include <Platform/UserFolders.h>

#include "Platform/ScopedEnvironment.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using Platform::UserDataFolder;
using Platform::UserName;

TEST(UserFolders, DataStandsWhereTheEnvironmentSays) {
    const ScopedEnvironment home("HOME", "/home/somebody");
    const ScopedEnvironment data("XDG_DATA_HOME", "/data");
    EXPECT_EQ(UserDataFolder(), "/data");
    for (const char* const relative : {"", "data"}) {
        const ScopedEnvironment other("XDG_DATA_HOME", relative);
        EXPECT_EQ(UserDataFolder(), "/home/somebody/.local/share");
    }
}

TEST(UserFolders, WithoutAHomeThereIsNone) {
    const ScopedEnvironment data("XDG_DATA_HOME", std::nullopt);
    for (const std::optional<std::string>& value :
         {std::optional<std::string>(), std::optional<std::string>("home")}) {
        const ScopedEnvironment home("HOME", value);
        EXPECT_FALSE(UserDataFolder().has_value());
    }
}

TEST(UserFolders, TheUserHasANameOrANumber) {
    const ScopedEnvironment user("USER", "me");
    const ScopedEnvironment login("LOGNAME", "myself");
    EXPECT_EQ(UserName(), "me");
    const ScopedEnvironment noUser("USER", "");
    EXPECT_EQ(UserName(), "myself");
    const ScopedEnvironment noLogin("LOGNAME", std::nullopt);
    EXPECT_EQ(UserName(), std::to_string(geteuid()));
}

}  // namespace
