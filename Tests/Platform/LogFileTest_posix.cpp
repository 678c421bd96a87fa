#include "LogFile_posix.h"

#include <gtest/gtest.h>

namespace {

TEST(LogFile, ALogThatCannotBeReadAgainTellsWhy) {
    Platform::LogFile log;
    // A regular file of no size whose content cannot be read from its begin.
    ASSERT_EQ(log.Open("/proc/self/mem"), 0);
    EXPECT_EQ(log.Close(), "Input/output error");
}

}  // namespace
