#include <VokLib/Text/VokFile.h>

#include <charconv>
#include <ostream>

#include <VokLib/Base/VokException.h>

namespace {

template <class Integer, class Write>
void FormatInteger(Integer value, Write write) {
    char text[16];
    const char* const end = std::to_chars(text, text + sizeof text, value).ptr;
    write(std::string_view(text, static_cast<std::size_t>(end - text)));
}

}  // namespace

VokFile::VokFile(std::ostream& out) : stream(out) {}

VokFile::~VokFile() = default;

void VokFile::Put(std::string_view text) {
    stream.write(text.data(), static_cast<std::streamsize>(text.size()));
}

void VokFile::WriteHeader() {
    Put("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n");
    state = State::Raw;
}

void VokFile::NewLineBehindTag() {
    if (state != State::Opened && state != State::Closed) return;
    Put("\n");
    state = State::Raw;
}

/// Puts `text` with the characters of `special` as entities; each runs to the next one in one
/// piece.
void VokFile::PutEscaped(std::string_view text, std::string_view special) {
    for (;;) {
        const std::size_t at = text.find_first_of(special);
        Put(text.substr(0, at));
        if (at == std::string_view::npos) return;
        switch (text[at]) {
            case '&':
                Put("&amp;");
                break;
            case '<':
                Put("&lt;");
                break;
            case '"':
                Put("&quot;");
                break;
            default:
                Put("&apos;");
                break;
        }
        text.remove_prefix(at + 1);
    }
}

void VokFile::StartTag(std::string_view name, const VokAttributes* attributes) {
    NewLineBehindTag();
    Put("<");
    Put(name);
    for (std::size_t i = 0; attributes != nullptr && i < attributes->GetCount(); ++i) {
        Put(" ");
        Put(attributes->GetName(i));
        Put("=\"");
        // The format leaves < alone in attributes, unlike in text.
        PutEscaped(attributes->GetValue(i), "&\"'");
        Put("\"");
    }
}

void VokFile::OpenTag(std::string_view name) {
    StartTag(name, nullptr);
    FinishOpenTag(name);
}

void VokFile::OpenTag(std::string_view name, const VokAttributes& attributes) {
    StartTag(name, &attributes);
    FinishOpenTag(name);
}

void VokFile::FinishOpenTag(std::string_view name) {
    Put(">");
    open.emplace_back(name);
    state = State::Opened;
}

void VokFile::EmptyTag(std::string_view name, const VokAttributes& attributes) {
    StartTag(name, &attributes);
    Put(" />");
    state = State::Closed;
}

void VokFile::CloseTag(std::string_view name) {
    if (open.empty() || open.back() != name) ThrowVokException("VokFile::PopTag() error");
    open.pop_back();
    NewLineBehindTag();
    Put("</");
    Put(name);
    Put(">");
    state = State::Closed;
}

void VokFile::WriteText(std::string_view text) {
    PutEscaped(text, "&<");
    state = State::Text;
}

void VokFile::WriteRaw(std::string_view text) {
    Put(text);
    state = State::Raw;
}

void VokFile::WriteNumberText(std::string_view digits) {
    if (state == State::Number) Put(" ");
    Put(digits);
    state = State::Number;
}

void VokFile::WriteInt(int value) {
    FormatInteger(value, [this](std::string_view digits) { WriteNumberText(digits); });
}

void VokFile::WriteUnsigned(unsigned value) {
    FormatInteger(value, [this](std::string_view digits) { WriteNumberText(digits); });
}

void VokFile::WriteBool(bool value) {
    WriteNumberText(value ? "1" : "0");
}

void VokFile::WriteFloats(const float* values, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) WriteFloat(values[i]);
}

void VokFile::WriteVector2(const VokVector2& value) {
    WriteFloat(value.x);
    WriteFloat(value.y);
}

void VokFile::WriteVector3(const VokVector3& value) {
    WriteFloat(value.x);
    WriteFloat(value.y);
    WriteFloat(value.z);
}

void VokFile::WriteVector4(const VokVector4& value) {
    WriteFloat(value.x);
    WriteFloat(value.y);
    WriteFloat(value.z);
    WriteFloat(value.w);
}

void VokFile::WriteMatrix(const VokMatrix& value) {
    for (const auto& row : value.rows) WriteFloats(row.data(), row.size());
}

void VokFile::WriteFloatArray(const std::vector<float>& values) {
    for (const float value : values) {
        WriteFloat(value);
        WriteRaw(" ");
    }
}

void VokFile::WriteIndexedFloats(std::span<const std::pair<int, float>> pairs) {
    WriteUnsigned(static_cast<unsigned>(pairs.size()));
    for (const auto& [index, value] : pairs) {
        WriteUnsigned(static_cast<unsigned>(index));
        WriteFloat(value);
    }
}
