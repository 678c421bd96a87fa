#include "Support/Permissions_win32.h"

#include <gtest/gtest.h>
#include <windows.h>
// Behind the header on which they stand.
#include <aclapi.h>
#include <sddl.h>

void SetPermissions(const std::string& path, const char* words) {
    PSECURITY_DESCRIPTOR permissions = nullptr;
    ASSERT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorA(words, SDDL_REVISION_1,
                                                                     &permissions, nullptr));
    EXPECT_TRUE(SetFileSecurityA(path.c_str(), DACL_SECURITY_INFORMATION, permissions));
    LocalFree(permissions);
}

std::string PermissionsOf(const std::string& path) {
    PSECURITY_DESCRIPTOR permissions = nullptr;
    GetNamedSecurityInfoA(path.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr,
                          nullptr, nullptr, &permissions);
    if (permissions == nullptr) return "";
    char* text = nullptr;
    ConvertSecurityDescriptorToStringSecurityDescriptorA(permissions, SDDL_REVISION_1,
                                                         DACL_SECURITY_INFORMATION, &text, nullptr);
    const std::string result = text == nullptr ? "" : text;
    LocalFree(text);
    LocalFree(permissions);
    return result;
}
