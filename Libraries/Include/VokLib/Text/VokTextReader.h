#pragma once

#include <VokLib/Base/RotationOrder.h>
#include <VokLib/Base/VokVector.h>
#include <VokLib/Text/VokTextStream.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace VokNumberText {
class WordCount;
}

/// The text of the current element and a cursor that typed reads move along it. The reader of
/// documents collects the text; object types read it while ParseData runs. Missing tokens read as
/// 0.
///
/// A count in a document is a claim: ReadFloats and its like take memory for what the text holds. A
/// count past the text pads with zeros out of a budget that grows with the document's size; a claim
/// beyond it throws.
class VokTextReader {
  public:
    VokTextReader();
    ~VokTextReader();
    VokTextReader(const VokTextReader&) = delete;
    VokTextReader& operator=(const VokTextReader&) = delete;

    // Collecting.

    void ClearText();
    void AppendText(const char* bytes, std::size_t length);
    /// Puts the cursor at the text's beginning.
    void RewindText() { cursor = buffer; }
    std::string_view GetText() const { return {buffer, length}; }
    /// The document's bytes read so far: what claims of counts are measured against.
    void SetDocumentBytes(std::size_t bytes) { documentBytes = bytes; }
    std::size_t GetDocumentBytes() const { return documentBytes; }
    /// Forgets what was padded for the document before.
    void ResetPadding() { paddedValues = 0; }

    // Texts of which nothing is to stay. Each call holds for the text that is collected from now
    // to the next ClearText.

    /// The text is counted in words and not collected; only SkipValues makes something of it.
    void CountText();
    /// The text goes to `stream` as it comes in and is not collected.
    void StreamText(std::unique_ptr<VokTextStream> stream);
    /// At the text's end: gives its rest to the stream that was begun for it, or the whole to
    /// `fresh` when there is none, and returns the one that has read it. `Stream` is the type of
    /// either.
    template <class Stream>
    Stream FinishStream(Stream fresh) {
        Stream reader = stream != nullptr ? static_cast<Stream&>(*stream) : std::move(fresh);
        reader.Take(*this);
        return reader;
    }

    // Reads.

    /// Whether anything but blanks stands behind the cursor.
    bool HasTokens() const;
    float ReadFloat();
    int ReadInt();
    unsigned ReadUnsigned();
    /// True when the rest of the text, blanks before it apart, is exactly "true" or "1": in a list
    /// only the last word can be true.
    bool ReadBool();
    VokVector2 ReadVector2();
    VokVector3 ReadVector3();
    VokVector4 ReadVector4();
    /// Three values; the fourth element is a copy of the third.
    VokVector4 ReadVector3As4();
    VokMatrix ReadMatrix();
    /// The three angles of `rotation`; its order stays.
    void ReadAngles(EulerRotation& rotation);
    /// Makes `values` hold `count` floats from the text; the rest of a longer text is not read. A
    /// negative count is 0.
    void ReadFloats(std::vector<float>& values, long long count);
    void ReadUnsigneds(std::vector<unsigned>& values, long long count);
    void ReadInts(std::vector<int>& values, long long count);
    /// As ReadBool reads them one by one, so that all but the text's last word are false.
    void ReadBools(std::vector<bool>& values, long long count);
    /// Goes over `count` values as ReadFloats does, claims included, and makes nothing of them.
    void SkipValues(long long count);
    /// Goes over up to `count` words; returns how many there were.
    std::size_t SkipWords(std::size_t count);
    /// A count, then as many pairs of an index and a value.
    void ReadIndexedFloats(std::vector<std::pair<int, float>>& pairs);
    /// The rest of the text, blanks included, in the document's single-byte form.
    std::string ReadString();

    /// Takes `count` values that no text holds out of the document's budget; throws a VokException
    /// when a document claims more than its size allows.
    void ClaimPadding(std::size_t count);

  private:
    template <class T, class Read>
    void ReadArray(std::vector<T>& values, long long count, Read read);
    void CheckCursor() const;
    void ForgetSpecialText();
    void AppendSpecialText(const char* bytes, std::size_t count);
    void Store(const char* bytes, std::size_t count);

    char* buffer;
    std::size_t length = 0;
    std::size_t capacity = 0;
    const char* cursor;
    bool isSpecial = false;  // the text is counted or streamed
    std::unique_ptr<VokNumberText::WordCount> wordCount;
    std::unique_ptr<VokTextStream> stream;
    std::size_t documentBytes = 0;
    std::size_t paddedValues = 0;
};
