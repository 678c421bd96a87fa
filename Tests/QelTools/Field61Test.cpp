#include "Field61.h"

#include <gtest/gtest.h>

#include <random>

namespace Field61 = QelTools::Common::Field61;
using Field61::kPrime;

namespace {

/// By doubling and adding, with no number above twice the prime.
std::uint64_t SlowProduct(std::uint64_t a, std::uint64_t b) {
    std::uint64_t product = 0;
    for (int bit = 60; bit >= 0; --bit) {
        product = product * 2 % kPrime;
        if ((b >> bit & 1) != 0) product = (product + a) % kPrime;
    }
    return product;
}

}  // namespace

TEST(Field61, ReducesAnyNumber) {
    for (const std::uint64_t number : {std::uint64_t{0}, kPrime - 1, kPrime, kPrime + 1, 2 * kPrime,
                                       7 * kPrime + 3, ~std::uint64_t{0}})
        EXPECT_EQ(Field61::Reduce(number), number % kPrime) << number;
}

TEST(Field61, MultipliesResidues) {
    std::mt19937_64 random(61);
    std::vector<std::uint64_t> numbers = {
        0,        1,          (1u << 30) - 1, 1u << 30,   (1u << 31) - 1,
        1u << 31, kPrime - 1, kPrime - 2,     kPrime / 2, kPrime / 2 + 1};
    for (int i = 0; i < 90; ++i) numbers.push_back(random() % kPrime);
    for (const std::uint64_t a : numbers)
        for (const std::uint64_t b : numbers)
            ASSERT_EQ(Field61::Multiply(a, b), SlowProduct(a, b)) << a << " * " << b;
}
