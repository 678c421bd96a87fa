#pragma once

#include <VoktFramework/Atoms/VoktAtom.h>

#include <string>
#include <vector>

/// A list of texts in the universe.
class VoktAtomStringArray : public VoktAtom {
  public:
    static constexpr const char* kType = "VoktAtomStringArray";
    std::string GetType() const override { return kType; }

    std::vector<std::string> values;
};
