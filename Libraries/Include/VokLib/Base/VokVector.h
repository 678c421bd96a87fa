#pragma once

#include <array>

/// Plain float vectors of the scene. Values are as the document gives them; angles are radians.
struct VokVector2 {
    float x = 0, y = 0;
    bool operator==(const VokVector2&) const = default;
};

struct VokVector3 {
    float x = 0, y = 0, z = 0;
    bool operator==(const VokVector3&) const = default;
};

struct alignas(16) VokVector4 {
    float x = 0, y = 0, z = 0, w = 0;
    bool operator==(const VokVector4&) const = default;
};

/// Sixteen floats, row-major, for row vectors: a point transforms as p' = p x M, the translation is
/// the fourth row.
struct alignas(16) VokMatrix {
    std::array<std::array<float, 4>, 4> rows{};
    std::array<float, 4>& operator[](int row) { return rows[static_cast<unsigned>(row)]; }
    const std::array<float, 4>& operator[](int row) const {
        return rows[static_cast<unsigned>(row)];
    }
    bool operator==(const VokMatrix&) const = default;
};

struct alignas(16) VokQuaternion {
    float x = 0, y = 0, z = 0, w = 1;
    bool operator==(const VokQuaternion&) const = default;
};
