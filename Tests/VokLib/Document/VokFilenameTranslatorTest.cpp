#include "VokLib/SceneTestTools.h"

#include <VokLib/Document/VokFilenameTranslator.h>
#include <VokLib/Tree/VokDependencies.h>
#include <VokLib/Tree/VokNode.h>

#include <cstdlib>
#include <map>
#include <optional>
#include <vector>

#include "Support/CostRatio.h"

using namespace SceneTest;

namespace {

constexpr const char* kVariables[] = {"qel_tools_current_project", "rig_asset_root",
                                      "rig_export_root", "_asset_root", "_export_root"};

/// The project's environment for the time of a test; nothing of the machine's own shines through.
class Project {
  public:
    explicit Project(const std::map<std::string, std::string>& values) {
        for (const char* name : kVariables) {
            const char* value = std::getenv(name);
            before[name] = value != nullptr ? std::optional<std::string>(value) : std::nullopt;
            Set(name, values.contains(name) ? std::optional(values.at(name)) : std::nullopt);
        }
    }
    ~Project() {
        for (const auto& [name, value] : before) Set(name, value);
    }

  private:
    static void Set(const std::string& name, const std::optional<std::string>& value) {
        if (value)
            setenv(name.c_str(), value->c_str(), 1);
        else
            unsetenv(name.c_str());
    }

    std::map<std::string, std::optional<std::string>> before;
};

/// A translated name with what the operation returned.
using Result = std::pair<std::string, int>;

class Echo : public VokFilenameTranslator {
  public:
    explicit Echo(const std::string& form, bool primary = false)
        : VokFilenameTranslator(form, primary) {}
    int FromAbsolute(std::string& out, const std::string& absoluteName,
                     const VokObj*) const override {
        out = absoluteName;
        return 1;
    }
    int ToAbsolute(std::string& out, const std::string& name, const VokObj*) const override {
        out = name;
        return 1;
    }
};

}  // namespace

class FilenameTranslator : public testing::Test {
  protected:
    void BringUp(const std::map<std::string, std::string>& environment) {
        project.emplace(environment);
        library = std::make_unique<VokLib>(true, true, true, true, true);
        world = std::make_unique<VokWorld>();
        world->SetFilename("c:\\scenes\\a\\b.qeli");
        node = Add<VokNode>(world->GetHierarchy(), "n");
    }
    void BringUpProject(const std::string& assets = "d:\\Proj",
                        const std::string& exports = "e:/Out//Levels/") {
        BringUp({{"qel_tools_current_project", "rig"},
                 {"rig_asset_root", assets},
                 {"rig_export_root", exports}});
    }

    Result From(const std::string& form, const std::string& name) const {
        Result result;
        result.second = GetTranslator(form).FromAbsolute(result.first, name, node);
        return result;
    }
    Result To(const std::string& form, const std::string& name) const {
        Result result;
        result.second = GetTranslator(form).ToAbsolute(result.first, name, node);
        return result;
    }

    /// Reads `body` as a document with these attributes at its root, which stands beside the world.
    static void ReadForm(VokWorld& read, const std::string& attributes, const std::string& body) {
        Parse(read,
              "<QEL xmlns=\"" + std::string(QelCurrentNamespace) + "\" " + attributes + ">" + body +
                  "</QEL>",
              "c:\\scenes\\a\\b.qeli");
    }
    static std::vector<std::string> FilesOf(const VokWorld& read) {
        VokDependencies files;
        CollectDependencies(read, files);
        return files.GetFiles();
    }

    std::optional<Project> project;
    std::unique_ptr<VokLib> library;
    std::unique_ptr<VokWorld> world;
    VokNode* node = nullptr;
};

