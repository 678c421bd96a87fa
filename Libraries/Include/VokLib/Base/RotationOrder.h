#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// In which order the three angles of an Euler rotation act on a point: the leftmost letter first.
enum class RotationOrder : std::uint32_t { xyz = 0, yzx = 1, zxy = 2, xzy = 3, yxz = 4, zyx = 5 };

/// The order of a rotOrd text; nothing for a text that is none of the six.
std::optional<RotationOrder> FindRotationOrder(std::string_view text);

/// The document's text of an order; "xyz" for a value that is no order.
std::string_view GetRotationOrderText(RotationOrder order);

/// Three angles in radians about x, y and z, and the order in which they act.
struct EulerRotation {
    float x = 0, y = 0, z = 0;
    RotationOrder order = RotationOrder::xyz;
    bool operator==(const EulerRotation&) const = default;
};
