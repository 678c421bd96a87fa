#include "Update/VokUpdateTweak190.h"

#include "VokLib/Update/UpdateTools.h"

using namespace UpdateTools;

namespace {

std::string TextOf190(VokUpdateQelServer& server) {
    const XmlDocument document = server.LoadDocument(Uri("1_9_0/update.xml"));
    std::ostringstream out;
    WritePlain(out, *document);
    return out.str();
}

class VokUpdateTweak190Test : public UpdateTest {};

TEST_F(VokUpdateTweak190Test, TheStepInto190CarriesTheSitesForm) {
    EXPECT_EQ(TextOf190(*server),
              "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n"
              "<QELUpdate><update source=\"http://qel.example/ns/qeli/1_8_2/qeli\"><step><xslt>"
              "http://qel.example/ns/qeli/1_8_2/1_9_0.xslt</xslt><xsltparam><name>"
              "previousFilenameForm</name><value>&apos;qelrootrelative&apos;</value></xsltparam>"
              "</step></update></QELUpdate>");
}

TEST_F(VokUpdateTweak190Test, DocumentsFromBefore190GetTheSitesForm) {
    server.reset();
    VokUpdateTweak190 tweak("absolute");
    for (const char* version : {"1_0_4", "1_8_0", "1_8_2"}) {
        std::ostringstream out;
        Input input("<QEL xmlns='" + VersionNamespace(version) + "'/>");
        tweak.Update(out, input, VersionNamespace(version));
        EXPECT_NE(out.str().find(" filenameform=\"absolute\""), std::string::npos) << version;
    }
}

TEST_F(VokUpdateTweak190Test, ADocumentOf182GetsQelrootrelative) {
    for (const char* version : {"1_0_5", "1_8_2"})
        EXPECT_NE(
            Updated("<QEL xmlns='" + VersionNamespace(version) + "'/>", VersionNamespace(version))
                .find(" filenameform=\"qelrootrelative\""),
            std::string::npos)
            << version;
}

TEST_F(VokUpdateTweak190Test, ADocumentOf190KeepsItsOwnForm) {
    EXPECT_NE(Updated("<QEL xmlns='" + VersionNamespace("1_9_0") + "' filenameform='absolute'/>",
                      VersionNamespace("1_9_0"))
                  .find(" filenameform=\"absolute\""),
              std::string::npos);
}

TEST_F(VokUpdateTweak190Test, AFormThatBreaksTheDocumentIsRefused) {
    server.reset();
    VokUpdateTweak190 tweak("<");
    EXPECT_EQ(ThrownText([&] { TextOf190(tweak); }),
              "Failed to parse xml document \"http://qel.example/ns/qeli/1_9_0/update.xml\" "
              "required by the update process.");
}

TEST_F(VokUpdateTweak190Test, OtherDocumentsComeFromTheTable) {
    const XmlDocument document = server->LoadDocument(Uri("1_10_0/update.xml"));
    EXPECT_NE(document, nullptr);
}

}  // namespace
