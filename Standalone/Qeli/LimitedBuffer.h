#pragma once

#include <cstddef>
#include <streambuf>

/// Passes text on to another buffer, up to a limit; what would exceed it ends in a
/// GrowthBeyondLimit, which a stream lets out that has std::ios_base::badbit among its exceptions.
class LimitedBuffer : public std::streambuf {
  public:
    LimitedBuffer(std::streambuf& receiver, std::size_t mostBytes)
        : target(receiver), left(mostBytes) {}

  protected:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char* text, std::streamsize size) override;
    int sync() override { return target.pubsync(); }

  private:
    std::streambuf& target;
    std::size_t left;
};
