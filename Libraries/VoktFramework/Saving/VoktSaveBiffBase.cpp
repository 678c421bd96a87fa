#include <QelTools/Exception.h>
#include <VoktFramework/CommandLine/VoktCommandLineSyntax.h>
#include <VoktFramework/Saving/VoktSaveBiffBase.h>

namespace {

constexpr const char* kLittleEndianFlag = "-littleendian";
constexpr const char* kBigEndianFlag = "-bigendian";
constexpr const char* kBothEndianFlag = "-bothendian";
constexpr const char* kLittleSuffixFlag = "-littlesuffix";
constexpr const char* kBigSuffixFlag = "-bigsuffix";

}  // namespace

VoktSaveBiffBase::VoktSaveBiffBase(std::uint32_t hide) : VoktSave(hide) {}

VoktSaveBiffBase::~VoktSaveBiffBase() noexcept(false) = default;

void VoktSaveBiffBase::AddFlags(VoktCommandLineSyntax& syntax) {
    if (hideFlags == 1) return;
    syntax.AddFlag(kLittleEndianFlag, "-le",
                   "Write the binary in little-endian (PC) form (default)");
    syntax.AddFlag(kBigEndianFlag, "-be", "Write the binary in big-endian (QX9) form");
    syntax.AddFlag(kBothEndianFlag, "-ble",
                   "Write the binary in both big- and little-endian forms");
    syntax.AddFlag(kLittleSuffixFlag, "-ls",
                   "Suffix to use for little-endian file when writing both endianesses");
    syntax.AddFlagArgument(VoktArgumentType::String);
    syntax.AddFlag(kBigSuffixFlag, "-bs",
                   "Suffix to use for big-endian file when writing both endianesses");
    syntax.AddFlagArgument(VoktArgumentType::String);
    VoktSave::AddFlags(syntax);
}

void VoktSaveBiffBase::ReadFlags(const VoktCommandLineSyntax& syntax) {
    ReadValueFlags(syntax, {kLittleSuffixFlag, kBigSuffixFlag});
    ReadSwitchFlags(syntax, {kLittleEndianFlag, kBigEndianFlag, kBothEndianFlag});
    VoktSave::ReadFlags(syntax);
}

void VoktSaveBiffBase::SetFlag(const std::string& name, const std::string& value) {
    if (name == kLittleSuffixFlag) {
        littleSuffix = value;
    } else if (name == kBigSuffixFlag) {
        bigSuffix = value;
    } else if (name == kLittleEndianFlag) {
        endian = kLittleEndian;
    } else if (name == kBigEndianFlag) {
        endian = kBigEndian;
    } else if (name == kBothEndianFlag) {
        endian = kBothEndian;
    } else {
        VoktSave::SetFlag(name, value);
    }
}

void VoktSaveBiffBase::Validate() {
    if (endian == kBothEndian && littleSuffix == bigSuffix)
        QelTools::Common::ThrowException("Big- and little-endian suffixes are the same.\n");
}
