#include <QelTools/AsciiText.h>
#include <QelTools/Exception.h>
#include <VokLib/Text/VokNumberText.h>
#include <VoktFramework/CommandLine/VoktCommandLineSyntax.h>
#include <VoktFramework/Errors/VoktError.h>
#include <VoktFramework/Stages/VoktComponent.h>

#include <string_view>

#include "CommandLine/CommandLineValue.h"

namespace {

constexpr std::uint32_t kOptionsOfAList = VoktCommandLineSyntax::kMultiUse;

template <class Row>
const Row* FindRow(const Row* rows, std::uint32_t count, const std::string& name) {
    for (std::uint32_t i = 0; i < count; ++i)
        if (name == rows[i].name) return &rows[i];
    return nullptr;
}

bool IsText(VoktArgumentType type) {
    return type == VoktArgumentType::String || type == VoktArgumentType::InputFilename ||
           type == VoktArgumentType::OutputFilename;
}

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    const char lower = QelTools::Common::ToLowerAscii(c);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

bool IsSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// What scanf reads with "0x%x" in the C locale: the two characters to the letter, then blanks, a
// sign and a second "0x" as "%x" allows them. 0 where it reads nothing.
std::uint32_t ScanHex(std::string_view text) {
    if (!text.starts_with("0x")) return 0;
    text.remove_prefix(2);
    while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X') &&
        HexDigit(text[2]) >= 0)
        text.remove_prefix(2);
    std::uint64_t value = 0;
    bool overflow = false;
    for (; !text.empty() && HexDigit(text.front()) >= 0; text.remove_prefix(1)) {
        overflow = overflow || (value >> 60) != 0;
        value = value * 16 + static_cast<std::uint64_t>(HexDigit(text.front()));
    }
    if (overflow) return 0xFFFFFFFFu;
    return static_cast<std::uint32_t>(negative ? 0 - value : value);
}

std::uint32_t ToUnsignedInt(const std::string& text) {
    if (QelTools::Common::EqualsIgnoringCase(std::string_view(text).substr(0, 2), "0x"))
        return ScanHex(text);
    return static_cast<std::uint32_t>(VokNumberText::ScanInt(text));
}

void StoreValue(VoktComponent& component, const VoktValueFlagDefinition& row,
                const std::string& value) {
    if (row.options == kOptionsOfAList) {
        if (!IsText(row.type) || row.listMember == nullptr)
            QelTools::Common::ThrowException("unhandled mult-use type");
        row.listMember(component).push_back(value);
    } else if (row.type == VoktArgumentType::Boolean && row.boolMember != nullptr) {
        row.boolMember(component) = CommandLineValue::IsTrue(value);
    } else if (row.type == VoktArgumentType::UnsignedInt && row.intMember != nullptr) {
        row.intMember(component) = ToUnsignedInt(value);
    } else if (row.type == VoktArgumentType::Float && row.floatMember != nullptr) {
        row.floatMember(component) = VokNumberText::ScanFloat(value);
    } else if (IsText(row.type) && row.stringMember != nullptr) {
        row.stringMember(component) = value;
    } else {
        QelTools::Common::ThrowException("unknown type");
    }
}

}  // namespace

VoktComponent::~VoktComponent() noexcept(false) = default;

void VoktComponent::Initialise() {}

void VoktComponent::AddFlags(VoktCommandLineSyntax& syntax) {
    for (std::uint32_t i = 0; i < valueFlagCount; ++i) {
        const VoktValueFlagDefinition& row = valueFlags[i];
        const std::uint32_t hidden = row.visible ? 0 : VoktCommandLineSyntax::kHidden;
        syntax.AddFlag(row.name, row.shortName, row.help, row.options | hidden, row.group);
        syntax.AddFlagArgument(row.type);
    }
    for (std::uint32_t i = 0; i < switchFlagCount; ++i)
        syntax.AddFlag(switchFlags[i].name, switchFlags[i].shortName, switchFlags[i].help);
}

void VoktComponent::ReadFlags(const VoktCommandLineSyntax& syntax) {
    for (std::uint32_t i = 0; i < valueFlagCount; ++i) {
        const std::string name = valueFlags[i].name;
        const int count = syntax.UsageCount(name);
        for (int usage = 0; usage < count; ++usage) {
            std::string value;
            syntax.GetString(name, 0, value, usage);
            SetFlag(name, value);
        }
    }
    for (std::uint32_t i = 0; i < switchFlagCount; ++i)
        if (syntax.IsSet(switchFlags[i].name)) SetFlag(switchFlags[i].name, "");
}

void VoktComponent::SetFlag(const std::string& name, const std::string& value) {
    if (const VoktValueFlagDefinition* row = FindRow(valueFlags, valueFlagCount, name)) {
        StoreValue(*this, *row, value);
    } else if (const VoktSwitchFlagDefinition* sw = FindRow(switchFlags, switchFlagCount, name)) {
        sw->boolMember(*this) = true;
    } else if (valueFlagCount != 0 || switchFlagCount != 0) {
        throw VoktError(VoktErrorId::UnhandledArgument, name);
    }
}

void VoktComponent::Validate() {}

void VoktComponent::ReadValueFlags(const VoktCommandLineSyntax& syntax,
                                   const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        if (!syntax.IsSet(name)) continue;
        std::string value;
        syntax.GetString(name, 0, value);
        SetFlag(name, value);
    }
}

void VoktComponent::ReadSwitchFlags(const VoktCommandLineSyntax& syntax,
                                    const std::vector<std::string>& names) {
    for (const std::string& name : names)
        if (syntax.IsSet(name)) SetFlag(name, "");
}
