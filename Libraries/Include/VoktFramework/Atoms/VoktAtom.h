#pragma once

#include <string>

/// Anything that can stand in the universe: what one stage leaves for the stages behind it.
class VoktAtom {
  public:
    VoktAtom() = default;
    VoktAtom(const VoktAtom&) = delete;
    VoktAtom& operator=(const VoktAtom&) = delete;
    virtual ~VoktAtom() = default;

    /// The atom type's text: the class's own name.
    virtual std::string GetType() const = 0;
};
