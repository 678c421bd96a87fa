#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <string>
#include <vector>

#include <Platform/MessagePipe.h>

/// What the proxy of a test does, and what it saw. Replies and failures are taken one for each
/// call; when there is no further entry, calls work and exchanges meet a broken pipe with error 32.
struct FakeProxyScript {
    struct Turn {
        Platform::PipeExchange exchange = Platform::PipeExchange::Done;
        std::string reply;
        std::uint32_t error = 0;
    };

    std::uint32_t spawnError = 0;
    std::uint32_t createTimerError = 0;
    std::uint32_t setTimerError = 0;
    std::deque<std::uint32_t> openErrors;
    std::deque<std::uint32_t> modeErrors;
    std::deque<std::uint32_t> waitErrors;
    std::deque<bool> timerFired;  // true when there is no further entry
    std::deque<Turn> turns;

    std::vector<std::string> programs;
    std::vector<std::string> requests;
    std::vector<std::string> calls;  // of the timer and of the pipe, but for exchanges

    int CountCalls(const std::string& name) const {
        return static_cast<int>(std::count(calls.begin(), calls.end(), name));
    }
};

/// A fixture with a proxy configured that follows `Script()`.
class FakeProxyTest : public testing::Test {
  protected:
    FakeProxyTest();
    ~FakeProxyTest() override;

    static FakeProxyScript& Script();
    static void Reply(std::string bytes) {
        Script().turns.push_back({Platform::PipeExchange::Done, std::move(bytes), 0});
    }
    static void Break(std::uint32_t error) {
        Script().turns.push_back({Platform::PipeExchange::NotConnected, {}, error});
    }
};
