#include "EndToEnd/HashRegistryRun.h"
#include "Platform/RawSocket.h"

// What a pipe does that is a socket.

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
