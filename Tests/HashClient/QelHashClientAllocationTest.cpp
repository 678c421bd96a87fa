#include <HashClient/ProxyMessage.h>
#include <HashClient/QelHashClient.h>

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstdlib>
#include <memory>
#include <new>

#include "HashClient/NotingProxy.h"
#include "Platform/ScopedEnvironment.h"

namespace {

std::atomic<int> allocations = 0;

/// A proxy that knows every hash and needs nothing for it.
class ThriftyProxy : public NotingProxy {
  public:
    Platform::PipeExchange Transact(std::span<const char>, std::span<char> reply,
                                    std::size_t& received, std::uint32_t&) override {
        received = ProxyMessage::ComposeAddStringReply(reply, 0x12345678, std::nullopt);
        return Platform::PipeExchange::Done;
    }
};

}  // namespace

// Not inlined: the compiler would take the pair of them for a mismatch.
[[gnu::noinline]] void* operator new(std::size_t size) {
    ++allocations;
    if (void* const memory = std::malloc(size != 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

TEST(QelHashClientAllocation, ARequestAsksForNoMemory) {
    const ScopedEnvironment server("QEL_HASH_SERVER_NAME", "anything");
    SetProxyTransportMaker(
        []() -> std::unique_ptr<ProxyTransport> { return std::make_unique<ThriftyProxy>(); });
    ASSERT_EQ(QelHashClient::Initialise(), QelHashResult::Ok);
    std::uint32_t hash = 0;
    std::array<char, 256> other;
    QelHashClient::AddString("joint", "first", hash, other.data(), 256);
    const int before = allocations;
    EXPECT_GT(before, 0);
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(QelHashClient::AddString("joint", "hips", hash, other.data(), 256),
                  QelHashResult::Ok);
    EXPECT_EQ(allocations, before);
    QelHashClient::Shutdown();
    SetProxyTransportMaker(nullptr);
}
