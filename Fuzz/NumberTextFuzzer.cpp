// Numbers of documents against plain readers and writers of the same rules: the fast readers by
// the steps of the format and by the C library, the writer by printf's nine digits.

#include <VokLib/Text/VokNumberText.h>

#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace {

[[noreturn]] void Fail(const char* what, const std::string& text) {
    std::fprintf(stderr, "NumberTextFuzzer: %s: \"%s\"\n", what, text.c_str());
    std::abort();
}

bool IsSame(float a, float b) {
    return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0;
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The format's float reader, one step after the other.
float SlowRead(const std::string& text) {
    const char* p = text.c_str();
    const bool negative = *p == '-';
    if (*p == '-' || *p == '+') ++p;
    double value = 0;
    long long exponent = 0;
    long long digits = 0;
    bool isFraction = false;
    for (; IsDigit(*p) || (*p == '.' && !isFraction); ++p) {
        if (*p == '.') {
            isFraction = true;
            continue;
        }
        ++digits;
        if (value < 72057594037927936.0) {
            value = value * 10 + (*p - '0');
            exponent -= isFraction ? 1 : 0;
        } else {
            exponent += isFraction ? 0 : 1;
        }
    }
    if (*p == 'e' || *p == 'E') {
        ++p;
        const bool isDown = *p == '-';
        if (*p == '-' || *p == '+') ++p;
        long long scale = 0;
        for (; IsDigit(*p); ++p)
            if (scale < 2147483647) scale = scale * 10 + (*p - '0');
        if (scale > 2147483647) scale = 2147483647;
        exponent += isDown ? -scale : scale;
    }
    if (exponent + digits < -39) {
        float scanned = 0;
        return std::sscanf(text.c_str(), "%f", &scanned) == 1 ? scanned : 0.0f;
    }
    double power = 1;
    double square = 5;
    for (unsigned long long rest = static_cast<unsigned long long>(std::llabs(exponent)); rest != 0;
         rest /= 2) {
        if (rest % 2 != 0) power *= square;
        square *= square;
    }
    value = exponent < 0 ? value / power : value * power;
    const long long bounded = exponent < -100000 ? -100000 : exponent > 100000 ? 100000 : exponent;
    value = std::ldexp(value, static_cast<int>(bounded));
    return static_cast<float>(negative ? -value : value);
}

std::string LowerCase(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
    return text;
}

/// Where scanf is stricter than strtof: the start of a longer word, "0x" without a digit.
bool IsCutShort(const std::string& text) {
    std::string lower = LowerCase(text);
    lower.erase(0, std::min(lower.find_first_not_of(" \t\n\v\f\r"), lower.size()));
    if (!lower.empty() && (lower[0] == '-' || lower[0] == '+')) lower.erase(0, 1);
    if (lower.starts_with("infi")) return !lower.starts_with("infinity");
    if (!lower.starts_with("0x")) return false;
    const std::size_t digit = lower.size() > 2 && lower[2] == '.' ? 3 : 2;
    return lower.size() <= digit || std::isxdigit(static_cast<unsigned char>(lower[digit])) == 0;
}

void CheckScans(const std::string& text) {
    char* end = nullptr;
    const float wantedFloat = std::strtof(text.c_str(), &end);
    const bool isFloat = end != text.c_str() && !IsCutShort(text);
    float value = 0;
    if (VokNumberText::TryScanFloat(text, value) != isFloat) Fail("a float or none", text);
    if (isFloat && !IsSame(value, wantedFloat)) Fail("another float than strtof's", text);
    if (!isFloat && VokNumberText::ScanFloat(text) != 0) Fail("no float is 0", text);

    const long long wide = std::strtoll(text.c_str(), &end, 10);
    const bool isInt = end != text.c_str();
    int whole = 0;
    if (VokNumberText::TryScanInt(text, whole) != isInt) Fail("an int or none", text);
    const auto wantedInt = static_cast<int>(static_cast<std::uint32_t>(wide));
    if (isInt && whole != wantedInt) Fail("another int than strtoll's", text);
}

void CheckTokens(const std::string& text) {
    std::vector<std::string> wanted;
    std::string word;
    for (const char c : text + ' ') {
        const bool isBlank = c == ' ' || c == '\t' || c == '\n' || c == '\r';
        if (!isBlank) word += c;
        if (!isBlank || word.empty()) continue;
        wanted.push_back(word);
        word.clear();
    }
    std::vector<const char*> begins(wanted.size() + 1);
    std::vector<const char*> ends(wanted.size() + 1);
    const std::size_t found =
        VokNumberText::CutTokens(text.c_str(), begins.size(), begins.data(), ends.data());
    if (found != wanted.size()) Fail("another number of words", text);
    for (std::size_t i = 0; i < found; ++i) {
        if (std::string(begins[i], ends[i]) != wanted[i]) Fail("another word", text);
        if (!IsSame(VokNumberText::ReadFloat(begins[i], ends[i]), SlowRead(wanted[i])))
            Fail("another float than by the steps", wanted[i]);
    }
}

/// The format's text of a number that printf writes with nine digits.
std::string SlowFormat(float value) {
    if (std::isnan(value)) return "NAN";
    const std::string sign = std::signbit(value) ? "-" : "";
    if (std::isinf(value)) return sign + "INF";
    if (value == 0) return sign + "0.0";
    char nine[40];
    std::snprintf(nine, sizeof nine, "%.8e", std::fabs(static_cast<double>(value)));
    const int k = std::atoi(std::strchr(nine, 'e') + 1);
    std::string digits = sign + nine[0] + std::string(nine + 2, 8);
    // A carry through nines at the end leaves none behind, where printf writes zeros.
    char exact[200];
    std::snprintf(exact, sizeof exact, "%.160e", std::fabs(static_cast<double>(value)));
    if (digits.back() == '0' && exact[9] == '9') return "";
    while (static_cast<int>(digits.size()) - 1 > k + 1 && digits.size() > 1 && digits.back() == '0')
        digits.pop_back();
    const int n = static_cast<int>(digits.size());
    const std::string plain = digits.substr(sign.size());
    if (k >= 9 || (k < 0 && k - n <= -9)) {
        const std::string rest = plain.substr(1);
        return sign + plain[0] + "." + (rest.empty() ? "0" : rest) + "e" + std::to_string(k);
    }
    if (k < 0)
        return sign + "0." + std::string(static_cast<std::size_t>(-k - 1), '0') +
               (plain.empty() ? "0" : plain);
    const auto whole = static_cast<std::size_t>(k + 1);
    const std::string rest = plain.size() > whole ? plain.substr(whole) : "";
    return sign + plain.substr(0, whole) + "." + (rest.empty() ? "0" : rest);
}

void CheckFormat(float value) {
    const std::string text = VokNumberText::FormatFloat(value);
    if (text.size() > VokNumberText::kMaxFloatText) Fail("too long", text);
    const std::string wanted = SlowFormat(value);
    if (!wanted.empty() && text != wanted) Fail(("not " + wanted).c_str(), text);
    // Nine digits tell every float.
    if (!IsSame(VokNumberText::ScanFloat(text), value)) Fail("not the same float", text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (std::size_t at = 0; at + sizeof(float) <= size && at < 64; at += sizeof(float)) {
        float value;
        std::memcpy(&value, data + at, sizeof value);
        CheckFormat(value);
    }
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::string text(bytes.substr(0, bytes.find('\0')));
    CheckTokens(text);
    CheckScans(text);
    return 0;
}
