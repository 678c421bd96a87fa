#include "Support/Permissions_win32.h"

#include <gtest/gtest.h>
#include <windows.h>
// Behind the header on which it stands.
#include <sddl.h>

void SetPermissions(const std::string& path, const char* words) {
    PSECURITY_DESCRIPTOR permissions = nullptr;
    ASSERT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorA(words, SDDL_REVISION_1,
                                                                     &permissions, nullptr));
    EXPECT_TRUE(SetFileSecurityA(path.c_str(), DACL_SECURITY_INFORMATION, permissions));
    LocalFree(permissions);
}
