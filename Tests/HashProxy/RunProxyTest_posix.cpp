#include <gtest/gtest.h>

#include <cstdlib>

#include "HashProxy/RunProxy.h"

// A limit on sizes, the look at another process's folder and a folder for pipes are this system's.

TEST_F(RunProxy, AFullDiskRefusesWhatIsNewAndKeepsWhatIsThere) {
    ASSERT_EQ(std::system("(ulimit -f 64; exec QelHashProxy.exe 2>/dev/null) &"), 0);
    Connected();
    ASSERT_EQ(QelHashClient::Initialise(), QelHashResult::Ok);
    int added = 0;
    while (added < 1000 && Add("name" + std::to_string(added)) == QelHashResult::Ok) ++added;
    EXPECT_GT(added, 1);
    EXPECT_LT(added, 1000);
    EXPECT_EQ(QelHashClient::GetFailureLocation(), 262);
    EXPECT_EQ(Add("name0"), QelHashResult::Ok);
    EXPECT_EQ(Add("name" + std::to_string(added)), QelHashResult::ProxyError);
    // Its strings could not be put on the disk, and the tool learns that in the end.
    EXPECT_EQ(QelHashClient::Shutdown(), QelHashResult::ProxyError);
}

TEST_F(RunProxy, StandsInTheDatabasesFolder) {
    Start();
    const auto pipe = Connected();
    EXPECT_EQ(std::filesystem::read_symlink("/proc/" + std::to_string(folder.Server()) + "/cwd"),
              folder.Path("data"));
}

TEST_F(RunProxy, APipeThatCannotBeOpenedIsTold) {
    EXPECT_EQ(Run({{"XDG_RUNTIME_DIR", folder.WriteFile("out", "")}}),
              "QelHashProxy: The pipe cannot be opened: Not a directory\n 1\n");
}

TEST_F(RunProxy, AnEmptyRequestEndsItsClientAndIsTold) {
    environment.Set("QEL_HASH_PROXY_DEBUG_MODE", "file:" + folder.Path("log"));
    Start();
    EXPECT_EQ(Ask(*Connected(), ""), "gone");
    EXPECT_TRUE(ProxyFolder::Content(folder.Path("log"))
                    .ends_with("): A client was disconnected: its request is malformed\n\n"));
}

TEST_F(RunProxy, TheLogTakesABackslashForPartOfTheProgramsName) {
    environment.Set("QEL_HASH_PROXY_DEBUG_MODE", "file:" + folder.Path("log"));
    const std::string program = folder.Path("odd\\proxy");
    std::filesystem::copy_file(RIGBAKE_PROGRAMS "/QelHashProxy.exe", program);
    ASSERT_EQ(Platform::StartDetached({program}), 0);
    EXPECT_EQ(Ask(*Connected(), "x"), "gone");
    EXPECT_TRUE(ProxyFolder::Content(folder.Path("log")).starts_with("odd\\proxy("));
    ProxyFolder::Kill(folder.Server());
}
