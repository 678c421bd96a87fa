#include "Permissions_win32.h"

#include "OwnedHandle_win32.h"

#include <windows.h>
// Behind the header on which it stands.
#include <sddl.h>

#include <cerrno>

namespace Platform {

namespace {

/// What a call says that was `done` or not. Permissions that cannot be kept are a refusal, for
/// without them others might read what they could not.
int Judge(BOOL done) {
    if (done) return 0;
    const DWORD error = GetLastError();
    return error == ERROR_NOT_SUPPORTED || error == ERROR_INVALID_FUNCTION ? 0 : EACCES;
}

/// The number by which the system knows the user of this process, as text; empty when it does not
/// tell.
std::string UserNumber() {
    HANDLE opened = nullptr;
    OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened);
    const OwnedHandle token(opened);
    DWORD size = 0;
    GetTokenInformation(token.Get(), TokenUser, nullptr, 0, &size);
    std::vector<char> user(size);
    char* text = nullptr;
    if (!GetTokenInformation(token.Get(), TokenUser, user.data(), size, &size) ||
        !ConvertSidToStringSidA(reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid, &text))
        return {};
    const std::string number = text;
    LocalFree(text);
    return number;
}

}  // namespace

Permissions UserAlone() {
    // One entry, to which nothing is added of what the folder grants to others.
    const std::string words = "D:P(A;;FA;;;" + UserNumber() + ")";
    PSECURITY_DESCRIPTOR made = nullptr;
    ULONG size = 0;
    if (!ConvertStringSecurityDescriptorToSecurityDescriptorA(words.c_str(), SDDL_REVISION_1, &made,
                                                              &size))
        return {};
    const char* const bytes = static_cast<const char*>(made);
    const Permissions permissions(bytes, bytes + size);
    LocalFree(made);
    return permissions;
}

int ReadPermissions(const std::string& path, Permissions& permissions) {
    DWORD size = 0;
    BOOL done = GetFileSecurityA(path.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    permissions.resize(size);
    if (size > 0)
        done = GetFileSecurityA(path.c_str(), DACL_SECURITY_INFORMATION, permissions.data(), size,
                                &size);
    if (!done) permissions.clear();
    return Judge(done);
}

int SetPermissions(const std::string& path, Permissions& permissions) {
    if (permissions.empty()) return 0;
    return Judge(SetFileSecurityA(path.c_str(), DACL_SECURITY_INFORMATION, permissions.data()));
}

}  // namespace Platform
