#pragma once

#include <VoktFramework/Atoms/VoktAtom.h>

#include <string>

/// A text in the universe.
class VoktAtomString : public VoktAtom {
  public:
    static constexpr const char* kType = "VoktAtomString";
    std::string GetType() const override { return kType; }

    std::string value;
};