TEST_F(FilenameTranslator, RegistryKnowsTheThreeForms) {
    BringUp({});
    for (const char* form : {"qelirelative", "qelrootrelative", "absolute"})
        EXPECT_EQ(GetFormString(GetTranslator(form)), form);
    EXPECT_EQ(GetFormString(GetPrimaryTranslator()), "qelirelative");
    EXPECT_EQ(FailureOf([] { GetTranslator("x"); }),
              Plain("No filename translator registered for filename form \"x\"."));
}

TEST_F(FilenameTranslator, LaterOneReplacesAnEarlierOfItsForm) {
    auto first = std::make_unique<Echo>("echo");
    auto* second = new Echo("echo");
    EXPECT_EQ(&GetTranslator("echo"), second);
    EXPECT_EQ(FailureOf([&] { GetFormString(*first); }),
              Plain("Failed to find VokFilenameTranslator in registry to get filename form "
                    "string."));
    Echo* replaced = first.release();
    EXPECT_EQ(FailureOf([&] { delete replaced; }),
              Plain("Failed to find VokFilenameTranslator in registry when destructing."));
    delete second;
    EXPECT_EQ(FailureOf([] { GetTranslator("echo"); }),
              Plain("No filename translator registered for filename form \"echo\"."));
}

TEST_F(FilenameTranslator, OfTwoPrimaryOnesTheLaterCountsForAsLongAsItLives) {
    auto first = std::make_unique<Echo>("first", true);
    auto second = std::make_unique<Echo>("second", true);
    EXPECT_EQ(GetFormString(GetPrimaryTranslator()), "second");
    first.reset();
    EXPECT_EQ(GetFormString(GetPrimaryTranslator()), "second");
    second.reset();
    EXPECT_EQ(FailureOf([] { GetPrimaryTranslator(); }),
              Plain("No primary filename translator instance registered."));
}

TEST_F(FilenameTranslator, TheEarlierPrimaryOneDoesNotComeBack) {
    const Echo first("first", true);
    { const Echo second("second", true); }
    EXPECT_EQ(FailureOf([] { GetPrimaryTranslator(); }),
              Plain("No primary filename translator instance registered."));
}

TEST_F(FilenameTranslator, AbsoluteNamesAreFolded) {
    BringUp({});
    EXPECT_EQ(From("absolute", "C:\\Tex/A.DDS"), Result("c:\\tex/a.dds", 0));
    EXPECT_EQ(To("absolute", "C:\\Tex/A.DDS"), Result("c:\\tex/a.dds", 0));
}

TEST_F(FilenameTranslator, RelativeNamesCountFromTheDocument) {
    BringUp({});
    EXPECT_EQ(From("qelirelative", "C:/Scenes/tex/t.dds"), Result("../tex/t.dds", 0));
    EXPECT_EQ(From("qelirelative", "d:\\tex\\t.dds"), Result("d:/tex/t.dds", 0));
    EXPECT_EQ(To("qelirelative", "../tex/t.dds"), Result("c:\\scenes\\tex\\t.dds", 0));
    EXPECT_EQ(To("qelirelative", "T.dds"), Result("c:\\scenes\\a\\T.dds", 0));
    world->SetFilename("/home/scenes/b.qeli");
    EXPECT_EQ(To("qelirelative", "../tex/t.dds"), Result("\\home\\tex\\t.dds", 0));
    EXPECT_EQ(From("qelirelative", "\\home\\tex\\t.dds"), Result("../tex/t.dds", 0));
}

TEST_F(FilenameTranslator, RelativeNamesNeedAnObjectInAWorld) {
    BringUp({});
    node = nullptr;
    EXPECT_EQ(FailureOf([&] { To("qelirelative", "x"); }), OfObject("this is NULL"));
}

TEST_F(FilenameTranslator, MissingEnvironmentShowsAtFirstUseInOneText) {
    BringUp({});
    const Failure expected = Plain(
        "No tools current project defined. "
        "No tools asset root directory environment variable defined. "
        "No tools export root directory environment variable defined. ");
    EXPECT_EQ(FailureOf([&] { From("qelrootrelative", "x"); }), expected);
    EXPECT_EQ(FailureOf([&] { To("qelrootrelative", "x"); }), expected);
}

