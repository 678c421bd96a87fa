#include "Document/DocumentEncoding.h"
#include "VokLib/Document/ParseTools.h"
#include "VokLib/Document/ParserComparison.h"

#include <string>

using namespace ParseTools;

namespace {

/// As UTF-16, of which a byte order mark comes first.
std::string Wide(const std::string& ascii, bool littleEndian) {
    std::string text = littleEndian ? "\xFF\xFE" : "\xFE\xFF";
    for (const char c : ascii) {
        if (littleEndian) text += c;
        text += '\0';
        if (!littleEndian) text += c;
    }
    return text;
}

TEST(DocumentEncoding, DeclarationIsReadWithItsBlanksAndQuotes) {
    EXPECT_TRUE(DetectEncoding("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a/>").isLatin1);
    EXPECT_TRUE(DetectEncoding("<?xml\n version = '1' encoding = 'iso-8859-1' standalone='no' ?>")
                    .isLatin1);
    EXPECT_FALSE(DetectEncoding("<?xml version='1.0' encoding='ISO-8859-15'?>").isLatin1);
    EXPECT_FALSE(DetectEncoding("<?xml version='1.0' encoding='ISO-8859-1'").isLatin1);
    EXPECT_FALSE(DetectEncoding("<?xml version='1.0' encoding='ISO-8859-1").isLatin1);
    EXPECT_FALSE(DetectEncoding("<?xml encoding='ISO-8859-1' version='1.0'?>").isLatin1);
    EXPECT_FALSE(DetectEncoding(" <?xml version='1.0' encoding='ISO-8859-1'?>").isLatin1);
    EXPECT_EQ(DetectEncoding(Wide("<?xml version='1.0' encoding='UTF-16'?>", true)).declared,
              "UTF-16");
    EXPECT_EQ(DetectEncoding(Wide("<?xml version='1.0' encoding='UTF-16'?>", false)).unit, 2u);
    EXPECT_EQ(
        DetectEncoding(Wide("<?xml version='1.0' encoding='UTF-16'?>..", true)).declarationEnd,
        2u + 39u * 2u);
}

TEST(DocumentEncoding, OneHighByteAnywhereIsFound) {
    std::string text(200, 'x');
    EXPECT_TRUE(IsAscii(text.data(), text.size()));
    for (std::size_t i = 0; i < text.size(); ++i) {
        text[i] = '\x80';
        EXPECT_FALSE(IsAscii(text.data(), text.size())) << i;
        EXPECT_TRUE(IsAscii(text.data(), i)) << i;
        EXPECT_TRUE(IsAscii(text.data() + i + 1, text.size() - i - 1)) << i;
        text[i] = 'x';
    }
    EXPECT_TRUE(IsAscii(nullptr, 0));
}

}  // namespace
