#include <VokLib/Text/VokNumberText.h>
#include <VokLib/Text/VokTextReader.h>

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

std::vector<int> ReadInts(std::string_view text, long long count) {
    VokTextReader reader;
    reader.AppendText(text.data(), text.size());
    reader.RewindText();
    std::vector<int> values;
    reader.ReadInts(values, count);
    return values;
}

/// Every token reads in a list as it does by itself.
void ExpectAsScanned(const std::string& token) {
    const int scanned = VokNumberText::ScanInt(token);
    EXPECT_EQ(ReadInts(token + " 7 " + token, 3), (std::vector<int>{scanned, 7, scanned}))
        << '"' << token << '"';
}

TEST(IntRead, EveryTokenReadsAsTheScannerDoes) {
    for (const char* token : {"0",
                              "-0",
                              "+5",
                              "-5",
                              "+-5",
                              "--5",
                              "-",
                              "+",
                              "x",
                              "12x3",
                              "1.9",
                              "1e3",
                              "007",
                              "0x10",
                              "\v5",
                              "\f-6",
                              "\v",
                              "2147483647",
                              "2147483648",
                              "-2147483648",
                              "-2147483649",
                              "4294967295",
                              "4294967296",
                              "999999999999999999",
                              "-999999999999999999",
                              "1000000000000000000",
                              "9223372036854775807",
                              "9223372036854775808",
                              "-9223372036854775808",
                              "-9223372036854775809",
                              "18446744073709551617",
                              "0000000000000000000000000000012",
                              "99999999999999999999999999999999",
                              "\xE4"})
        ExpectAsScanned(token);
}

TEST(IntRead, RandomTokensReadAsTheScannerDoes) {
    constexpr std::string_view kCharacters = "0123456789012345678901234567890123456789-+.x\v";
    std::mt19937 random(7);
    for (int i = 0; i < 20000; ++i) {
        std::string token;
        const std::size_t length = 1 + random() % 24;
        while (token.size() < length) token += kCharacters[random() % kCharacters.size()];
        ExpectAsScanned(token);
    }
}

TEST(IntRead, EveryBlankPartsNumbers) {
    EXPECT_EQ(ReadInts("\n1\t-2\r\n3  4", 5), (std::vector<int>{1, -2, 3, 4, 0}));
    EXPECT_EQ(ReadInts("", 0), std::vector<int>{});
}

TEST(IntRead, OfAListOfBoolsTheLastAloneCanBeTrue) {
    constexpr std::string_view kText = "true 1 0 true";
    VokTextReader reader;
    reader.AppendText(kText.data(), kText.size());
    reader.RewindText();
    std::vector<bool> values;
    reader.ReadBools(values, 4);
    EXPECT_EQ(values, (std::vector<bool>{false, false, false, true}));
}

}  // namespace
