#include <VokLib/Text/VokTextReader.h>

#include <QelTools/Exception.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

#include <VokLib/Base/VokException.h>
#include <VokLib/Base/VokLimits.h>
#include <VokLib/Text/VokEncoding.h>
#include <VokLib/Text/VokNumberText.h>

#include "Text/FloatRead.h"
#include "Text/IntRead.h"
#include "Text/WordCount.h"

namespace {

using VokNumberText::IsBlank;

constexpr std::size_t kGrowthMargin = 2048;
/// Behind every text stand as many NULs, so that numbers near its end are read like all others.
constexpr std::size_t kReadAhead = VokNumberText::Detail::kReadAhead;

/// The first character of the next token, or `end`.
const char* SkipBlanks(const char* p, const char* end) {
    while (p != end && IsBlank(*p)) ++p;
    return p;
}

const char* TokenEnd(const char* p, const char* end) {
    while (p != end && !IsBlank(*p)) ++p;
    return p;
}

// Each takes the token at `cursor`, which is not at the end of the text, and moves the cursor
// behind it.

float TakeFloat(const char*& cursor, const char* end) {
    const auto taken = VokNumberText::Detail::ReadFloatAt(cursor, end, end + kReadAhead);
    cursor = TokenEnd(taken.behind, end);
    return taken.value;
}

int TakeInt(const char*& cursor, const char* end) {
    const auto taken = VokNumberText::Detail::ReadIntAt(cursor, end, end + kReadAhead);
    cursor = TokenEnd(taken.behind, end);
    return taken.value;
}

unsigned TakeUnsigned(const char*& cursor, const char* end) {
    return static_cast<unsigned>(TakeInt(cursor, end));
}

unsigned char TakeBool(const char*& cursor, const char* end) {
    const std::string_view rest(cursor, static_cast<std::size_t>(end - cursor));
    cursor = TokenEnd(cursor, end);
    return rest == "true" || rest == "1" ? 1 : 0;
}

/// Without memory for what was there before: the old values are of no use to a new reading.
template <class T>
void PrepareRoom(std::vector<T>& values, std::size_t count) {
    values.clear();
    if (values.capacity() >= count) return;
    std::vector<T>().swap(values);
    values.reserve(count);
}

}  // namespace

VokTextReader::VokTextReader()
    : buffer(static_cast<char*>(std::calloc(kReadAhead, 1))), capacity(kReadAhead) {
    if (buffer == nullptr) throw std::bad_alloc();
    cursor = buffer;
}

VokTextReader::~VokTextReader() {
    std::free(buffer);
}

void VokTextReader::ClearText() {
    if (isSpecial) ForgetSpecialText();
    length = 0;
    buffer[0] = '\0';
    cursor = buffer;
}

void VokTextReader::AppendText(const char* bytes, std::size_t count) {
    if (isSpecial)
        AppendSpecialText(bytes, count);
    else
        Store(bytes, count);
}

void VokTextReader::Store(const char* bytes, std::size_t count) {
    if (length + count + kReadAhead > capacity) {
        // A share of what is there, so that a text of any length is copied a constant number of
        // times.
        const std::size_t wanted =
            std::max(length + count + kGrowthMargin, capacity + capacity / 2);
        char* const grown = static_cast<char*>(std::realloc(buffer, wanted));
        if (grown == nullptr) throw std::bad_alloc();
        cursor = grown + (cursor - buffer);
        buffer = grown;
        capacity = wanted;
    }
    if (count != 0) std::memcpy(buffer + length, bytes, count);
    length += count;
    std::memset(buffer + length, 0, kReadAhead);
}

void VokTextReader::CheckCursor() const {
    if (cursor >= buffer + capacity)
        QelTools::Common::ThrowException("Buffer pointer out of bounds");
}

bool VokTextReader::HasTokens() const {
    const char* at = cursor;
    while (VokNumberText::IsBlank(*at)) ++at;
    return *at != '\0';
}

float VokTextReader::ReadFloat() {
    const char* const end = buffer + length;
    cursor = SkipBlanks(cursor, end);
    const float value = cursor == end ? 0.0f : TakeFloat(cursor, end);
    CheckCursor();
    return value;
}

int VokTextReader::ReadInt() {
    const char* const end = buffer + length;
    cursor = SkipBlanks(cursor, end);
    const int value = cursor == end ? 0 : TakeInt(cursor, end);
    CheckCursor();
    return value;
}

unsigned VokTextReader::ReadUnsigned() {
    return static_cast<unsigned>(ReadInt());
}

bool VokTextReader::ReadBool() {
    const char* const end = buffer + length;
    cursor = SkipBlanks(cursor, end);
    // The text's end takes part in the comparison, so that even a blank behind the word makes it
    // false.
    const bool value = std::strcmp(cursor, "true") == 0 || std::strcmp(cursor, "1") == 0;
    cursor = TokenEnd(cursor, end);
    CheckCursor();
    return value;
}

