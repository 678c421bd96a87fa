#pragma once

#include <cstddef>
#include <streambuf>

/// Passes text on to another buffer, up to a limit; what would exceed it is refused, with
/// everything behind it.
class LimitedBuffer : public std::streambuf {
  public:
    LimitedBuffer(std::streambuf& receiver, std::size_t mostBytes)
        : target(receiver), limit(mostBytes), left(mostBytes) {}

    bool IsExceeded() const { return isExceeded; }
    std::size_t GetLimit() const { return limit; }

  protected:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char* text, std::streamsize size) override;
    int sync() override { return target.pubsync(); }

  private:
    std::streambuf& target;
    std::size_t limit;
    std::size_t left;
    bool isExceeded = false;
};
