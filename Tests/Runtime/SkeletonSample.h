#pragma once

#include <gtest/gtest.h>
#include <skeleton/skeleton.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

/// A skeleton file in memory as an engine holds it, free to be damaged.
class SkeletonSample {
  public:
    explicit SkeletonSample(const std::string& bytes)
        : image(bytes.size() / sizeof(Line) + 1), size(bytes.size()) {
        std::memcpy(image.data(), bytes.data(), size);
    }
    /// One of the fuzzers' example files: "parts-little" holds a bit of everything, "roots" has two
    /// roots, one of them without a record in the table of hashes. In this machine's byte order.
    static SkeletonSample Load(const std::string& name) {
        SkeletonSample sample(Read(name));
        if (skeleton_is_reversed(sample.Data(), sample.size) != 0) {
            EXPECT_TRUE(skeleton_swap(sample.Data(), sample.size, nullptr));
        }
        return sample;
    }
    static std::string Read(const std::string& name) {
        std::ifstream in(RIGBAKE_SOURCE_ROOT "/Fuzz/Seeds/Skeleton/" + name, std::ios::binary);
        EXPECT_TRUE(in) << name;
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }

    void* Data() { return image.data(); }
    const skeleton_header* Header() const {
        return reinterpret_cast<const skeleton_header*>(image.data());
    }
    std::size_t Size() const { return size; }
    std::string Bytes() const { return {image.front().bytes, size}; }

    const skeleton_procedural* Procedural() const { return skeleton_find_procedural(Header()); }
    const skeleton_driven_keys& Keys(std::uint32_t item) const {
        return *skeleton_item_driven_keys(Procedural(), item);
    }
    const skeleton_joint_constraints& Constraints(std::uint32_t item) const {
        return *skeleton_item_constraints(Procedural(), item);
    }

  private:
    struct alignas(16) Line {
        char bytes[16];
    };
    std::vector<Line> image;
    std::size_t size;
};
