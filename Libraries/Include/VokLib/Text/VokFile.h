#pragma once

#include <VokLib/Base/VokVector.h>
#include <VokLib/Text/VokAttributes.h>

#include <iosfwd>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Writes a document: a stream of tags, numbers and text with one rule of layout. An opening tag
/// behind a tag stands on a new line, text and numbers follow the opening tag directly, numbers in
/// a row are parted by one blank; nothing is indented. Errors of the stream are the owner's to look
/// at. How a float is written belongs to the concrete class.
class VokFile {
  public:
    explicit VokFile(std::ostream& out);
    virtual ~VokFile();

    virtual void WriteFloat(float value) = 0;

    void WriteHeader();
    void OpenTag(std::string_view name);
    void OpenTag(std::string_view name, const VokAttributes& attributes);
    void EmptyTag(std::string_view name, const VokAttributes& attributes);
    /// Throws "VokFile::PopTag() error" when `name` is not the tag that was opened last.
    void CloseTag(std::string_view name);
    /// Element text; & and < are escaped.
    void WriteText(std::string_view text);
    void WriteRaw(std::string_view text);
    void WriteInt(int value);
    void WriteUnsigned(unsigned value);
    /// "1" or "0".
    void WriteBool(bool value);
    void WriteFloats(const float* values, std::size_t count);
    void WriteVector2(const VokVector2& value);
    void WriteVector3(const VokVector3& value);
    void WriteVector4(const VokVector4& value);
    void WriteMatrix(const VokMatrix& value);
    /// Each float followed by one blank, the last one too.
    void WriteFloatArray(const std::vector<float>& values);
    void WriteIndexedFloats(std::span<const std::pair<int, float>> pairs);

  protected:
    /// For a concrete WriteFloat: one blank when a number came before; marks a number as written
    /// last.
    void WriteNumberText(std::string_view digits);

  private:
    enum class State { Opened = 1, Closed = 2, Number = 3, Text = 4, Raw = 5 };
    void StartTag(std::string_view name, const VokAttributes* attributes);
    void FinishOpenTag(std::string_view name);
    void NewLineBehindTag();
    void Put(std::string_view text);
    void PutEscaped(std::string_view text, std::string_view special);

    State state = State::Raw;
    std::ostream& stream;
    std::vector<std::string> open;
};
