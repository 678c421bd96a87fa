#pragma once

#include <cstdint>
#include <string_view>

/// What a node takes over from its parent's scale.
enum class ParentEffect : std::uint32_t { Normal = 0, ScaleCompensate = 1, NoInherit = 2 };

/// Throws "Invalid parent effect string." for a text that is none of the three.
ParentEffect ParseParentEffect(std::string_view text);
/// Throws "Invalid parent effect enum." for a value that is none of the three.
std::string_view GetParentEffectText(ParentEffect effect);
