#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace VokNumberText {

/// An unsigned integer of 160 bits, which hold a float's mantissa times or over every power of ten
/// that brings its first nine digits in front of the point. Kept in place: nothing is allocated.
class Wide {
  public:
    explicit Wide(std::uint32_t value) { limbs[0] = value; }

    /// 0 <= power <= 53.
    void MultiplyByPowerOfFive(int power) {
        for (; power >= kStep; power -= kStep) Multiply(kPowersOfFive[kStep]);
        Multiply(kPowersOfFive[static_cast<std::size_t>(power)]);
    }

    /// Keeps the whole part; true when something was left over.
    bool DivideByPowerOfFive(int power) {
        bool rest = false;
        for (; power >= kStep; power -= kStep) rest |= Divide(kPowersOfFive[kStep]);
        rest |= Divide(kPowersOfFive[static_cast<std::size_t>(power)]);
        return rest;
    }

    void ShiftLeft(int bits) {
        const int whole = bits / 32;
        const int part = bits % 32;
        for (int i = kLimbs - 1; i >= 0; --i) {
            const std::uint64_t pair = (std::uint64_t{At(i - whole)} << 32) | At(i - whole - 1);
            limbs[static_cast<std::size_t>(i)] = static_cast<std::uint32_t>((pair << part) >> 32);
        }
    }

    /// True when a bit that was set fell out.
    bool ShiftRight(int bits) {
        const int whole = bits / 32;
        const int part = bits % 32;
        std::uint32_t lost = At(whole) & ((std::uint32_t{1} << part) - 1);
        for (int i = 0; i < whole; ++i) lost |= At(i);
        for (int i = 0; i < kLimbs; ++i) {
            const std::uint64_t pair = (std::uint64_t{At(i + whole + 1)} << 32) | At(i + whole);
            limbs[static_cast<std::size_t>(i)] = static_cast<std::uint32_t>(pair >> part);
        }
        return lost != 0;
    }

    std::uint64_t Low64() const { return (std::uint64_t{limbs[1]} << 32) | limbs[0]; }

  private:
    static constexpr int kLimbs = 5;
    static constexpr int kStep = 13;  // 5^13 is the largest power of five in 32 bits
    static constexpr std::array<std::uint32_t, kStep + 1> kPowersOfFive = [] {
        std::array<std::uint32_t, kStep + 1> powers{1};
        for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 5;
        return powers;
    }();

    std::uint32_t At(int i) const {
        return i >= 0 && i < kLimbs ? limbs[static_cast<std::size_t>(i)] : 0;
    }

    void Multiply(std::uint32_t factor) {
        std::uint64_t carry = 0;
        for (std::uint32_t& limb : limbs) {
            carry += std::uint64_t{limb} * factor;
            limb = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
    }

    bool Divide(std::uint32_t divisor) {
        std::uint64_t rest = 0;
        for (std::size_t i = limbs.size(); i-- > 0;) {
            rest = (rest << 32) | limbs[i];
            limbs[i] = static_cast<std::uint32_t>(rest / divisor);
            rest %= divisor;
        }
        return rest != 0;
    }

    std::array<std::uint32_t, kLimbs> limbs{};
};

}  // namespace VokNumberText
