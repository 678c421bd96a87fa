#pragma once

#include <cstdint>

/// How a material is drawn. The indices count through the format's tables of names; a name that is
/// in no table is held as the index past the table's end.
struct VokRenderState {
    static constexpr std::uint32_t kSrcAlpha = 4;
    static constexpr std::uint32_t kOneMinusSrcAlpha = 5;
    static constexpr std::uint32_t kGreater = 1;
    static constexpr std::uint32_t kLessThanOrEqual = 5;

    struct AlphaBlend {
        bool enabled = false;
        std::uint32_t sourceBlend = kSrcAlpha;
        std::uint32_t destBlend = kOneMinusSrcAlpha;
        bool operator==(const AlphaBlend&) const = default;
    };
    struct AlphaTest {
        bool enabled = false;
        std::uint32_t alphaFunc = kGreater;
        float alphaRef = 0.5f;
        bool operator==(const AlphaTest&) const = default;
    };
    struct ZTest {
        bool enabled = true;
        std::uint32_t zTestFunc = kLessThanOrEqual;
        bool operator==(const ZTest&) const = default;
    };

    bool present = false;  ///< a document held the element
    bool overriden = false;
    AlphaBlend alphaBlend;
    AlphaTest alphaTest;
    bool zWrite = true;
    ZTest zTest;
    bool backfaceCulling = true;

    /// Whether anything but `present` differs from the defaults.
    bool IsDefault() const;
};
