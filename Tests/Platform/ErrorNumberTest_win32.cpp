#include "ErrorNumber_win32.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cerrno>

namespace {

int NumberFor(DWORD error) {
    SetLastError(error);
    return Platform::LastErrorNumber();
}

TEST(ErrorNumber, TheReasonIsKept) {
    EXPECT_EQ(NumberFor(ERROR_FILE_NOT_FOUND), ENOENT);
    EXPECT_EQ(NumberFor(ERROR_PATH_NOT_FOUND), ENOENT);
    EXPECT_EQ(NumberFor(ERROR_INVALID_NAME), EINVAL);
    EXPECT_EQ(NumberFor(ERROR_ACCESS_DENIED), EACCES);
    EXPECT_EQ(NumberFor(ERROR_SHARING_VIOLATION), EACCES);
    EXPECT_EQ(NumberFor(ERROR_USER_MAPPED_FILE), EACCES);
    EXPECT_EQ(NumberFor(ERROR_DISK_FULL), ENOSPC);
    EXPECT_EQ(NumberFor(ERROR_FILE_EXISTS), EEXIST);
    EXPECT_EQ(NumberFor(ERROR_FILENAME_EXCED_RANGE), ENAMETOOLONG);
}

TEST(ErrorNumber, AnyOtherIsAnInputOutputError) {
    EXPECT_EQ(NumberFor(ERROR_CRC), EIO);
}

}  // namespace
