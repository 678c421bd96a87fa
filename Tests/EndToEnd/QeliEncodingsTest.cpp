#include "EndToEnd/ProgramRun.h"

#include <gtest/gtest.h>

#include <string>

#include "Support/ThisSystem.h"

namespace {

/// A joint whose name is `bytes`, in a document that says that they are in `encoding`.
std::string NamedJoint(const std::string& encoding, const std::string& bytes) {
    return "<?xml version=\"1.0\" encoding=\"" + encoding +
           "\"?>\n<QEL xmlns=\"http://qel.example/ns/qeli/1_28_1/qeli\" "
           "filenameform=\"qelirelative\">\n<scene><joint name=\"" +
           bytes + "\"/></scene>\n</QEL>\n";
}

constexpr const char* kSummer = "\xC3\xA9t\xC3\xA9";  // as qeli prints it

class QeliEncodings : public testing::Test {
  protected:
    /// What qeli shows of such a document, or its message.
    std::string Tree(const std::string& encoding, const std::string& bytes) const {
        folder.WriteFile("a.qeli", NamedJoint(encoding, bytes));
        const ProgramResult run = folder.Run("qeli", {"tree", "a.qeli"});
        return run.output + run.errors;
    }

    RunFolder folder;
};

TEST_F(QeliEncodings, NamesInEveryEncodingOfTheSystemAreThoseOfIso8859) {
    const std::string expected = Tree("ISO-8859-1", "\xE9t\xE9");
    EXPECT_NE(expected.find(kSummer), std::string::npos) << expected;
    EXPECT_EQ(Tree("UTF-8", "\xC3\xA9t\xC3\xA9"), expected);
    EXPECT_EQ(Tree("ISO-8859-15", "\xE9t\xE9"), expected);
    if (kIsWindows) {
        // The parser stands on no converters of the system there.
        EXPECT_EQ(Tree("windows-1252", "\xE9t\xE9"),
                  "a.qeli:1:44: error: Libxml2 parse error: Line 1 Column 44\n");
        return;
    }
    EXPECT_EQ(Tree("windows-1252", "\xE9t\xE9"), expected);
    EXPECT_EQ(Tree("cp850", "\x82t\x82"), expected);
    EXPECT_EQ(Tree("macintosh", "\x8Et\x8E"), expected);
}

TEST_F(QeliEncodings, AnEncodingThatOnlyTheUnicodeLibraryKnowsIsReadWhereTheParserHasOne) {
    const std::string read = Tree("euc-jp-2007", "\x8F\xAB\xB1t\x8F\xAB\xB1");
    if (RIGBAKE_OWN_PARSER) {
        EXPECT_EQ(read, Tree("ISO-8859-1", "\xE9t\xE9"));
    } else if (read.find(kSummer) == std::string::npos) {
        EXPECT_NE(read.find("a.qeli:1:43: error: Libxml2 parse error: Line 1 Column 43"),
                  std::string::npos)
            << read;
    }
}

TEST_F(QeliEncodings, AnEncodingThatNobodyKnowsIsRefusedAtItsDeclaration) {
    for (const char* encoding : {"cp437-x", "latin-unheard", "iso-8859-99"}) {
        folder.WriteFile("a.qeli", NamedJoint(encoding, "a"));
        const ProgramResult run = folder.Run("qeli", {"check", "a.qeli"});
        EXPECT_EQ(run.status, 1) << encoding;
        EXPECT_NE(run.errors.find("a.qeli:1:"), std::string::npos) << run.errors;
        EXPECT_NE(run.errors.find(": error: Libxml2 parse error: Line 1 Column "),
                  std::string::npos)
            << run.errors;
    }
}

}  // namespace
