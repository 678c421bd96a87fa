#include <Platform/OpenForReading.h>

#include <gtest/gtest.h>

#include <cerrno>

namespace {

TEST(OpenForReading, ADeviceThatIsCalledLikeAFileDoesNotOpen) {
    errno = 0;
    EXPECT_EQ(Platform::OpenForReading("nul.qeli"), nullptr);
    EXPECT_EQ(errno, EINVAL);
    EXPECT_NE(Platform::OpenForReading("NUL"), nullptr);
}

}  // namespace
