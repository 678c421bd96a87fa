#include <QelTools/Exception.h>
#include <VokLib/Document/VokUpdate.h>
#include <VokLib/Library/VokLib.h>
#include <VoktFramework/Atoms/VoktAtomVokWorld.h>
#include <VoktFramework/Atoms/VoktUniverse.h>
#include <VoktFramework/CommandLine/VoktCommandLineSyntax.h>
#include <VoktFramework/Errors/VoktError.h>
#include <VoktFramework/Errors/VoktErrorHandler.h>
#include <VoktFramework/Stages/VoktLoadQeli.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "Support/TemporaryFolder.h"
#include "Support/ThrownText.h"

namespace {

constexpr const char* kDocument = R"(<?xml version="1.0" encoding="ISO-8859-1"?>
<QEL xmlns="http://qel.example/ns/qeli/1_28_1/qeli">
  <scene><node name="a"/></scene>
</QEL>
)";

// Makes the fields of the default loader settable, as a tool with a second loader would.
class Loader : public VoktLoadQeli {
  public:
    using VoktLoadQeli::autoUpdate;
    using VoktLoadQeli::flagHelp;
    using VoktLoadQeli::flagName;
    using VoktLoadQeli::required;
    using VoktLoadQeli::shortFlagName;
};

class LoadQeli : public testing::Test {
  protected:
    void Run(const std::vector<std::string>& words) {
        VoktCommandLineSyntax syntax;
        loader.AddFlags(syntax);
        std::vector<const char*> argv;
        for (const std::string& word : words) argv.push_back(word.c_str());
        syntax.Parse(static_cast<int>(argv.size()), argv.data(), 0);
        loader.ReadFlags(syntax);
        loader.Validate();
        loader.Process(universe);
    }

    TemporaryFolder folder;
    std::string input = folder.WriteFile("scene.qeli", kDocument);
    VokLib library{true, true, true, true, true};
    VoktUniverse universe;

  private:
    // Their destructors may throw, which a member's of a test must not.
    std::unique_ptr<VoktErrorHandler> ownedErrors = std::make_unique<VoktErrorHandler>();
    std::unique_ptr<Loader> ownedLoader = std::make_unique<Loader>();

  protected:
    VoktErrorHandler& errors = *ownedErrors;
    Loader& loader = *ownedLoader;
};

}  // namespace

TEST_F(LoadQeli, TheDocumentStandsInTheUniverseAsWorld) {
    Run({"-in", input});
    auto* atom = universe.FetchByTypeAndName<VoktAtomVokWorld>("world");
    ASSERT_NE(atom, nullptr);
    EXPECT_NE(atom->world.GetHierarchy(), nullptr);
    EXPECT_EQ(loader.GetInputFilename(), input);
}

TEST_F(LoadQeli, TheInputIsTheContextOfLaterReports) {
    EXPECT_EQ(errors.GetContext(), "");
    Run({"-i", input});
    EXPECT_EQ(errors.GetContext(), input);
}

TEST_F(LoadQeli, AMalformedDocumentLeavesItsWorldInTheUniverse) {
    const std::string bad = folder.WriteFile("bad.qeli", "<QEL");
    EXPECT_THROW(Run({"-in", bad}), QelTools::Common::Exception);
    EXPECT_NE(universe.FetchByTypeAndName<VoktAtomVokWorld>("world"), nullptr);
    EXPECT_EQ(errors.GetContext(), bad);
}

TEST_F(LoadQeli, AnOptionalInputThatWasNotGivenLoadsNothing) {
    loader.required = 0;
    Run({});
    EXPECT_EQ(universe.FetchByType<VoktAtomVokWorld>(), nullptr);
    EXPECT_EQ(errors.GetContext(), "");
}

TEST_F(LoadQeli, TheInputIsRequired) {
    EXPECT_EQ(ThrownText<VoktCommandLineSyntax::Exception>([&] { Run({}); }),
              "A required flag \"-in\" was not set.");
}

TEST_F(LoadQeli, ASecondLoaderHasAFlagAndAWorldOfItsOwn) {
    EXPECT_EQ(loader.GetWorldName(), "world");
    loader.flagName = "reference";
    loader.shortFlagName = "ref";
    Run({"-ref", input});
    EXPECT_EQ(loader.GetWorldName(), "reference");
    EXPECT_NE(universe.FetchByTypeAndName<VoktAtomVokWorld>("reference"), nullptr);
}

TEST_F(LoadQeli, TwoLoadersShareTheirOtherFlags) {
    Loader second;
    second.flagName = "reference";
    second.shortFlagName = "ref";
    VoktCommandLineSyntax syntax;
    loader.AddFlags(syntax);
    second.AddFlags(syntax);
    EXPECT_FALSE(syntax.CheckFlagDefinitions());
}

TEST_F(LoadQeli, OnlyZeroAndLowerCaseFalseSwitchTheUpdateOff) {
    for (const char* value : {"0", "false"}) {
        loader.autoUpdate = true;
        loader.SetFlag("-autoupdate", value);
        EXPECT_FALSE(loader.autoUpdate) << value;
    }
    for (const char* value : {"1", "true", "FALSE", "False", "00", ""}) {
        loader.autoUpdate = false;
        loader.SetFlag("-autoupdate", value);
        EXPECT_TRUE(loader.autoUpdate) << value;
    }
}

TEST_F(LoadQeli, UpperCaseFalsePassesTheParserAndUpdates) {
    Run({"-in", input, "-au", "FALSE"});
    EXPECT_TRUE(loader.autoUpdate);
}

TEST_F(LoadQeli, QuietWinsOverVerbose) {
    EXPECT_EQ(VokUpdate::Get().GetVerbosity(), 1);
    Run({"-in", input, "-verboseload"});
    EXPECT_EQ(VokUpdate::Get().GetVerbosity(), 2);
    Run({"-in", input, "-quietload", "-verboseload"});
    EXPECT_EQ(VokUpdate::Get().GetVerbosity(), 0);
}

TEST_F(LoadQeli, AnUnknownFlagIsReportedByName) {
    try {
        loader.SetFlag("-i", input);
        FAIL() << "nothing was thrown";
    } catch (const VoktError& error) {
        EXPECT_EQ(error.GetId(), 200);
        EXPECT_EQ(error.GetCauseMessage(), "-i");
    }
}

TEST_F(LoadQeli, ValidationLooksAtTheInputAgain) {
    const auto failure = [&] {
        return ThrownText<QelTools::Common::Exception>([&] { loader.Validate(); });
    };
    EXPECT_EQ(failure(), "No input filename provided.\n");
    loader.SetFlag("-in", folder.Path("missing"));
    EXPECT_EQ(failure(), "Input file \"" + (folder.Path("missing")) + "\" is not readable.\n");
    loader.SetFlag("-in", input);
    EXPECT_NO_THROW(loader.Validate());
    // Only the plain requirement counts.
    Loader other;
    other.required = 1 | 2;
    EXPECT_NO_THROW(other.Validate());
}
