#include <HashClient/ProxyLog.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "Support/NamedObjects_win32.h"
#include "Support/TemporaryFolder.h"

namespace {

constexpr char kMutex[] = "QelHashProxy_LoggingMutex";

/// The log reads its variable once in a process.
[[noreturn]] void LogTo(const std::string& file) {
    if (MutexIsThere(kMutex)) std::_Exit(98);
    setenv("QEL_HASH_PROXY_DEBUG_MODE", ("file:" + file).c_str(), 1);
    ProxyLog("a line\n");
    std::_Exit(MutexIsThere(kMutex) ? 0 : 99);
}

}  // namespace

TEST(ProxyLogMutexDeathTest, TheMachinesMutexHasThisName) {
    const TemporaryFolder folder;
    EXPECT_EXIT(LogTo(folder.Path("log")), testing::ExitedWithCode(0), "^$");
}
