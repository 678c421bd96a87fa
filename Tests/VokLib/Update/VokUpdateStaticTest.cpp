#include "Update/VokUpdateStatic.h"

#include "VokLib/Update/UpdateTools.h"

#include "Update/EmbeddedDocuments.h"

#include <set>

using namespace UpdateTools;

namespace {

class VokUpdateStaticTest : public UpdateTest {
  protected:
    static std::string Missing(const std::string& uri) {
        return "File \"" + uri +
               "\" required by update process is not compiled into VokLib. This probably means "
               "that you are running an old version of a tool on a more recent .qeli file.";
    }
};

TEST_F(VokUpdateStaticTest, TheTableHoldsEveryStylesheetAndUpdateDocumentInOrder) {
    std::set<std::string> expected;
    const std::vector<std::string>& versions = Versions();
    for (std::size_t i = 0; i + 1 < versions.size(); ++i)
        expected.insert(Uri(versions[i] + "/" + versions[i + 1] + ".xslt"));
    for (std::size_t i = 2; i < versions.size(); ++i)
        expected.insert(Uri(versions[i] + "/update.xml"));
    ASSERT_EQ(expected.size(), 59u);

    std::vector<std::string> uris;
    for (std::size_t row = 0; kEmbeddedUris[row] != nullptr; ++row) {
        uris.emplace_back(kEmbeddedUris[row]);
        EXPECT_EQ(std::string(kEmbeddedTexts[row]).rfind("<?xml ", 0), 0u) << uris.back();
    }
    EXPECT_EQ(uris, std::vector<std::string>(expected.begin(), expected.end()));
}

TEST_F(VokUpdateStaticTest, EveryRowLoads) {
    for (std::size_t row = 0; kEmbeddedUris[row] != nullptr; ++row) {
        const std::string uri = kEmbeddedUris[row];
        if (uri.ends_with(".xslt"))
            EXPECT_NE(server->VokUpdateStatic::LoadStylesheet(uri), nullptr) << uri;
        else
            EXPECT_NE(server->VokUpdateStatic::LoadDocument(uri), nullptr) << uri;
    }
}

TEST_F(VokUpdateStaticTest, NoStylesheetNeedsAnotherFile) {
    for (std::size_t row = 0; kEmbeddedUris[row] != nullptr; ++row)
        EXPECT_EQ(std::string(kEmbeddedTexts[row]).find("xsl:include"), std::string::npos)
            << kEmbeddedUris[row];
}

TEST_F(VokUpdateStaticTest, WhatIsNotInTheTableIsNamed) {
    for (const std::string& uri : {Uri("1_0_3/update.xml"), Uri("1_0_4/update.xml"),
                                   Uri("1_28_1/UPDATE.xml"), std::string()}) {
        EXPECT_EQ(ThrownText([&] { server->VokUpdateStatic::LoadDocument(uri); }), Missing(uri));
        EXPECT_EQ(ThrownText([&] { server->VokUpdateStatic::LoadStylesheet(uri); }), Missing(uri));
    }
}

TEST_F(VokUpdateStaticTest, AnUpdateDocumentIsNoStylesheet) {
    const XsltLibrary xslt;
    const std::string uri = Uri("1_28_1/update.xml");
    EXPECT_EQ(ThrownText([&] { server->VokUpdateStatic::LoadStylesheet(uri); }),
              "Failed to parse stylesheet \"" + uri + "\" required by the update process.");
}

/// The documents of a server would be fetched, and nothing is.
TEST_F(VokUpdateStaticTest, TheServersOwnFormFetchesNothing) {
    const std::string uri =
        std::string(RIGBAKE_SOURCE_ROOT) + "/Libraries/VokLib/Update/Documents/1_28_1/update.xml";
    EXPECT_EQ(ThrownText([&] { server->VokUpdateQelServer::LoadDocument(uri); }),
              "Failed to parse xml document \"" + uri + "\" required by the update process.");
    EXPECT_EQ(ThrownText([&] { server->VokUpdateQelServer::LoadStylesheet(uri); }),
              "Failed to parse stylesheet \"" + uri + "\" required by the update process.");
}

}  // namespace
