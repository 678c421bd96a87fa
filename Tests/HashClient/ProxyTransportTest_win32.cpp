#include "../../Libraries/HashClient/ProxyTransport.h"

#include <gtest/gtest.h>

#include "Support/NamedObjects_win32.h"

TEST(ProxyTransportTimer, TheMachinesTimerHasThisName) {
    constexpr char kTimer[] = "ProxyConnectionTimer";
    const auto transport = MakeProxyTransport();
    EXPECT_FALSE(TimerIsThere(kTimer));
    EXPECT_EQ(transport->CreateTimer(), 0u);
    EXPECT_TRUE(TimerIsThere(kTimer));
    transport->CloseTimer();
    EXPECT_FALSE(TimerIsThere(kTimer));
}