TEST_F(FilenameTranslator, EachMissingVariableHasItsSentence) {
    BringUp({{"qel_tools_current_project", "rig"}, {"rig_asset_root", "d:/a"}});
    EXPECT_EQ(FailureOf([&] { To("qelrootrelative", "x"); }),
              Plain("No tools export root directory environment variable defined. "));
    world.reset();
    library.reset();
    project.reset();
    BringUp({{"_asset_root", "d:/a"}, {"_export_root", "d:/b"}});
    EXPECT_EQ(FailureOf([&] { To("qelrootrelative", "x"); }),
              Plain("No tools current project defined. "));
}

TEST_F(FilenameTranslator, ProjectNamesStandUnderTheirRoots) {
    BringUpProject();
    EXPECT_EQ(To("qelrootrelative", "tex/t.dds"), Result("d:\\proj\\tex\\t.dds", 0));
    EXPECT_EQ(To("qelrootrelative", "levels/x.qeli"), Result("e:\\out\\levels\\levels\\x.qeli", 0));
    EXPECT_EQ(To("qelrootrelative", "x.QELI"), Result("d:\\proj\\x.QELI", 0));
    EXPECT_EQ(To("qelrootrelative", "/tex//t.dds"), Result("d:\\proj\\tex\\t.dds", 0));
}

TEST_F(FilenameTranslator, CompleteProjectNamesStayApartFromTheirSlashes) {
    BringUpProject();
    EXPECT_EQ(To("qelrootrelative", "$root/Tex//x.qeli"), Result("$root\\Tex\\x.qeli", 0));
    EXPECT_EQ(To("qelrootrelative", "Q:/x//y"), Result("Q:\\x\\y", 0));
}

TEST_F(FilenameTranslator, NamesUnderARootAreCutAndFolded) {
    BringUpProject();
    EXPECT_EQ(From("qelrootrelative", "D:\\\\PROJ\\Tex\\T.dds"), Result("tex/t.dds", 0));
    EXPECT_EQ(From("qelrootrelative", "E:\\Out\\Levels\\X.qeli"), Result("x.qeli", 0));
    EXPECT_EQ(From("qelrootrelative", "D:\\Project\\T.dds"), Result("d:/project/t.dds", 1));
}

TEST_F(FilenameTranslator, ExportRootIsComparedInTheAssetRootsLength) {
    BringUpProject("d:/a", "d:/export");
    EXPECT_EQ(From("qelrootrelative", "d:/export/x.qeli"), Result("x.qeli", 0));
    // Five characters agree, ten are cut.
    EXPECT_EQ(From("qelrootrelative", "d:/extra/long.qeli"), Result("ong.qeli", 0));
    EXPECT_EQ(From("qelrootrelative", "d:/ex"), Result("", 0));
    EXPECT_EQ(From("qelrootrelative", "d:/e"), Result("d:/e", 1));
}

TEST_F(FilenameTranslator, ExportRootShorterThanTheAssetRootIsMetByItselfAlone) {
    BringUpProject("d:/assets", "d:/e");
    EXPECT_EQ(From("qelrootrelative", "d:/e/x.qeli"), Result("d:/e/x.qeli", 1));
    EXPECT_EQ(From("qelrootrelative", "d:/e/"), Result("", 0));
}

TEST_F(FilenameTranslator, RewritingGoesThroughTheAbsoluteName) {
    BringUpProject("c:/scenes/assets", "c:/scenes");
    VokUpdateDependencesUsingTranslators update("qelrootrelative");
    std::string out;
    update.Translate(out, "tex/t.dds", node);
    EXPECT_EQ(out, "../assets/tex/t.dds");
}

