#include "Update/UpdateChain.h"

#include "VokLib/Update/UpdateTools.h"

#include <algorithm>

using namespace UpdateTools;

namespace {

class UpdateChainTest : public UpdateTest {
  protected:
    /// How many stages the way from `version` has.
    std::size_t StageCount(const std::string& version) {
        UpdateChain chain(*server);
        chain.Begin();
        chain.Follow(VersionNamespace(version));
        return chain.GetStages().size();
    }
    /// The stylesheets of the way, in the order in which they run.
    std::vector<std::string> Sheets(const std::string& version) {
        UpdateChain chain(*server);
        chain.Begin();
        chain.Follow(version);
        std::vector<std::string> sheets;
        chain.ForEachStep([&](xmlNode& step) {
            for (const xmlNode* child = step.children; child != nullptr; child = child->next)
                if (FromXml(child->name) == "xslt")
                    sheets.emplace_back(FromXml(child->children->content));
        });
        return sheets;
    }
    std::string Thrown(const std::string& version) {
        return ThrownText([&] { server->IsCompatible(version); });
    }
    /// The current update document with `contents`.
    void Current(const std::string& contents) {
        server->texts[server->GetUpdateUri()] = "<QELUpdate>" + contents + "</QELUpdate>";
    }
};

constexpr const char* kUnknown =
    "File \"http://qel.example/ns/qeli/1_0_3/update.xml\" required by update process is not "
    "compiled into VokLib. This probably means that you are running an old version of a tool on a "
    "more recent .qeli file.";

TEST_F(UpdateChainTest, EachVersionIsAsManyStagesAwayAsThereAreLaterOnes) {
    const std::vector<std::string>& versions = Versions();
    EXPECT_EQ(StageCount("1_27_3"), 1u);
    EXPECT_EQ(StageCount("1_15_0"), 16u);
    EXPECT_EQ(StageCount("1_14_1"), 17u);
    for (std::size_t i = 3; i + 1 < versions.size(); ++i)
        EXPECT_EQ(StageCount(versions[i]), versions.size() - 1 - i) << versions[i];
    // The document of 1_0_7 lists all that came before it.
    for (const char* number : {"1_0_3", "1_0_4", "1_0_5"}) EXPECT_EQ(StageCount(number), 28u);
}

TEST_F(UpdateChainTest, EveryStylesheetBetweenAVersionAndTheCurrentOneRunsOnce) {
    const std::vector<std::string>& versions = Versions();
    for (std::size_t i = 0; i + 1 < versions.size(); ++i) {
        std::vector<std::string> expected;
        for (std::size_t k = i; k + 1 < versions.size(); ++k)
            expected.push_back(Uri(versions[k] + "/" + versions[k + 1] + ".xslt"));
        EXPECT_EQ(Sheets(VersionNamespace(versions[i])), expected) << versions[i];
    }
}

TEST_F(UpdateChainTest, TheFirstVersionsAreUpdatedByTheDocumentOf107) {
    UpdateChain chain(*server);
    chain.Begin();
    chain.Follow(VersionNamespace("1_0_4"));
    const UpdateStage& oldest = chain.GetStages().back();
    EXPECT_EQ(oldest.uri, Uri("1_0_7/update.xml"));
    int steps = 0;
    for (const xmlNode* child = oldest.update->children; child != nullptr; child = child->next)
        steps += FromXml(child->name) == "step" ? 1 : 0;
    EXPECT_EQ(steps, 2);
}

TEST_F(UpdateChainTest, NoVersionIsTheOneBeforeVersions) {
    EXPECT_EQ(Sheets(""), Sheets(VersionNamespace("1_0_3")));
    EXPECT_EQ(Sheets("").size(), 30u);
    EXPECT_FALSE(server->IsCompatible(""));
}

TEST_F(UpdateChainTest, VersionsSinceTheLastChangeAreReadAsTheyStand) {
    for (const std::string& version : Versions()) {
        if (version == "1_28_1") continue;
        const bool isLate = std::find(Versions().begin(), Versions().end(), version) >=
                            std::find(Versions().begin(), Versions().end(), "1_15_0");
        EXPECT_EQ(server->IsCompatible(VersionNamespace(version)), isLate) << version;
    }
}

TEST_F(UpdateChainTest, EachUpdateDocumentSaysWhetherItsVersionOnlyAdded) {
    const std::vector<std::string> changing = {"1_0_5", "1_0_7", "1_2_0", "1_5_0",
                                               "1_5_3", "1_8_2", "1_9_0", "1_15_0"};
    for (std::size_t i = 2; i < Versions().size(); ++i) {
        const std::string& version = Versions()[i];
        const XmlDocument document = server->LoadDocument(Uri(version + "/update.xml"));
        const XPathContext context(xmlXPathNewContext(document.get()));
        const XPathResult found(
            xmlXPathEvalExpression(ToXml("//level[text()='superset']"), context.get()));
        const bool onlyAdds = xmlXPathCastToBoolean(found.get()) != 0;
        EXPECT_EQ(onlyAdds, std::find(changing.begin(), changing.end(), version) == changing.end())
            << version;
    }
}

TEST_F(UpdateChainTest, UnknownVersionIsRefusedInWordsForANewerTool) {
    for (const std::string& version :
         {VersionNamespace("1_29_0"), VersionNamespace("1_6_0"), VersionNamespace("1_28_1"),
          std::string("1_15_0"), VersionNamespace("1_15_0") + "/"}) {
        EXPECT_EQ(Thrown(version), kUnknown) << version;
        EXPECT_EQ(Failure("<QEL/>", version), kUnknown) << version;
    }
}

TEST_F(UpdateChainTest, AVersionWithAQuoteCannotBeLookedFor) {
    EXPECT_EQ(Thrown("1' or '1'='1"),
              "Failed to evaluate xpath expression to find update process.");
}

TEST_F(UpdateChainTest, TwoWaysFromOneVersionAreRefused) {
    const std::string way = "<update source=\"" + VersionNamespace("1_27_3") + "\"/>";
    Current(way + way);
    EXPECT_EQ(Thrown(VersionNamespace("1_27_3")),
              "More than one update process found for old version .qeli file.");
}

TEST_F(UpdateChainTest, ASearchThatComesBackToWhereItWasEnds) {
    Current("<update source=\"HTTP://QEL.EXAMPLE/ns/qeli/1_28_1/qeli\"/>");
    EXPECT_EQ(Thrown("x"), "No update process found for old version .qeli file.");
    EXPECT_EQ(server->loaded.size(), 1u);
}

TEST_F(UpdateChainTest, TheFirstSourceThatWasNotTriedLeadsOn) {
    Current("<update source=\"" + VersionNamespace("1_28_1") + "\"/><update source=\"a/qeli\"/>" +
            "<update source=\"b/qeli\"/>");
    server->texts["a/update.xml"] =
        "<QELUpdate><update source=\"b/qeli\"/><update source=\"a/x\"/></QELUpdate>";
    server->texts["b/update.xml"] = "<QELUpdate><update source=\"old\"/></QELUpdate>";
    EXPECT_FALSE(server->IsCompatible("old"));
    EXPECT_EQ(server->loaded,
              (std::vector<std::string>{server->GetUpdateUri(), "a/update.xml", "b/update.xml"}));
}

TEST_F(UpdateChainTest, ASourceWithoutASlashIsRefused) {
    Current("<update source=\"old\"/>");
    EXPECT_EQ(Thrown("x"), "Failed to truncate update xml filename.");
}

TEST_F(UpdateChainTest, AnEmptyUpdateDocumentLeadsNowhere) {
    Current("");
    EXPECT_EQ(Thrown("x"), "No update process found for old version .qeli file.");
}

TEST_F(UpdateChainTest, AWalkOfAHundredStagesIsBroken) {
    std::string at = server->GetUpdateUri();
    for (int i = 0; i < 120; ++i) {
        const std::string source = "v" + std::to_string(i) + "/qeli";
        server->texts[at] = "<QELUpdate><update source=\"" + source + "\"/></QELUpdate>";
        at = "v" + std::to_string(i) + "/update.xml";
    }
    EXPECT_EQ(Thrown("x"),
              "The update process is trying to apply more than 100 update stages when loading a "
              "file of an old version. Something has probably gone wrong.");
    EXPECT_EQ(server->loaded.size(), 100u);
    EXPECT_EQ(Thrown("v98/qeli"), "") << "99 stages are fine";
}

TEST_F(UpdateChainTest, ADocumentThatIsNotThereIsNamed) {
    server->texts[server->GetUpdateUri()] = "";
    EXPECT_EQ(Thrown("x"),
              "Failed to parse update list document "
              "\"http://qel.example/ns/qeli/1_28_1/update.xml\".");
    Current("<update source=\"a/qeli\"/>");
    server->texts["a/update.xml"] = "";
    EXPECT_EQ(Thrown("x"), "Failed to parse update list document \"a/update.xml\".");
}

TEST_F(UpdateChainTest, AWalkNeedsAStageToBeginWith) {
    UpdateChain chain(*server);
    EXPECT_EQ(ThrownText([&] { chain.Follow("x"); }), "No update stages");
}

TEST_F(UpdateChainTest, OnlyTheWordSupersetCounts) {
    const auto isCompatible = [&](const std::string& inside) {
        Current("<update source=\"old\">" + inside + "</update>");
        return server->IsCompatible("old");
    };
    EXPECT_TRUE(isCompatible("<compatibility><level>superset</level></compatibility>"));
    EXPECT_FALSE(isCompatible(""));
    EXPECT_FALSE(isCompatible("<compatibility/>"));
    EXPECT_FALSE(isCompatible("<compatibility><level/></compatibility>"));
    EXPECT_FALSE(isCompatible("<compatibility><level>Superset</level></compatibility>"));
    EXPECT_FALSE(isCompatible("<compatibility><level> superset</level></compatibility>"));
    EXPECT_FALSE(isCompatible("<level>superset</level>"));
    EXPECT_EQ(ThrownText([&] {
                  isCompatible(
                      "<compatibility><level>superset</level><level>x</level>"
                      "</compatibility>");
              }),
              "More than one compatibility block in update file.");
}

TEST_F(UpdateChainTest, AStageThatChangesMakesTheWholeWayIncompatible) {
    Current("<update source=\"a/qeli\"/>");
    server->texts["a/update.xml"] =
        "<QELUpdate><update source=\"old\"><compatibility><level>superset</level></compatibility>"
        "</update></QELUpdate>";
    EXPECT_FALSE(server->IsCompatible("old"));
}

}  // namespace
