#include "Update/OldDocument.h"

#include "Support/CostRatio.h"
#include "VokLib/Update/UpdateTools.h"

#include <VokLib/Base/VokException.h>
#include <VokLib/Base/VokLimits.h>

using namespace UpdateTools;

namespace {

constexpr const char* kHead = "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n";

class OldDocumentTest : public UpdateTest {
  protected:
    static OldDocument ParseText(const std::string& text) {
        return ParseOldDocument(text.data(), text.size());
    }
    static std::string Written(const std::string& text) {
        std::ostringstream out;
        WritePlain(out, *ParseText(text).tree);
        return out.str().substr(std::string(kHead).size());
    }
    static std::string Refusal(const std::string& text) {
        return ThrownText([&] { ParseText(text); });
    }
    static std::string ParseError(int code, int line, int column) {
        return "Failed to parse out of date .qeli document. Libxml2 parse error: " +
               std::to_string(code) + " Line " + std::to_string(line) + " Column " +
               std::to_string(column);
    }
    static std::string Repeated(const std::string& text, std::size_t count) {
        std::string all;
        all.reserve(text.size() * count);
        for (std::size_t i = 0; i < count; ++i) all += text;
        return all;
    }
    static std::string Nested(std::size_t depth, const std::string& inside = "") {
        return Repeated("<n>", depth) + inside + Repeated("</n>", depth);
    }
};

constexpr const char* kTooMuch =
    "Document limit exceeded: more text in entities and default attributes than 4194304 bytes and "
    "twice the size of the document Line ";

TEST_F(OldDocumentTest, AMalformedDocumentTellsLineAndColumn) {
    EXPECT_EQ(Refusal("<a>\n <b>\n</a>"), ParseError(76, 3, 5));
    EXPECT_EQ(Refusal("<a>\n <b c=1/></a>"), ParseError(73, 2, 7));
    EXPECT_EQ(Refusal("<a>\n &none;</a>"), ParseError(26, 2, 8));
    EXPECT_EQ(Refusal("<a>\n <b/>"), ParseError(5, 2, 6));
    EXPECT_EQ(Refusal(""), ParseError(5, 1, 1));
    EXPECT_THROW(ParseText("<a>"), VokException);
}

TEST_F(OldDocumentTest, AFaultBehindTheFirstPieceTellsItsOwnPlace) {
    const std::string lines = Repeated("<b>0123456789</b>\n", 100000);
    ASSERT_GT(lines.size(), 1u << 20);
    EXPECT_EQ(Refusal("<a>\n" + lines + "</c></a>"), ParseError(76, 100002, 5));
}

TEST_F(OldDocumentTest, AFaultOfNamespacesAloneIsNone) {
    EXPECT_EQ(Written("<a><b p:c=\"1\"/></a>"), "<a><b p:c=\"1\"/></a>");
    EXPECT_EQ(Written("<a><b c:d:e=\"1\"/></a>"), "<a><b c:d:e=\"1\"/></a>");
    EXPECT_EQ(Refusal("<a>\n<p:b/>\n</c>"), ParseError(76, 3, 5));
}

TEST_F(OldDocumentTest, NoBytesAreNoDocument) {
    EXPECT_EQ(ThrownText([] { ParseOldDocument(nullptr, 0); }), ParseError(5, 1, 1));
}

TEST_F(OldDocumentTest, TextsAreKeptAndCommentsAreNot) {
    EXPECT_EQ(Written("<a> 1<!-- c -->2<?p i?>3<![CDATA[<&]]>4\n</a>"), "<a> 123&lt;&amp;4\n</a>");
}

TEST_F(OldDocumentTest, EncodingsAreTheReaders) {
    const std::string latin1 = "<?xml version='1.0' encoding='ISO-8859-1'?><a b='\xE9'>\xFC</a>";
    EXPECT_EQ(Written(latin1), "<a b=\"\xC3\xA9\">\xC3\xBC</a>");
    EXPECT_EQ(Written("<a>\xC3\xBC</a>"), "<a>\xC3\xBC</a>");
    std::string wide;
    for (const char c : std::string("\xFF\xFE<a>x</a>"))
        wide += (wide.size() < 2 ? std::string(1, c) : std::string{c, '\0'});
    EXPECT_EQ(Written(wide), "<a>x</a>");
    EXPECT_EQ(Refusal(wide + "\n"), "The document ends inside a character.");
}

TEST_F(OldDocumentTest, DepthIsCounted) {
    EXPECT_EQ(ParseText("<a><b><c/></b><d/></a>").depth, 3u);
    EXPECT_EQ(ParseText(Nested(VokLimits::kMaxElementDepth)).depth, VokLimits::kMaxElementDepth);
}

TEST_F(OldDocumentTest, ADeeperTreeIsRefused) {
    EXPECT_EQ(Refusal(Nested(VokLimits::kMaxElementDepth + 1)),
              "Document limit exceeded: more than 10000 nested elements Line 1 Column 30003");
}

TEST_F(OldDocumentTest, TheReadersLimitsHold) {
    std::string attributes;
    for (int i = 0; i <= 256; ++i) attributes += " a" + std::to_string(i) + "='1'";
    EXPECT_EQ(Refusal("<a" + attributes + "/>")
                  .rfind("Document limit exceeded: more than 256 "
                         "attributes on one element Line 1",
                         0),
              0u);
    EXPECT_EQ(Refusal("<a><!--" + std::string(5u << 20, 'x') + "--></a>")
                  .rfind("Document limit exceeded: more than 4194304 bytes in one tag", 0),
              0u);
}

TEST_F(OldDocumentTest, ManyNamesAreRefused) {
    std::string names;
    for (int i = 0; i < 100100; ++i) names += "<n" + std::to_string(i) + "/>";
    EXPECT_EQ(Refusal("<a>" + names + "</a>")
                  .rfind("Document limit exceeded: more than 100000 different names Line 1", 0),
              0u);
}

TEST_F(OldDocumentTest, NamesAreReadUpToTheLimit) {
    constexpr std::size_t kOfTheParser = 3;  // "xml", "xmlns" and the address of the first
    const auto withNames = [](std::size_t count) {
        std::string names;
        for (std::size_t i = 1; i < count; ++i) names += "<n" + std::to_string(i) + "/>";
        return "<a>" + names + "</a>";
    };
    EXPECT_EQ(Refusal(withNames(VokLimits::kMaxOldNames - kOfTheParser)), "");
    const std::string last = withNames(VokLimits::kMaxOldNames - kOfTheParser + 1);
    EXPECT_EQ(Refusal(last),
              "Document limit exceeded: more than 100000 different names Line 1 Column " +
                  std::to_string(last.size() - 5));
}

TEST_F(OldDocumentTest, ADocumentOfMoreBytesThanItsTreeMayHoldIsRefusedUnread) {
    EXPECT_EQ(
        ThrownText([] { ParseOldDocument(nullptr, (std::size_t{1} << 30) + 1); }),
        "Document limit exceeded: more than 1073741824 bytes in a document of an old version");
    // At the limit it is read: here up to the fault in its first piece.
    const std::string piece(1u << 20, 'x');
    EXPECT_EQ(ThrownText([&] { ParseOldDocument(piece.data(), std::size_t{1} << 30); }),
              ParseError(4, 1, 1));
}

TEST_F(OldDocumentTest, MoreElementsInOneThanTheStagesCanLookAtAreRefused) {
    const std::string most = "<a>" + Repeated("<b/>", 5000000);
    EXPECT_EQ(Refusal(most + "</c>"), ParseError(76, 1, static_cast<int>(most.size()) + 5));
    EXPECT_EQ(Refusal(most + "<b/></a>"),
              "Document limit exceeded: more than 5000000 elements in one Line 1 Column " +
                  std::to_string(most.size() + 3));
}

TEST_F(OldDocumentTest, EntitiesAreReplaced) {
    EXPECT_EQ(Written("<!DOCTYPE a [<!ENTITY e 'x&f;'><!ENTITY f 'y'><!ENTITY g '&#38;#60;1'>]>"
                      "<a c='&lt;&g;'>&e;&e;&amp;</a>"),
              "<a c=\"<<1\">xyxy&amp;</a>");
}

TEST_F(OldDocumentTest, TextsAroundEntitiesStayInOrderAndInOnePiece) {
    const std::string type =
        "<!DOCTYPE a [<!ENTITY t 'T'><!ENTITY n ''>"
        "<!ENTITY w '&t;&n;W'>]>";
    const auto written = [&](const std::string& inside) {
        return Written(type + "<a>" + inside + "</a>");
    };
    EXPECT_EQ(written("1&t;2&t;&t;3"), "<a>1T2TT3</a>");
    EXPECT_EQ(written("&t;"), "<a>T</a>");
    EXPECT_EQ(written("&n;"), "<a/>");
    EXPECT_EQ(written("1&n;2&n;"), "<a>12</a>");
    EXPECT_EQ(written("1<b/>&n;2<b/>&n;<b/>&t;3&n;4"), "<a>1<b/>2<b/><b/>T34</a>");
    EXPECT_EQ(written("1&t;<d e='&t;'/>2&w;<d e='&w;'>3&t;</d>4&t;"),
              "<a>1T<d e=\"T\"/>2TW<d e=\"TW\">3T</d>4T</a>");
    EXPECT_EQ(written("1&t;&#50;&amp;<![CDATA[3]]><!-- c -->4&t;"), "<a>1T2&amp;34T</a>");

    const OldDocument document =
        ParseText(type + "<a>" + Repeated("1&t;2&n;", 50000) + std::string(2000000, ' ') + "</a>");
    const xmlNode* const text = xmlDocGetRootElement(document.tree.get())->children;
    EXPECT_EQ(FromXml(text->content), Repeated("1T2", 50000) + std::string(2000000, ' '));
    EXPECT_EQ(text->next, nullptr);
}

TEST_F(OldDocumentTest, ATextOfManyEntitiesTakesTimeInProportionToIt) {
    if (!kHasProcessorTime) GTEST_SKIP() << "other processes would have a say";
    const double cost = CostOfFourTimes(15000, [&](int count) {
        ParseText("<!DOCTYPE a [<!ENTITY t '0123456789'>]><a>" +
                  Repeated("&t;", static_cast<std::size_t>(count)) + "</a>");
    });
    EXPECT_LT(cost, kMostOfFourTimes);
}

TEST_F(OldDocumentTest, AmpersandsInEntitiesTakeTimeInProportionToTheirNumber) {
    if (!kHasProcessorTime) GTEST_SKIP() << "other processes would have a say";
    const double cost = CostOfFourTimes(5000, [&](int count) {
        ParseText("<!DOCTYPE a [<!ENTITY t '<!--" +
                  Repeated("&#38;", static_cast<std::size_t>(count)) + ";-->'>]><a>" +
                  Repeated("&t;", 100) + "</a>");
    });
    EXPECT_LT(cost, kMostOfFourTimes);
}

TEST_F(OldDocumentTest, EntityBombsInTextEndInAnError) {
    std::string bomb = "<!ENTITY e0 'lollollollol'>";
    for (int i = 1; i < 12; ++i) {
        const std::string inner = "&e" + std::to_string(i - 1) + ";";
        bomb += "<!ENTITY e" + std::to_string(i) + " '" + Repeated(inner, 10) + "'>";
    }
    const std::string type = "<!DOCTYPE a [" + bomb + "]>";
    EXPECT_EQ(Refusal(type + "<a>&e11;</a>").rfind(kTooMuch, 0), 0u);
    EXPECT_EQ(Refusal(type + "<a b='&e11;'/>").rfind(kTooMuch, 0), 0u);
}

TEST_F(OldDocumentTest, ReferencesBehindAnAmpersandInACommentAreMeasured) {
    std::string bomb = "<!ENTITY e0 'lollollollol'>";
    for (int i = 1; i < 7; ++i) {
        const std::string inner = "<!--&#38;-->&e" + std::to_string(i - 1) + ";";
        bomb += "<!ENTITY e" + std::to_string(i) + " '" + Repeated(inner, 10) + "'>";
    }
    EXPECT_EQ(Refusal("<!DOCTYPE a [" + bomb + "]><a>&e6;</a>").rfind(kTooMuch, 0), 0u);
}

TEST_F(OldDocumentTest, OneLongEntityUsedOftenEndsInAnError) {
    const std::string type = "<!DOCTYPE a [<!ENTITY e '" + std::string(100000, 'x') + "'>]>";
    EXPECT_EQ(Refusal(type + "<a>" + Repeated("&e;", 30000) + "</a>").rfind(kTooMuch, 0), 0u);
    EXPECT_EQ(Refusal(type + "<a b='" + Repeated("&e;", 30000) + "'/>").rfind(kTooMuch, 0), 0u);
    EXPECT_EQ(Refusal(type + "<a>" + Repeated("&e;", 10) + "</a>"), "");
}

TEST_F(OldDocumentTest, EntitiesAreMeasuredByTheWholeDocument) {
    const std::string type = "<!DOCTYPE a [<!ENTITY e '" + std::string(100000, 'x') + "'>]>";
    const std::string uses = Repeated("&e;", 60);
    const std::string text(900000, '1');
    EXPECT_EQ(Refusal(type + "<a>" + uses + text + "</a>"), "");
    EXPECT_EQ(Refusal(type + "<a>" + text + uses + "</a>"), "");
    EXPECT_EQ(Refusal(type + "<a>" + uses + "</a>").rfind(kTooMuch, 0), 0u);
}

TEST_F(OldDocumentTest, ParameterEntityBombsEndInAnError) {
    std::string bomb = "<!ENTITY % p0 '<!-- -->'>";
    for (int i = 1; i < 12; ++i) {
        const std::string inner = "&#37;p" + std::to_string(i - 1) + ";";
        bomb += "<!ENTITY % p" + std::to_string(i) + " '" + Repeated(inner, 10) + "'>";
    }
    EXPECT_EQ(Refusal("<!DOCTYPE a [" + bomb + "%p11;]><a/>").rfind(kTooMuch, 0), 0u);
}

TEST_F(OldDocumentTest, AnEntityThatHoldsItselfIsRefused) {
    EXPECT_NE(Refusal("<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f '&e;'>]><a>&e;</a>"), "");
    EXPECT_NE(Refusal("<!DOCTYPE a [<!ENTITY e '&e;'>]><a b='&e;'/>"), "");
}

TEST_F(OldDocumentTest, DefaultAttributesThatBlowUpEndInAnError) {
    const std::string type =
        "<!DOCTYPE a [<!ATTLIST b c CDATA '" + std::string(100000, 'x') + "'>]>";
    EXPECT_EQ(Refusal(type + "<a>" + Repeated("<b/>", 10000) + "</a>").rfind(kTooMuch, 0), 0u);
    const std::string spaces =
        "<!DOCTYPE a [<!ATTLIST b xmlns CDATA '" + std::string(100000, 'x') + "'>]>";
    EXPECT_EQ(Refusal(spaces + "<a>" + Repeated("<b/>", 10000) + "</a>").rfind(kTooMuch, 0), 0u);
}

TEST_F(OldDocumentTest, OfDefaultAttributesNamespacesAloneAreApplied) {
    EXPECT_EQ(Written("<!DOCTYPE a [<!ATTLIST b c CDATA 'x'>]><a><b/><b c='y'/></a>"),
              "<a><b/><b c=\"y\"/></a>");
    EXPECT_EQ(Written("<!DOCTYPE a [<!ATTLIST b xmlns CDATA 'u'>]><a><b/></a>"),
              "<a><b xmlns=\"u\"/></a>");
}

TEST_F(OldDocumentTest, TheDocumentTypeAddsTextUpToTheLimit) {
    // Each default attribute counts with its value and 64 bytes, others with their values.
    constexpr std::size_t kValue = 100000, kElements = 50, kAdded = kElements * (kValue + 64);
    constexpr std::size_t kSize = (kAdded - VokLimits::kFreeAddedBytes) / 2;
    const auto document = [](const std::string& attribute) {
        std::string text = "<!DOCTYPE a [<!ATTLIST b c CDATA '" + std::string(kValue, 'x') +
                           "'>]><a d='" + attribute + "'>" + Repeated("<b/>", kElements);
        text.append(kSize - text.size() - 4, ' ');
        return text + "</a>";
    };
    ASSERT_EQ(document("1").size(), kSize);
    ASSERT_EQ(kAdded, VokLimits::kFreeAddedBytes + 2 * kSize);
    EXPECT_EQ(Refusal(document("")), "");
    EXPECT_EQ(Refusal(document("1")).rfind(kTooMuch, 0), 0u);
}

/// Short ones cost as much as long ones: the parser compares each with all before it, at every
/// element.
TEST_F(OldDocumentTest, ShortDefaultAttributesAreCountedToo) {
    const auto type = [](int count, const std::string& name) {
        std::string list = "<!DOCTYPE a [<!ATTLIST b";
        for (int i = 0; i < count; ++i) list += " " + name + std::to_string(i) + " CDATA 'u'";
        return list + ">]>";
    };
    EXPECT_EQ(Refusal(type(256, "c") + "<a><b/></a>"), "");
    EXPECT_EQ(Refusal(type(257, "c") + "<a><b/></a>")
                  .rfind("Document limit exceeded: more than 256 "
                         "attributes on one element Line 1",
                         0),
              0u);
    for (const std::string name : {"c", "xmlns:c"})
        EXPECT_EQ(
            Refusal(type(99, name) + "<a>" + Repeated("<b/>", 1000) + "</a>").rfind(kTooMuch, 0),
            0u);
}

TEST_F(OldDocumentTest, ManyNamespacesAtOnePlaceAreRefused) {
    const auto nested = [](int count) {
        std::string open, close;
        for (int i = 0; i < count; ++i) {
            const std::string number = std::to_string(i);
            open += "<b xmlns:c" + number + "='u' xmlns:d" + number + "='v'>";
            close += "</b>";
        }
        return open + close;
    };
    EXPECT_EQ(Refusal("<a>" + Repeated(nested(50), 20) + "</a>"), "");
    EXPECT_EQ(Refusal("<a xmlns:z='w'>" + nested(50) + "</a>")
                  .rfind("Document limit exceeded: more than 100 namespaces declared at one place "
                         "Line 1 Column ",
                         0),
              0u);
}

constexpr const char* kTooFar =
    "Document limit exceeded: more than 8388608 steps and 4 for each byte of the document to find "
    "the namespaces of elements and attributes Line 1 Column ";

/// Of so many bytes: one namespace is declared on the root, so that each leaf takes two steps for
/// each of the thousand elements around it.
std::string DeepLeaves(const std::string& leaf, std::size_t count, std::size_t size) {
    std::string text = "<a xmlns:p='u'>";
    for (int i = 1; i < 1000; ++i) text += "<n>";
    for (std::size_t i = 0; i < count; ++i) text += leaf;
    for (int i = 1; i < 1000; ++i) text += "</n>";
    EXPECT_LE(text.size() + 4, size);
    text.append(size - 4 - text.size(), ' ');
    return text + "</a>";
}

TEST_F(OldDocumentTest, DeepNamesOfOtherNamespacesAreReadUpToTheLimit) {
    constexpr std::size_t kLeaves = 4400;
    constexpr std::size_t kSize = (kLeaves * 2 * 1000 - VokLimits::kFreeSearches) / 4;
    ASSERT_EQ(VokLimits::kFreeSearches + VokLimits::kSearchesPerByte * kSize, kLeaves * 2 * 1000);
    for (const std::string leaf : {"<p:y/>", "<n p:x='1' p:z='1'/>", "<p:y a='1'/>"}) {
        EXPECT_EQ(Refusal(DeepLeaves(leaf, kLeaves, kSize)), "") << leaf;
        const std::size_t behind = 15 + 999 * 3 + kLeaves * leaf.size() + 1;
        EXPECT_EQ(Refusal(DeepLeaves(leaf, kLeaves, kSize - 1)).rfind(kTooFar, 0), 0u) << leaf;
        EXPECT_EQ(Refusal(DeepLeaves(leaf, kLeaves + 1, kSize)),
                  kTooFar + std::to_string(behind + leaf.size() - 2))
            << leaf;
    }
}

TEST_F(OldDocumentTest, EveryWayToNameAnotherNamespaceCounts) {
    constexpr std::size_t kSize = 300000;
    constexpr std::size_t kMost = VokLimits::kFreeSearches + VokLimits::kSearchesPerByte * kSize;
    // For each of the thousand elements around the leaf.
    const std::pair<const char*, std::size_t> leaves[] = {{"<n p:x='1'/>", 1},
                                                          {"<p:y p:x='1'/>", 3},
                                                          {"<q xmlns='v'/>", 6},
                                                          {"<p:q xmlns:q='v'/>", 6},
                                                          {"<p:y p:x='1' p:z='1'/>", 4}};
    for (const auto& [leaf, steps] : leaves) {
        const std::size_t most = kMost / (1000 * steps);
        EXPECT_EQ(Refusal(DeepLeaves(leaf, most, kSize)), "") << leaf;
        EXPECT_EQ(Refusal(DeepLeaves(leaf, most + 1, kSize)).rfind(kTooFar, 0), 0u) << leaf;
    }
    EXPECT_EQ(Refusal("<a xmlns='w' xmlns:p='u'>" + Nested(1000, Repeated("<q xmlns=''/>", 1100)) +
                      "</a>")
                  .rfind(kTooFar, 0),
              0u);
    // The document's own names and those of XML itself take no search.
    for (const std::string leaf : {"<n y='1'/>", "<n xml:space='preserve'/>", "<n xmlns:q='v'/>"})
        EXPECT_EQ(Refusal(DeepLeaves(leaf, 10000, 300000)), "") << leaf;
    EXPECT_EQ(Refusal("<a xmlns='w'>" + Nested(1000, Repeated("<n/>", 50000)) + "</a>"), "");
}

TEST_F(OldDocumentTest, APrefixIsLookedForBeyondTheElementAroundIt) {
    const std::string many = Repeated("<p:z/>", 10000);
    EXPECT_EQ(Refusal(DeepLeaves("<p:y>" + many + "</p:y>", 1, 100000)).rfind(kTooFar, 0), 0u);
    EXPECT_EQ(
        Refusal(DeepLeaves("<p:y><n xmlns:q='v'><p:y>" + many + "</p:y></n></p:y>", 1, 100000)),
        "");
    EXPECT_EQ(Refusal(DeepLeaves("<p:y><p:y>" + many + "</p:y></p:y>", 1, 100000)), "");
    EXPECT_EQ(Refusal(DeepLeaves("<p:y xmlns:p='v'>" + many + "</p:y>", 1, 100000)), "");
    EXPECT_EQ(
        Refusal(DeepLeaves("<p:y xmlns:q='v'>" + many + "</p:y>", 1, 100000)).rfind(kTooFar, 0),
        0u);
}

TEST_F(OldDocumentTest, ElementsInEntitiesAreRefused) {
    const auto document = [](const std::string& content) {
        return "<!DOCTYPE a [<!ENTITY f '&e;'><!ENTITY e '" + content +
               "'>]><a xmlns='w' xmlns:p='v'><n>&f;</n></a>";
    };
    for (const std::string content : {"t<b/>", "<p:b/>", "<b xmlns=\"w\"><c/></b>", "<b>"}) {
        const std::string text = document(content);
        EXPECT_EQ(Refusal(text),
                  "Failed to parse out of date .qeli document. An entity holds the element \"b\"; "
                  "texts alone are read from entities. Line 1 Column " +
                      std::to_string(text.find("&f;") + 4));
    }
    EXPECT_EQ(Refusal(document("t<!-- <b/> --><![CDATA[<b/>]]><?b?>")), "");
}

TEST_F(OldDocumentTest, ExternalFilesAreNotRead) {
    const std::string words = "external files are not read.";
    for (const std::string type :
         {"<!DOCTYPE a SYSTEM 'a.dtd'>", "<!DOCTYPE a [<!ENTITY e SYSTEM 'file:///etc/passwd'>]>",
          "<!DOCTYPE a [<!ENTITY % e SYSTEM 'http://127.0.0.1:9/x'>%e;]>"})
        EXPECT_NE(Refusal(type + "<a>&e;</a>").find(words), std::string::npos) << type;
    EXPECT_EQ(Refusal("<!DOCTYPE a [<!ENTITY e SYSTEM 'x'>]><a>&e;</a>"),
              "Failed to parse out of date .qeli document. The entity \"e\" is an external file; "
              "external files are not read.");
    EXPECT_EQ(Refusal("<!DOCTYPE a SYSTEM 'a.dtd'><a/>"),
              "Failed to parse out of date .qeli document. Its document type names an external "
              "file; external files are not read.");
}

TEST_F(OldDocumentTest, AnEntityThatMightBeDeclaredElsewhereIsRefused) {
    EXPECT_NE(Refusal("<!DOCTYPE a [<!ENTITY % p ''>%p;]><a>&e;</a>"), "");
    EXPECT_NE(Refusal("<!DOCTYPE a [<!ENTITY % p ''>%p;]><a b='&e;'/>"), "");
}

TEST_F(OldDocumentTest, OneTextOf50MegabytesIsParsed) {
    std::string text = "<a>";
    while (text.size() < 50000000) text += "1.0 2.5 -3.25e-2 ";
    const std::size_t size = text.size() - 3;
    const OldDocument document = ParseText(text + "</a>");
    const xmlNode* const root = xmlDocGetRootElement(document.tree.get());
    EXPECT_EQ(FromXml(root->children->content).size(), size);
    EXPECT_EQ(root->children->next, nullptr);
}

}  // namespace
