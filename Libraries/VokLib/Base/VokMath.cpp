#include <VokLib/Base/VokMath.h>

#include "Base/LargeAngle.h"

#include <cmath>

namespace {

struct SineCosine {
    float s, c;
    explicit SineCosine(float angle)
        : s(static_cast<float>(std::sin(static_cast<double>(angle)))),
          c(static_cast<float>(std::cos(static_cast<double>(angle)))) {
        if (!std::isfinite(angle) || std::fabs(angle) < LargeAngle::kSmallest) return;
        const auto [sine, cosine] = LargeAngle::Take(angle);
        s = static_cast<float>(sine);
        c = static_cast<float>(cosine);
    }
};

VokMatrix AboutX(float angle) {
    const auto [s, c] = SineCosine(angle);
    return {{{{1, 0, 0, 0}, {0, c, s, 0}, {0, -s, c, 0}, {0, 0, 0, 1}}}};
}

VokMatrix AboutY(float angle) {
    const auto [s, c] = SineCosine(angle);
    return {{{{c, 0, -s, 0}, {0, 1, 0, 0}, {s, 0, c, 0}, {0, 0, 0, 1}}}};
}

VokMatrix AboutZ(float angle) {
    const auto [s, c] = SineCosine(angle);
    return {{{{c, s, 0, 0}, {-s, c, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}}};
}

float Asin(float sine) {
    return static_cast<float>(std::asin(static_cast<double>(sine)));
}

float Atan2(float y, float x) {
    return static_cast<float>(std::atan2(static_cast<double>(y), static_cast<double>(x)));
}

/// The axis (0 x, 1 y, 2 z) of each slot, so that an order's text reads left to right.
constexpr int kSlots[6][3] = {{0, 1, 2}, {1, 2, 0}, {2, 0, 1}, {0, 2, 1}, {1, 0, 2}, {2, 1, 0}};

}  // namespace

namespace VokMath {

VokMatrix Multiply(const VokMatrix& a, const VokMatrix& b) {
    VokMatrix product;
    for (int row = 0; row < 4; ++row)
        for (unsigned column = 0; column < 4; ++column)
            product[row][column] = a[row][0] * b[0][column] + a[row][1] * b[1][column] +
                                   a[row][2] * b[2][column] + a[row][3] * b[3][column];
    return product;
}

VokMatrix MultiplyAffine(const VokMatrix& a, const VokMatrix& b) {
    VokMatrix product;
    for (int row = 0; row < 4; ++row)
        for (unsigned column = 0; column < 4; ++column)
            product[row][column] =
                a[row][0] * b[0][column] + a[row][1] * b[1][column] + a[row][2] * b[2][column];
    for (unsigned column = 0; column < 4; ++column) product[3][column] += b[3][column];
    return product;
}

VokQuaternion Multiply(const VokQuaternion& a, const VokQuaternion& b) {
    return {a.w * b.x + b.w * a.x + a.y * b.z - a.z * b.y,
            a.w * b.y + b.w * a.y + a.z * b.x - a.x * b.z,
            a.w * b.z + b.w * a.z + a.x * b.y - a.y * b.x,
            a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z};
}

VokMatrix Identity() {
    return Scale(1, 1, 1);
}

VokMatrix Translation(float x, float y, float z) {
    return {{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {x, y, z, 1}}}};
}

VokMatrix Scale(float x, float y, float z) {
    return {{{{x, 0, 0, 0}, {0, y, 0, 0}, {0, 0, z, 0}, {0, 0, 0, 1}}}};
}

VokMatrix Shear(float x, float y, float z) {
    return {{{{1, 0, 0, 0}, {x, 1, 0, 0}, {y, z, 1, 0}, {0, 0, 0, 1}}}};
}

VokMatrix FromQuaternion(const VokQuaternion& q, const VokVector4& translation) {
    const auto [x, y, z, w] = q;
    return {{{{1 - 2 * y * y - 2 * z * z, 2 * x * y + 2 * w * z, 2 * x * z - 2 * w * y, 0},
              {2 * x * y - 2 * w * z, 1 - 2 * x * x - 2 * z * z, 2 * y * z + 2 * w * x, 0},
              {2 * x * z + 2 * w * y, 2 * y * z - 2 * w * x, 1 - 2 * x * x - 2 * y * y, 0},
              {translation.x, translation.y, translation.z, 1}}}};
}

VokMatrix Inverse(const VokMatrix& m) {
    // By cofactors, made of the 2 x 2 determinants of the upper and the lower two rows.
    const auto pair = [&m](int row, unsigned i, unsigned j) {
        return m[row][i] * m[row + 1][j] - m[row][j] * m[row + 1][i];
    };
    const float u01 = pair(0, 0, 1), u02 = pair(0, 0, 2), u03 = pair(0, 0, 3);
    const float u12 = pair(0, 1, 2), u13 = pair(0, 1, 3), u23 = pair(0, 2, 3);
    const float l01 = pair(2, 0, 1), l02 = pair(2, 0, 2), l03 = pair(2, 0, 3);
    const float l12 = pair(2, 1, 2), l13 = pair(2, 1, 3), l23 = pair(2, 2, 3);
    const float r = 1.0f / (u01 * l23 - u02 * l13 + u03 * l12 + u12 * l03 - u13 * l02 + u23 * l01);
    const auto sum = [r](float a, float x, float b, float y, float c, float z) {
        return (a * x - b * y + c * z) * r;
    };
    const auto& [a, b, c, d] = m.rows;
    return {{{{sum(b[1], l23, b[2], l13, b[3], l12), -sum(a[1], l23, a[2], l13, a[3], l12),
               sum(d[1], u23, d[2], u13, d[3], u12), -sum(c[1], u23, c[2], u13, c[3], u12)},
              {-sum(b[0], l23, b[2], l03, b[3], l02), sum(a[0], l23, a[2], l03, a[3], l02),
               -sum(d[0], u23, d[2], u03, d[3], u02), sum(c[0], u23, c[2], u03, c[3], u02)},
              {sum(b[0], l13, b[1], l03, b[3], l01), -sum(a[0], l13, a[1], l03, a[3], l01),
               sum(d[0], u13, d[1], u03, d[3], u01), -sum(c[0], u13, c[1], u03, c[3], u01)},
              {-sum(b[0], l12, b[1], l02, b[2], l01), sum(a[0], l12, a[1], l02, a[2], l01),
               -sum(d[0], u12, d[1], u02, d[2], u01), sum(c[0], u12, c[1], u02, c[2], u01)}}}};
}

VokQuaternion ToQuaternion(const VokMatrix& m) {
    const float trace = m[0][0] + m[1][1] + m[2][2];
    if (trace > 0) {
        const float s = std::sqrt(trace + 1);
        const float k = 0.5f / s;
        return {(m[1][2] - m[2][1]) * k, (m[2][0] - m[0][2]) * k, (m[0][1] - m[1][0]) * k, s / 2};
    }
    // The largest element of the diagonal keeps the root away from 0; of equal ones the first
    // counts.
    unsigned i = 0;
    if (m.rows[1][1] > m.rows[0][0]) i = 1;
    if (m.rows[2][2] > m.rows[i][i]) i = 2;
    const unsigned j = (i + 1) % 3, k = (i + 2) % 3;
    const float s = std::sqrt(m.rows[i][i] - (m.rows[j][j] + m.rows[k][k]) + 1);
    const float f = s != 0 ? 0.5f / s : 0;
    float axis[3] = {};
    axis[i] = s / 2;
    axis[j] = (m.rows[i][j] + m.rows[j][i]) * f;
    axis[k] = (m.rows[i][k] + m.rows[k][i]) * f;
    return {axis[0], axis[1], axis[2], (m.rows[j][k] - m.rows[k][j]) * f};
}

VokQuaternion EulerToQuaternion(const EulerRotation& euler) {
    const VokMatrix about[3] = {AboutX(euler.x), AboutY(euler.y), AboutZ(euler.z)};
    const auto order = static_cast<unsigned>(euler.order);
    const int(&slots)[3] = kSlots[order < 6 ? order : 0];
    return ToQuaternion(Multiply(Multiply(about[slots[0]], about[slots[1]]), about[slots[2]]));
}

EulerRotation QuaternionToEuler(const VokQuaternion& q, RotationOrder order) {
    const auto [x, y, z, w] = q;
    const float t1 = x * x - y * y - z * z + w * w;
    const float t2 = -x * x + y * y - z * z + w * w;
    const float t3 = -x * x - y * y + z * z + w * w;
    switch (order) {
        case RotationOrder::yzx:
            return {Atan2(2 * (w * x + y * z), t2), Atan2(2 * (w * y + z * x), t1),
                    Asin(2 * (w * z - x * y)), order};
        case RotationOrder::zxy:
            return {Asin(2 * (w * x - y * z)), Atan2(2 * (w * y + z * x), t3),
                    Atan2(2 * (w * z + x * y), t2), order};
        case RotationOrder::xzy:
            return {Atan2(2 * (w * x - y * z), t2), Atan2(2 * (w * y - z * x), t1),
                    Asin(2 * (w * z + x * y)), order};
        case RotationOrder::yxz:
            return {Asin(2 * (w * x + y * z)), Atan2(2 * (w * y - z * x), t3),
                    Atan2(2 * (w * z - x * y), t2), order};
        case RotationOrder::zyx:
            return {Atan2(2 * (w * x - y * z), t3), Asin(2 * (w * y + z * x)),
                    Atan2(2 * (w * z - x * y), t1), order};
        default:
            return {Atan2(2 * (w * x + y * z), t3), Asin(2 * (w * y - z * x)),
                    Atan2(2 * (w * z + x * y), t1), RotationOrder::xyz};
    }
}

}  // namespace VokMath
