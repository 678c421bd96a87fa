#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/// Reads a skeleton file as an engine would: from the header along every offset. It shares nothing
/// with the code that writes files, and throws for anything that lies outside the file or off its
/// alignment.
class SkeletonFileReader {
  public:
    struct Joint {
        int flags, parent, nextSibling, firstChild;  // -1 for 0xFFFF
        bool operator==(const Joint&) const = default;
    };
    struct Transform {
        std::array<float, 4> rotation, translation, scale;
    };
    using Hash = std::pair<std::uint32_t, std::int32_t>;

    SkeletonFileReader(std::string fileBytes, bool isBigEndian)
        : bytes(std::move(fileBytes)), bigEndian(isBigEndian) {
        if (bytes.substr(0, 4) != "SK08") throw std::runtime_error("wrong magic");
        signature = U32(0x04);
        jointCount = U16(0x0A);
        if (U16(0x08) != 0 || U32(0x24) != 0 || U32(0x28) != 0 || U32(0x2C) != 0)
            throw std::runtime_error("reserved field is not 0");
        ReadJoints(Table(0x0C));
        ReadTransforms(Table(0x10));
        ReadHashes(Table(0x14));
        if (I32(0x18) != 0) ReadLods(Table(0x18));
        procedural = I32(0x1C) == 0 ? 0 : Table(0x1C);
        proceduralEnd = I32(0x20) == 0 ? 0 : Table(0x20);
    }

    std::uint32_t signature = 0;
    std::size_t jointCount = 0;
    std::vector<Joint> joints;
    std::vector<Transform> transforms;
    std::vector<Hash> hashes;
    std::vector<std::uint16_t> lodCounts;
    std::vector<std::vector<int>> lodRemaps;  // -1 for 0xFFFF
    std::size_t procedural = 0;               // file positions; 0 when absent
    std::size_t proceduralEnd = 0;
    std::size_t end = 0;  // behind the last table

    std::uint32_t U16(std::size_t at) const { return Number(at, 2); }
    std::uint32_t U32(std::size_t at) const { return Number(at, 4); }
    std::int32_t I32(std::size_t at) const { return static_cast<std::int32_t>(U32(at)); }

  private:
    std::uint32_t Number(std::size_t at, std::size_t size) const {
        if (at + size > bytes.size()) throw std::runtime_error("outside the file");
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < size; ++i) {
            const auto byte = static_cast<unsigned char>(bytes[at + i]);
            value |= std::uint32_t{byte} << 8 * (bigEndian ? size - 1 - i : i);
        }
        return value;
    }

    /// The place that the offset at `at` leads to.
    std::size_t Table(std::size_t at) const {
        const auto place = static_cast<std::size_t>(static_cast<std::int64_t>(at) + I32(at));
        if (place % 16 != 0 || place > bytes.size()) throw std::runtime_error("bad offset");
        return place;
    }

    int Index(std::size_t at) const {
        const std::uint32_t value = U16(at);
        return value == 0xFFFF ? -1 : static_cast<int>(value);
    }

    void ReadJoints(std::size_t at) {
        for (std::size_t i = 0; i < jointCount; ++i, at += 8)
            joints.push_back(
                {static_cast<int>(U16(at)), Index(at + 2), Index(at + 4), Index(at + 6)});
        end = at;
    }

    void ReadTransforms(std::size_t at) {
        for (std::size_t i = 0; i < jointCount; ++i) {
            Transform& transform = transforms.emplace_back();
            for (auto* run : {&transform.rotation, &transform.translation, &transform.scale})
                for (float& element : *run) {
                    element = std::bit_cast<float>(U32(at));
                    at += 4;
                }
        }
        end = at;
    }

    void ReadHashes(std::size_t at) {
        for (std::size_t i = 0; i < jointCount; ++i, at += 8)
            hashes.emplace_back(U32(at), I32(at + 4));
        end = at;
    }

    void ReadLods(std::size_t at) {
        const std::uint32_t count = U32(at);
        at += 4;
        for (std::uint32_t i = 0; i < count; ++i, at += 2)
            lodCounts.push_back(static_cast<std::uint16_t>(U16(at)));
        for (std::uint32_t row = 0; row < count; ++row) {
            std::vector<int>& remap = lodRemaps.emplace_back();
            for (std::size_t i = 0; i < jointCount; ++i, at += 2) remap.push_back(Index(at));
        }
        end = at;
    }

    std::string bytes;
    bool bigEndian;
};