VokVector2 VokTextReader::ReadVector2() {
    VokVector2 v;
    v.x = ReadFloat();
    v.y = ReadFloat();
    return v;
}

VokVector3 VokTextReader::ReadVector3() {
    VokVector3 v;
    v.x = ReadFloat();
    v.y = ReadFloat();
    v.z = ReadFloat();
    return v;
}

VokVector4 VokTextReader::ReadVector4() {
    VokVector4 v;
    v.x = ReadFloat();
    v.y = ReadFloat();
    v.z = ReadFloat();
    v.w = ReadFloat();
    return v;
}

VokVector4 VokTextReader::ReadVector3As4() {
    const VokVector3 v = ReadVector3();
    return {v.x, v.y, v.z, v.z};
}

VokMatrix VokTextReader::ReadMatrix() {
    VokMatrix matrix;
    for (auto& row : matrix.rows) {
        const VokVector4 v = ReadVector4();
        row = {v.x, v.y, v.z, v.w};
    }
    return matrix;
}

void VokTextReader::ReadAngles(EulerRotation& rotation) {
    const VokVector3 angles = ReadVector3();
    rotation.x = angles.x;
    rotation.y = angles.y;
    rotation.z = angles.z;
}

/// `read` is a lambda, so that its body stands in the loop.
template <class T, class Read>
void VokTextReader::ReadArray(std::vector<T>& values, long long count, Read read) {
    const auto wanted = static_cast<std::size_t>(std::max(count, 0LL));
    const char* const end = buffer + length;
    // A token and the blank behind it take two characters at least.
    PrepareRoom(values, std::min(wanted, (static_cast<std::size_t>(end - cursor) + 1) / 2));
    const char* p = cursor;
    while (values.size() < wanted && (p = SkipBlanks(p, end)) != end)
        values.push_back(read(p, end));
    cursor = p;
    CheckCursor();
    if (values.size() == wanted) return;
    ClaimPadding(wanted - values.size());
    values.reserve(wanted);
    values.resize(wanted);
}

void VokTextReader::ReadFloats(std::vector<float>& values, long long count) {
    ReadArray(values, count, [](const char*& p, const char* end) { return TakeFloat(p, end); });
}

void VokTextReader::ReadUnsigneds(std::vector<unsigned>& values, long long count) {
    ReadArray(values, count, [](const char*& p, const char* end) { return TakeUnsigned(p, end); });
}

void VokTextReader::ReadInts(std::vector<int>& values, long long count) {
    ReadArray(values, count, [](const char*& p, const char* end) { return TakeInt(p, end); });
}

void VokTextReader::ReadBools(std::vector<bool>& values, long long count) {
    std::vector<unsigned char> words;
    ReadArray(words, count, [](const char*& p, const char* end) { return TakeBool(p, end); });
    values.assign(words.begin(), words.end());
}

void VokTextReader::ReadIndexedFloats(std::vector<std::pair<int, float>>& pairs) {
    const auto wanted = static_cast<std::size_t>(std::max(ReadInt(), 0));
    const char* const end = buffer + length;
    PrepareRoom(pairs, std::min(wanted, (static_cast<std::size_t>(end - cursor) + 3) / 4));
    const char* p = cursor;
    while (pairs.size() < wanted && (p = SkipBlanks(p, end)) != end) {
        const int index = TakeInt(p, end);
        p = SkipBlanks(p, end);
        pairs.emplace_back(index, p == end ? 0.0f : TakeFloat(p, end));
    }
    cursor = p;
    CheckCursor();
    if (pairs.size() == wanted) return;
    ClaimPadding(2 * (wanted - pairs.size()));
    pairs.reserve(wanted);
    pairs.resize(wanted);
}

std::string VokTextReader::ReadString() {
    const char* const end = buffer + length;
    const std::string_view rest(cursor, static_cast<std::size_t>(end - cursor));
    cursor = end;
    CheckCursor();
    return VokEncoding::HasHighBytes(rest) ? VokEncoding::ToLatin1(rest) : std::string(rest);
}

void VokTextReader::SkipValues(long long count) {
    const auto wanted = static_cast<std::size_t>(std::max(count, 0LL));
    const std::size_t found =
        wordCount != nullptr ? std::min(wordCount->Get(), wanted) : SkipWords(wanted);
    if (found != wanted) ClaimPadding(wanted - found);
}

std::size_t VokTextReader::SkipWords(std::size_t count) {
    return VokNumberText::SkipWords(cursor, buffer + length, count);
}

void VokTextReader::ClaimPadding(std::size_t count) {
    const std::size_t limit = VokLimits::kFreePaddedValues + documentBytes;
    if (paddedValues > limit || count > limit - paddedValues)
        ThrowVokException("Counts in the document announce values that its text does not hold: " +
                          std::to_string(count) + " more after " + std::to_string(paddedValues) +
                          ", the limit is " + std::to_string(limit) + ".");
    paddedValues += count;
}
