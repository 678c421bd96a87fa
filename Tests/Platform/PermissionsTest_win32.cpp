#include "Permissions_win32.h"

#include "Support/Permissions_win32.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace {

class Permissions : public testing::Test {
  protected:
    TemporaryFolder folder;
    std::string file = folder.WriteFile("file", "");
    std::string other = folder.WriteFile("other", "");
    Platform::Permissions read;
};

TEST_F(Permissions, ThoseOfOneFileAreSetOnAnother) {
    SetPermissions(file, "D:P(A;;FA;;;WD)");
    ASSERT_NE(PermissionsOf(other), PermissionsOf(file));
    ASSERT_EQ(Platform::ReadPermissions(file, read), 0);
    EXPECT_EQ(Platform::SetPermissions(other, read), 0);
    EXPECT_EQ(PermissionsOf(other), PermissionsOf(file));
}

TEST_F(Permissions, WhereNothingIsSaidTheyStay) {
    const std::string before = PermissionsOf(file);
    EXPECT_EQ(Platform::SetPermissions(file, read), 0);
    EXPECT_EQ(PermissionsOf(file), before);
}

TEST_F(Permissions, TheUserAloneIsTheUserAndNoneOfTheOthers) {
    Platform::Permissions users = Platform::UserAlone();
    SetPermissions(file, "D:P(A;;FA;;;WD)");
    ASSERT_NE(PermissionsOf(file).find(";WD)"), std::string::npos);
    ASSERT_EQ(Platform::SetPermissions(file, users), 0);
    const std::string words = PermissionsOf(file);
    EXPECT_NE(words.find("(A;;FA;;;S-1-"), std::string::npos) << words;
    for (const char* const others : {";WD)", ";BU)", ";AU)"})
        EXPECT_EQ(words.find(others), std::string::npos) << words;
}

TEST_F(Permissions, WhatCannotBeLookedAtOrSetIsARefusal) {
    EXPECT_EQ(Platform::ReadPermissions(folder.Path("none"), read), EACCES);
    EXPECT_TRUE(read.empty());
    Platform::Permissions users = Platform::UserAlone();
    EXPECT_EQ(Platform::SetPermissions(folder.Path("none"), users), EACCES);
    SetPermissions(file, "D:P(A;;FW;;;WD)");
    if (!PermissionsOf(file).empty()) GTEST_SKIP() << "this system tells the owner in any case";
    EXPECT_EQ(Platform::ReadPermissions(file, read), EACCES);
    EXPECT_TRUE(read.empty());
}

}  // namespace
