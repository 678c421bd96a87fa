#include "EndToEnd/HashRegistryRun.h"
#include "Support/DebuggerLines_win32.h"

#include <algorithm>

TEST_F(HashRegistryRun, TheDebuggerHearsWhatTheToolAndTheProxyDo) {
    environment["QEL_HASH_PROXY_DEBUG_MODE"] = "1";
    DebuggerLines debugger;
    EXPECT_EQ(Bake({"hips"}).status, 0);
    const std::vector<std::string> lines = debugger.Stop();
    const auto isHeard = [&lines](const std::string& start, const std::string& end) {
        return std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
            return line.starts_with(start) && line.ends_with(end);
        });
    };
    EXPECT_TRUE(isHeard("rigbake.exe(", "): Successful CreateProcess() for QelHashProxy.exe\n"));
    EXPECT_TRUE(isHeard("rigbake.exe(", "): Attempting to CreateFile() on the pipe\n"));
    EXPECT_TRUE(isHeard("rigbake.exe(", "): Proxy command : AddString( \"joint\", \"hips\" )\n"));
    EXPECT_TRUE(isHeard("rigbake.exe(", "): Proxy command : Shutdown()\n"));
    EXPECT_TRUE(std::none_of(lines.begin(), lines.end(),
                             [](const std::string& line) { return line.size() >= 512; }));
}
