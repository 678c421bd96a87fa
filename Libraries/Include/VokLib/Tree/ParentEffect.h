#pragma once

#include <cstdint>
#include <string_view>

class VokObj;

/// What a node takes over from its parent's scale.
enum class ParentEffect : std::uint32_t { Normal = 0, ScaleCompensate = 1, NoInherit = 2 };

/// Throws a VokException "Invalid parent effect string.", with `object`'s path, for a text that is
/// none of the three.
ParentEffect ParseParentEffect(std::string_view text, const VokObj* object = nullptr);
/// Throws a VokException "Invalid parent effect enum.", with `object`'s path, for a value that is
/// none of the three.
std::string_view GetParentEffectText(ParentEffect effect, const VokObj* object = nullptr);
