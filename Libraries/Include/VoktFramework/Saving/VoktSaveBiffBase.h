#pragma once

#include <VoktFramework/Saving/VoktSave.h>

#include <cstdint>
#include <string>

/// The base of stages that write binary layouts: byte order, and the suffixes that tell two files
/// of one run apart.
class VoktSaveBiffBase : public VoktSave {
  public:
    explicit VoktSaveBiffBase(std::uint32_t hide);
    ~VoktSaveBiffBase() noexcept(false) override;

    void AddFlags(VoktCommandLineSyntax& syntax) override;
    /// Of several byte order flags -bothendian wins over -bigendian and that over -littleendian.
    void ReadFlags(const VoktCommandLineSyntax& syntax) override;
    void SetFlag(const std::string& name, const std::string& value) override;
    /// Throws a QelTools::Common::Exception when both forms are asked for under one name.
    void Validate() override;

  protected:
    static constexpr std::uint32_t kLittleEndian = 1;
    static constexpr std::uint32_t kBigEndian = 2;
    static constexpr std::uint32_t kBothEndian = 3;

    std::uint32_t endian = kLittleEndian;
    std::string littleSuffix = "LE";
    std::string bigSuffix = "BE";
};
