#include "EndToEnd/HashRegistryRun.h"
#include "Platform/LockedFile.h"
#include "Platform/RawSocket.h"

// What a pipe does that is a socket, and a log that everybody who reads it may lock.

TEST_F(HashRegistryRun, APipeThatAKilledProxyLeftIsTriedTwiceASecond) {
    UseAProgramThatServesNothing();
    { EXPECT_TRUE(RawSocket().Listen(PipePath())); }
    const std::size_t tries = BakeAndCountTheTries("(141:111)");
    EXPECT_GE(tries, 1u);
    EXPECT_LE(tries, 5u);
}

TEST_F(HashRegistryRun, AProxyWithoutRoomIsTriedAFewTimesASecond) {
    UseAProgramThatServesNothing();
    const RawSocket server;
    ASSERT_TRUE(server.Listen(PipePath(), 0));
    const RawSocket first;
    ASSERT_TRUE(first.Connect(PipePath()));
    const std::size_t tries = BakeAndCountTheTries("(141:11)");
    EXPECT_GE(tries, 2u);
    EXPECT_LE(tries, 41u);
}

TEST_F(HashRegistryRun, WhoKeepsTheLockOfTheDebugLogKeepsNoBake) {
    const std::string log = folder.WriteFile("log", "");
    const LockedFile reader(log);
    ASSERT_TRUE(reader.IsLocked());
    environment["QEL_HASH_PROXY_DEBUG_MODE"] = "file:" + log;
    const ProgramResult run = Bake({});
    EXPECT_EQ(run.status, 0) << run.output;
    EXPECT_NE(folder.ReadFile("log").find("Proxy command : Shutdown()\n"), std::string::npos);
}
