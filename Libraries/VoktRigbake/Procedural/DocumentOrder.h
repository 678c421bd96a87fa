#pragma once

#include <cstdint>
#include <unordered_map>

class VokObj;

/// The objects beneath a world, numbered from 1 in the order of the document (pre-order). What
/// addresses must not decide is decided by these numbers.
class DocumentOrder {
  public:
    explicit DocumentOrder(VokObj& world);

    /// 0 for an object that is not beneath the world.
    std::uint32_t NumberOf(const VokObj* object) const;
    bool IsBefore(const VokObj* a, const VokObj* b) const { return NumberOf(a) < NumberOf(b); }

  private:
    std::unordered_map<const VokObj*, std::uint32_t> numbers;
};
