#pragma once

#include <cstddef>
#include <cstdint>

namespace Platform {

/// What tells one content of a file from another without keeping either.
class ContentDigest {
  public:
    void Add(const char* bytes, std::size_t count);
    std::uint64_t GetSize() const { return size; }
    bool operator==(const ContentDigest&) const = default;

  private:
    std::uint64_t size = 0;
    std::uint64_t digest = 0xCBF29CE484222325;
};

}  // namespace Platform
