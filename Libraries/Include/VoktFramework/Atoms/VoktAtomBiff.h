#pragma once

#include <BiffLib/CBlock.h>
#include <VoktFramework/Atoms/VoktAtom.h>

#include <string>

/// A binary layout in the universe, ready to be written in either byte order.
class VoktAtomBiff : public VoktAtom {
  public:
    static constexpr const char* kType = "VoktAtomBiff";
    std::string GetType() const override { return kType; }

    Biff::CBlock block;
};
