#pragma once

#include <HashClient/LocalHash.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// Two strings with the same hash, each `prefix` and seven letters: of a quarter of a million such
/// names some eight pairs have one hash.
inline std::pair<std::string, std::string> CollidingNames(const std::string& prefix = "") {
    constexpr std::uint32_t kNames = 1u << 18;
    const auto name = [&prefix](std::uint32_t number) {
        std::string text = prefix;
        std::uint64_t rest = (number + 1) * 0x9E3779B97F4A7C15u >> 20;
        for (int letter = 0; letter < 7; ++letter, rest /= 26)
            text += static_cast<char>('a' + rest % 26);
        return text;
    };
    std::vector<std::pair<std::uint32_t, std::uint32_t>> hashes(kNames);
    for (std::uint32_t i = 0; i < kNames; ++i) hashes[i] = {QelHashClient::LocalHash(name(i)), i};
    std::sort(hashes.begin(), hashes.end());
    for (std::size_t i = 1; i < hashes.size(); ++i) {
        if (hashes[i].first != hashes[i - 1].first) continue;
        const std::string one = name(hashes[i - 1].second);
        const std::string two = name(hashes[i].second);
        if (one != two) return {one, two};
    }
    return {};
}
