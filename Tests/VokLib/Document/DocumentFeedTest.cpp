#include "Document/DocumentEncoding.h"
#include "VokLib/Document/ParseTools.h"
#include "VokLib/Document/ParserComparison.h"

#include <libxml/parser.h>

#include <string>
#include <vector>

using namespace ParseTools;
using ParserComparison::Feed;
using ParserComparison::ParserAlone;

namespace {

std::string Declared(const std::string& encoding, const std::string& contents) {
    return "<?xml version=\"1.0\" encoding=\"" + encoding + "\"?>\n<a b=\"1\">" + contents +
           "</a>\n";
}

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

const std::vector<std::string>& Samples() {
    static const std::vector<std::string> samples = {
        Declared("ISO-8859-1", "plain 1.5 2.5<b c='x>y'/>\r\n<!-- ' > --> text"),
        Declared("ISO-8859-1",
                 "caf\xE9 <b c='\xFC\xDF>'/>\n\xA0\xFF<![CDATA[\xE9 > ]]>end \x80\x9F"),
        Declared("iso-8859-1", "\xE9"),
        Declared("ISO-LATIN-1", "caf\xE9"),
        Declared("ISO-8859-15", "\xA4 euro"),
        Declared("windows-1252", "\x80 euro"),
        Declared("US-ASCII", "plain"),
        Declared("UTF-8", "\xC3\xA9 and \xE2\x82\xAC <b c='\xC3\xA9'/>"),
        "<a>no declaration \xC3\xA9</a>",
        "\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8'?><a>mark \xC3\xA9</a>",
        "\xEF\xBB\xBF<?xml version='1.0' encoding='ISO-8859-1'?><a>mark \xC3\xA9</a>",
        "<?xml version = '1.0' encoding = 'ISO-8859-1' standalone = 'yes' ?><a>\xE9</a>",
        "<?xml version='1.0'encoding='ISO-8859-1'?><a>\xE9</a>",
        "<?xml encoding='ISO-8859-1'?><a>\xE9</a>",
        "<?xml version='1.0' encoding='ISO-8859-1' more='x'?><a>\xE9</a>",
        "<?xml version='1.7' encoding='ISO-8859-1'?><a>\xE9</a>",
        "<?xml version='1.0' encoding='ISO-8859-1'><a>\xE9</a>",
        Declared("klingon", "x"),
        Declared("UTF-16", "x"),
        Declared("UTF-8", "bad \xE9 byte"),
        Declared("US-ASCII", "bad \xE9 byte"),
        Declared("ISO-8859-1", "control \x01 byte"),
        Declared("ISO-8859-1", std::string("nul \0 byte", 10)),
        Declared("ISO-8859-1", "\xE9\xE9 </b>"),
        Declared("ISO-8859-1", "\xE9<b \xE9=1/>"),
        Declared("ISO-8859-1", "\xE9 & \xE9"),
        Declared("ISO-8859-1", "\xE9 ]]> \xE9"),
        Wide("<?xml version='1.0' encoding='UTF-16'?><a b='x>y'>wide <!-- don't > --><c/></a>",
             true),
        Wide("<?xml version='1.0' encoding='UTF-16'?><a b='x>y'>wide <!-- don't > --><c/></a>",
             false),
        Wide("<a>no declaration</b>", true),
    };
    return samples;
}

TEST(DocumentFeed, GivesTheEventsAndFaultsOfTheParserAlone) {
    for (const std::string& sample : Samples())
        EXPECT_EQ(Feed(sample), ParserAlone(sample)) << sample;
}

TEST(DocumentFeed, GivesThemWhereverTheBorderOfABlockFalls) {
    for (const std::string& sample : Samples()) {
        const ParserComparison::Outcome whole = ParserAlone(sample);
        // A declaration stands in the first block, as the root does.
        const std::size_t first = std::max<std::size_t>(sample.find('>') + 2, 8);
        for (std::size_t cut = first; cut < sample.size(); ++cut) {
            const ParserComparison::Outcome fed = Feed(sample, {cut});
            EXPECT_EQ(fed.events, whole.events) << cut << " " << sample;
            EXPECT_EQ(fed.code, whole.code) << cut << " " << sample;
            if (whole.code == 0) {
                EXPECT_EQ(fed.line, whole.line) << cut << " " << sample;
                EXPECT_EQ(fed.column, whole.column) << cut << " " << sample;
            }
        }
    }
}

TEST(DocumentFeed, GivesThemInLargeDocumentsToo) {
    std::string contents;
    for (int i = 0; i < 12000; ++i) {
        contents += "<b c='" + std::to_string(i) + " > '>1.5 2.5\n";
        if (i % 997 == 0) contents += "<!-- \xE9 ' -->\xFC\xE9";
        contents += "</b>";
    }
    const std::string good = Declared("ISO-8859-1", contents);
    EXPECT_TRUE(Feed(good) == ParserAlone(good));
    const std::string bad = Declared("ISO-8859-1", contents + "\n<c>\xE9</d>");
    EXPECT_TRUE(Feed(bad) == ParserAlone(bad));
    const std::string cut = good.substr(0, good.size() - 12);
    EXPECT_TRUE(Feed(cut) == ParserAlone(cut));
}

/// Numbers in lines, longer than what the feed takes for a short text.
std::string LongText(std::size_t bytes) {
    std::string text;
    while (text.size() < bytes)
        text += text.size() % 13 == 0 ? "\n1.5e-1" : " -2.25" + std::to_string(text.size() % 97);
    return text;
}

TEST(DocumentFeed, GivesThemWithTextsThatGoPastTheParser) {
    const std::string text = LongText(9000);
    const std::string fillers[] = {"",      " ",    "\n",       "\r\n",
                                   "&#49;", "]]",   "<!--x-->", "<![CDATA[1 > 2]]>",
                                   "\xE9",  "<b/>", "<?p q?>"};
    for (const std::string& filler : fillers) {
        const std::string contents = text + filler + text + "<b>" + text + "</b>" + filler + text;
        for (const char* fault : {"", "&", "]]>", "</c>", "<", "\x01", "<b a='<'/>", "&none;"}) {
            const std::string sample = Declared("ISO-8859-1", contents + fault);
            EXPECT_TRUE(Feed(sample) == ParserAlone(sample)) << filler << " " << fault;
            const std::string late = Declared("ISO-8859-1", contents + fault + text);
            EXPECT_TRUE(Feed(late) == ParserAlone(late)) << filler << " " << fault;
        }
    }
    for (const std::string& sample :
         {text, text + "<a/>", "<a/>" + text, "<a/>\n<!--x-->" + text, "<a b='" + text + "'/>",
          Declared("ISO-8859-1", "") + text, Declared("UTF-8", text), Declared("UTF-16", text)})
        EXPECT_TRUE(Feed(sample) == ParserAlone(sample)) << sample.substr(0, 60);
}

TEST(DocumentFeed, GivesThemWithSuchTextsInSeveralBlocks) {
    const std::string text = LongText(9000);
    const std::string sample =
        Declared("ISO-8859-1", text + "<b>" + text + "</b>\n]]" + text + "<c/>");
    const ParserComparison::Outcome whole = ParserAlone(sample);
    for (std::size_t cut = 70; cut < sample.size(); cut += 41) {
        EXPECT_TRUE(Feed(sample, {cut}) == whole) << cut;
        EXPECT_TRUE(Feed(sample, {cut / 2 + 30, cut / 2 + 31, cut}) == whole) << cut;
    }
}

TEST(DocumentFeed, RefusesTheEndOfACDataSectionInATextWhereverTheBorderOfABlockFalls) {
    const std::string contents = std::string(400, 'x') + "]]]>" + LongText(5000);
    const std::string declaration = "<?xml version='1.0' encoding='UTF-16'?>";
    for (const std::string& sample :
         {Declared("ISO-8859-1", contents), Declared("UTF-8", "\xC3\xA9" + contents),
          Wide(declaration + "<a>" + contents + "</a>", true)}) {
        const int code = ParserAlone(sample).code;
        EXPECT_NE(code, 0);
        const std::size_t end = std::min<std::size_t>(sample.size(), 1000);
        for (std::size_t cut = 90; cut < end; ++cut) {
            EXPECT_EQ(Feed(sample, {cut}).code, code) << cut;
            EXPECT_EQ(Feed(sample, {cut, cut + 1, cut + 2, cut + 3}).code, code) << cut;
        }
    }
}

TEST(DocumentFeed, BracketsInATextAreReadWhereverTheBorderOfABlockFalls) {
    const std::string sample =
        Declared("ISO-8859-1", std::string(400, 'x') + "]]]]<b>]</b>]]" + LongText(5000) + "]] >");
    const ParserComparison::Outcome whole = ParserAlone(sample);
    EXPECT_EQ(whole.code, 0);
    for (std::size_t cut = 90; cut < sample.size(); cut += cut == 600 ? 4800 : 1) {
        EXPECT_EQ(Feed(sample, {cut}), whole) << cut;
        EXPECT_EQ(Feed(sample, {cut, cut + 1, cut + 2}), whole) << cut;
        if (cut > sample.size() - 4) break;
    }
}

TEST(DocumentFeed, ReadsATextOfManyMegabytesInOneBlock) {
    // The parser alone gives up after ten.
    const std::string text(12u << 20, 'x');
    const ParserComparison::Outcome fed = Feed("<a>&#49;" + text + "</a>");
    EXPECT_EQ(fed.code, 0);
    EXPECT_TRUE(fed.events == "<a>1" + text + "</a>");
}

TEST(DocumentFeed, CountsNamesToTheSamePlaceWhereverTheBorderOfABlockFalls) {
    std::string instructions;
    std::string attributes;
    for (int i = 0; i < 11000; ++i) {
        instructions += "<?n" + std::to_string(i) + "?>\n";
        if (i < 10100) attributes += " n" + std::to_string(i) + " ID ''";
    }
    const std::string begin = "<?xml version='1.0' encoding='ISO-8859-1'?>\n";
    const std::string fault =
        "Document limit exceeded: more than 10000 different names in \"test\"";
    for (const std::string& sample :
         {begin + instructions + "<a/>", begin + "<a>" + instructions + "</a>",
          begin + "<a/>" + instructions,
          begin + "<!DOCTYPE a [<!ATTLIST a " + attributes + ">]>\n<!-- -->\n<a/>"}) {
        const ParserComparison::Outcome whole = Feed(sample);
        EXPECT_NE(whole.events.find(fault), std::string::npos) << whole;
        for (std::size_t cut = 60; cut < sample.size(); cut += 9973)
            EXPECT_EQ(Feed(sample, {cut}), whole) << cut;
        EXPECT_EQ(Feed(sample, {sample.size() - 12, sample.size() - 4}), whole);
    }
}

TEST(DocumentFeed, ReadsADocumentTypeWhereverTheBorderOfABlockFalls) {
    // The parser alone does not: it takes a quote in half a comment for the beginning of a text.
    const std::string text =
        "<?xml version='1.0'?><!DOCTYPE a [<!-- don't > --><!ELEMENT a (b|c)><!ENTITY e "
        "\"x>]\"><?p x?>]><a>t</a>";
    for (std::size_t cut = 22; cut < text.size(); ++cut) {
        const ParserComparison::Outcome fed = Feed(text, {cut});
        EXPECT_EQ(fed.code, 0) << cut;
        EXPECT_EQ(fed.events, "<a>t</a>") << cut;
    }
}

TEST(DocumentFeed, EncodingsThatHideMarkupAreRefused) {
    if (!xmlHasFeature(XML_WITH_ICONV) && !xmlHasFeature(XML_WITH_ICU))
        GTEST_SKIP() << "the parser has no such encodings here and refuses them itself";
    EXPECT_EQ(Feed(Declared("UTF-7", "x")).events,
              "The encoding \"UTF-7\" of \"test\" is not supported.");
    EXPECT_NE(Feed(Declared("IBM037", "x")).code, 0);
    EXPECT_EQ(Feed(Declared("ISO-2022-JP", "x")).events,
              "The encoding \"ISO-2022-JP\" of \"test\" is not supported.");
    EXPECT_EQ(Feed("\x4C\x6F\xA7\x94\x93").code, -1000);
    EXPECT_EQ(Feed(Wide("<?xml version='1.0' encoding='UTF-7'?><a/>", true)).code, -1000);
}

}  // namespace
