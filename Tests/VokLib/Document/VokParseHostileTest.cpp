#include "VokLib/Document/ParseTools.h"

#include <libxml/parser.h>

#include <string>

using namespace ParseTools;

namespace {

class ParseHostile : public ReaderTest {
  protected:
    ParseHostile() {
        previous = xmlGetExternalEntityLoader();
        opened.clear();
        xmlSetExternalEntityLoader(
            [](const char* address, const char*, xmlParserCtxtPtr) -> xmlParserInputPtr {
                opened += address != nullptr ? address : "?";
                return nullptr;
            });
    }
    ~ParseHostile() override {
        EXPECT_EQ(opened, "");
        xmlSetExternalEntityLoader(previous);
    }

    /// A current document with `doctype` in front of its root.
    static std::string WithDoctype(std::string_view doctype, std::string_view contents) {
        std::string document = Document(contents);
        return document.insert(document.find("<QEL"), doctype);
    }

    static inline std::string opened;
    xmlExternalEntityLoader previous = nullptr;
};

TEST_F(ParseHostile, UndeclaredEntityIsAFault) {
    EXPECT_EQ(LoadText(Document("<scene>&gone;</scene>"), "a"),
              "Libxml2 parse error: 26 in \"a\" Line 3 Column 14");
}

TEST_F(ParseHostile, EntitiesOfADocumentAreNotExpanded) {
    const std::string text = "Libxml2 parse error: 26 in \"a\" Line 2 Column ";
    EXPECT_EQ(
        LoadText(WithDoctype("<!DOCTYPE QEL [<!ENTITY e 'x'>]>\n", "<scene>&e;</scene>"), "a"),
        "Libxml2 parse error: 26 in \"a\" Line 4 Column 11");
    EXPECT_EQ(LoadText(WithDoctype("<!DOCTYPE QEL [<!ENTITY e 'x'>]>\n",
                                   "<scene><node name='&e;'/></scene>"),
                       "a"),
              "Libxml2 parse error: 26 in \"a\" Line 4 Column 26");
}

TEST_F(ParseHostile, NestedEntitiesDoNotMultiply) {
    std::string doctype = "<!DOCTYPE QEL [<!ENTITY e0 'lol'>";
    for (int i = 1; i < 20; ++i) {
        const std::string inner = "&e" + std::to_string(i - 1) + ";";
        doctype += "<!ENTITY e" + std::to_string(i) + " '" + inner + inner + inner + inner + inner +
                   inner + "'>";
    }
    EXPECT_EQ(LoadText(WithDoctype(doctype + "]>\n", "<scene>&e19;</scene>"), "a"),
              "Libxml2 parse error: 26 in \"a\" Line 4 Column 13");
}

TEST_F(ParseHostile, OneLargeEntityUsedOftenDoesNotMultiply) {
    std::string uses;
    for (int i = 0; i < 30000; ++i) uses += "&e;";
    const std::string doctype = "<!DOCTYPE QEL [<!ENTITY e '" + std::string(100000, 'x') + "'>]>\n";
    EXPECT_EQ(LoadText(WithDoctype(doctype, uses), "a"),
              "Libxml2 parse error: 26 in \"a\" Line 4 Column 4");
}

TEST_F(ParseHostile, ParameterEntitiesAreNotRead) {
    for (const char* what :
         {"SYSTEM 'file:///etc/passwd'", "SYSTEM 'http://127.0.0.1/x'", "'<!ENTITY e \"x\">'"}) {
        const std::string doctype =
            std::string("<!DOCTYPE QEL [<!ENTITY % p ") + what + "> %p; ]>\n";
        EXPECT_EQ(LoadText(WithDoctype(doctype, "<scene>&e;</scene>"), "a"),
                  "Libxml2 parse error: Line 2 Column " + std::to_string(doctype.size()))
            << what;
    }
}

TEST_F(ParseHostile, ExternalEntitiesAreNotRead) {
    for (const char* address :
         {"file:///etc/passwd", "/etc/passwd", "http://127.0.0.1/x", "ftp://127.0.0.1/x"}) {
        const std::string doctype =
            std::string("<!DOCTYPE QEL [<!ENTITY e SYSTEM '") + address + "'>]>\n";
        EXPECT_EQ(LoadText(WithDoctype(doctype, "<scene>&e;</scene>"), "a"),
                  "Libxml2 parse error: 26 in \"a\" Line 4 Column 11")
            << address;
    }
}

TEST_F(ParseHostile, ExternalDocumentTypesAreRefused) {
    for (const char* doctype :
         {"<!DOCTYPE QEL SYSTEM 'file:///etc/passwd'>\n",
          "<!DOCTYPE QEL SYSTEM 'http://127.0.0.1/x.dtd'>\n",
          "<!DOCTYPE QEL PUBLIC '-//X' 'http://127.0.0.1/x.dtd' [<!ENTITY e 'x'>]>\n"}) {
        EXPECT_EQ(LoadText(WithDoctype(doctype, "<scene>&e;</scene>"), "a"),
                  "The document type of \"a\" names an external file; external files are not read.")
            << doctype;
    }
}

TEST_F(ParseHostile, DocumentTypeOfItsOwnIsAllowed) {
    EXPECT_EQ(LoadText(WithDoctype("<!DOCTYPE QEL [<!ELEMENT QEL ANY>]>\n", "<scene/>")), "");
}

TEST_F(ParseHostile, DefaultAttributesOfADocumentAreNotApplied) {
    const char* const doctype = "<!DOCTYPE QEL [<!ATTLIST node name CDATA 'n'>]>\n";
    EXPECT_EQ(LoadText(WithDoctype(doctype, "<scene><node name='a'/></scene>")), "");
    EXPECT_EQ(LoadText(WithDoctype(doctype, "<scene><node/></scene>")),
              "Missing attribute in parse");
}

TEST_F(ParseHostile, BinaryBytesAreAFault) {
    std::string bytes;
    for (int i = 0; i < 4096; ++i) bytes += static_cast<char>(i * 37 % 256);
    EXPECT_EQ(LoadText(bytes), "Libxml2 parse error: Line 1 Column 1");
    EXPECT_EQ(LoadText(std::string(100000, '\0')), "Libxml2 parse error: Line 1 Column 1");
    EXPECT_NE(LoadText(Document("<scene>") + bytes), "");
}

TEST_F(ParseHostile, ClaimedCountsTakeNoMemory) {
    const std::string text =
        LoadText(Document("<scene><node name='n'><customData><attribute name='a' type='floatarray' "
                          "count='2000000000'>1 2 3</attribute>"
                          "</customData></node></scene>"));
    EXPECT_NE(text, "");
}

TEST_F(ParseHostile, NamesWithoutEndAreAFault) {
    EXPECT_NE(LoadText(Document("<" + std::string(3000000, 'n'))), "");
    EXPECT_NE(LoadText(Document("&" + std::string(20000000, 'n'))), "");
    EXPECT_NE(LoadText("<" + std::string(3000000, '<')), "");
}

}  // namespace
