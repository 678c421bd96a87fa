#pragma once

#include <VokLib/Document/VokElement.h>

/// A named group of animations.
class VokAnimClip : public VokElement<VokAnimClip, VokObj> {
  public:
    static constexpr std::string_view kElementName = "animclip";
};
