#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

/// The document's texts of an enumeration whose values count from 0, in the order of the values:
///
///     constexpr VokEnumText<Parameterisation, 2> kTexts{{"length", "curve"}};
template <class Enum, std::size_t Count>
struct VokEnumText {
    std::array<std::string_view, Count> texts;

    /// Compared as a whole and by case; nothing for a text that is not in the table.
    constexpr std::optional<Enum> Find(std::string_view text) const {
        for (std::size_t i = 0; i < Count; ++i)
            if (texts[i] == text) return static_cast<Enum>(i);
        return std::nullopt;
    }

    /// Nothing for a value that is not in the table.
    constexpr std::optional<std::string_view> TextOf(Enum value) const {
        const auto index = static_cast<std::size_t>(value);
        return index < Count ? std::optional(texts[index]) : std::nullopt;
    }
};
