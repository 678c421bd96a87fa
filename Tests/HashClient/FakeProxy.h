#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <deque>
#include <string>
#include <vector>

#include "ProxyTransport.h"

/// What the proxy of a test does, and what it saw. Replies and failures are taken one for each
/// exchange.
struct FakeProxyScript {
    struct Turn {
        ProxyExchange exchange = ProxyExchange::Done;
        std::string reply;
        std::uint32_t error = 0;
    };

    std::uint32_t spawnError = 0;
    std::deque<bool> opens;  // true when there is no further entry
    ProxyFailure openFailure{141, 121};
    std::deque<Turn> turns;  // a broken pipe with error 32 when there is no further entry

    std::vector<std::string> commandLines;
    std::vector<std::string> requests;
    int openCalls = 0;
    int closeCalls = 0;
};

/// A fixture with a proxy configured that follows `Script()`.
class FakeProxyTest : public testing::Test {
  protected:
    FakeProxyTest();
    ~FakeProxyTest() override;

    static FakeProxyScript& Script();
    static void Reply(std::string bytes) {
        Script().turns.push_back({ProxyExchange::Done, std::move(bytes), 0});
    }
    static void Break(std::uint32_t error) {
        Script().turns.push_back({ProxyExchange::BrokenPipe, {}, error});
    }
};

/// Sets an environment variable for as long as the object lives, and then unsets it.
class ScopedVariable {
  public:
    ScopedVariable(const char* name, const char* value) : variable(name) { setenv(name, value, 1); }
    ~ScopedVariable() { unsetenv(variable); }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

  private:
    const char* variable;
};