TEST_F(FilenameTranslator, RewritingForObjectsWithoutAWorldFailsAsForEach) {
    BringUp({});
    VokNode outside;
    outside.SetName("top");
    VokNode* const below = Add<VokNode>(&outside, "below");
    VokUpdateDependencesUsingTranslators update("qelirelative");
    std::string out;
    for (const VokObj* object : {below, static_cast<VokNode*>(nullptr), &outside, below}) {
        const auto whole = FailureOf([&] { VokObj::GetWorld(object); });
        EXPECT_EQ(FailureOf([&] { update.Translate(out, "t.dds", object); }), whole);
    }
}

TEST_F(FilenameTranslator, RewritingNamesInDeepObjectsTakesTimeInProportionToTheirNumber) {
    if (!kHasProcessorTime) GTEST_SKIP() << "other processes would have a say";
    BringUp({});
    const double cost = CostOfFourTimes(500, [](int count) {
        VokWorld deep;
        deep.SetFilename("c:/scenes/a.qeli");
        VokObj* at = &deep;
        for (int i = 0; i < 20 * count; ++i) at = Add<VokNode>(at, "n");
        VokUpdateDependencesUsingTranslators update("qelirelative");
        std::string out;
        for (int i = 0; i < count; ++i)
            update.Translate(out, "t.dds", Add<VokNode>(Add<VokNode>(at, "p"), "holder"));
        EXPECT_EQ(out, "t.dds");
    });
    EXPECT_LT(cost, kMostOfFourTimes);
}

TEST_F(FilenameTranslator, LoadedTreeHasThePrimaryForm) {
    BringUpProject("c:/scenes/assets", "c:/scenes");
    VokWorld read;
    ReadForm(read, "filenameform='qelrootrelative'",
             "<reference name='r' uri='other/x.qeli'/><texture name='t' uri='Tex/T.dds'/>"
             "<qelilocator name='l'><file uri='$far/y.qeli'/><customData>"
             "<attribute name='f' type='filename' isArray='true'><value index='3'>a.dds</value>"
             "</attribute></customData></qelilocator>");
    EXPECT_EQ(FilesOf(read), (std::vector<std::string>{"../other/x.qeli", "../assets/Tex/T.dds",
                                                       "$far/y.qeli", "../assets/a.dds"}));
}

TEST_F(FilenameTranslator, LoadedAbsoluteNamesAreFoldedAndMadeRelative) {
    BringUp({});
    VokWorld read;
    ReadForm(read, "filenameform='absolute'",
             "<reference name='r' uri='C:\\Scenes\\X.qeli'/><texture name='t' uri='D:\\T.dds'/>");
    EXPECT_EQ(FilesOf(read), (std::vector<std::string>{"../x.qeli", "d:/t.dds"}));
}

TEST_F(FilenameTranslator, LoadedNamesOfThePrimaryFormStayAsTheyStand) {
    BringUp({});
    VokWorld read;
    ReadForm(read, "filenameform='qelirelative'", "<texture name='t' uri='.\\A//..\\T.dds'/>");
    EXPECT_EQ(FilesOf(read), (std::vector<std::string>{".\\A//..\\T.dds"}));
}

TEST_F(FilenameTranslator, FormThatNobodyKnowsFailsAtTheFirstFileName) {
    BringUp({});
    const std::pair<std::string, std::string> cases[] = {
        {"", ""}, {"filenameform=''", ""}, {"filenameform='QELIRELATIVE'", "QELIRELATIVE"}};
    for (const auto& [attribute, form] : cases) {
        VokWorld without;
        ReadForm(without, attribute, "<node name='n'/><texture name='t' uri=''/>");
        EXPECT_EQ(FilesOf(without), std::vector<std::string>());
        VokWorld with;
        EXPECT_EQ(FailureOf([&] { ReadForm(with, attribute, "<texture name='t' uri='t.dds'/>"); }),
                  Plain("No filename translator registered for filename form \"" + form + "\"."));
    }
}
