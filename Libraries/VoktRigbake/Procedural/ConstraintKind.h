#pragma once

#include <array>
#include <optional>

class VokObj;

/// The constraints that a skeleton file holds, in the order in which they are looked for.
enum class ConstraintKind { Translation, Orientation, Aim, Parent, Scale };

inline constexpr std::array kConstraintKinds{ConstraintKind::Translation,
                                             ConstraintKind::Orientation, ConstraintKind::Aim,
                                             ConstraintKind::Parent, ConstraintKind::Scale};

/// Nothing for an object that is none of the five.
std::optional<ConstraintKind> FindConstraintKind(const VokObj& object);
