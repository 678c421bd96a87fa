#include "Procedural/DebugGraph.h"
#include "VoktRigbake/ProceduralTestTools.h"

#include <VokLib/Base/VokTypeId.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

namespace fs = std::filesystem;

namespace {

const std::string kScene =
    R"(<scene><joint name="root"><joint name="a"/><joint name="b"/>
    <joint name="c"/></joint></scene>)" +
    DrivenAnim("||root|b", "rotateX", "||root|a", "rotateY") +
    Constraint("orientationConstraint", "ns:follow", "||root|c", {"||root|b"});

constexpr const char* kGraph = R"(digraph test {
x00000002 -> x00000003 ;
x00000002 -> x00000004 ;
x00000002 -> x00000005 ;
x00000003 -> x00000007 ;
x00000004 -> x00000008 ;
x00000007 -> x00000004 ;
x00000008 -> x00000005 ;
x00000002 [label="root\n[VokJoint]"];
x00000003 [label="a\n[VokJoint]"];
x00000004 [label="b\n[VokJoint]"];
x00000005 [label="c\n[VokJoint]"];
x00000007 [label="rotateX::rotateX\n[VokAnimChannel]",shape=polygon,sides=4,skew=.4];
x00000008 [label="ns:follow\n[VokOrientationConstraint]",shape=box];
}
)";

constexpr const char* kStages =
    "stage 0\nrotateX::rotateX [VokAnimChannel]\n"
    "stage 1\nns:follow [VokOrientationConstraint]\n";

/// A folder for temporary files of its own, with Graphviz or without.
class DebugGraph : public testing::Test {
  protected:
    DebugGraph() {
        fs::remove_all(folder);
        fs::create_directories(folder / "bin");
        setenv("TMPDIR", folder.c_str(), 1);
        setenv("PATH", (folder / "bin").c_str(), 1);
        unsetenv("DISPLAY");
        unsetenv("WAYLAND_DISPLAY");
    }
    ~DebugGraph() noexcept override {
        fs::remove_all(folder);
        Restore("TMPDIR", oldFolder);
        Restore("PATH", oldPath);
    }

    std::string Output() {
        RigScene rig(kScene);
        rig.WithConstraints().Debugging();
        return CaptureOutput([&rig] { rig.Build(); });
    }

    /// A program of Graphviz's name that writes `script`'s output.
    void Install(const std::string& name, const std::string& script) {
        std::ofstream(folder / "bin" / name) << "#!/bin/sh\n" << script;
        fs::permissions(folder / "bin" / name, fs::perms::owner_all);
    }

    /// The texts of the files with this ending.
    std::vector<std::string> Files(const std::string& ending) const {
        std::vector<std::string> texts;
        for (const auto& entry : fs::directory_iterator(folder)) {
            if (!entry.is_regular_file() || entry.path().extension() != ending) continue;
            EXPECT_EQ(entry.path().filename().string().substr(0, 3), "DOT");
            std::ifstream stream(entry.path(), std::ios::binary);
            texts.emplace_back(std::istreambuf_iterator<char>(stream),
                               std::istreambuf_iterator<char>());
        }
        return texts;
    }

    // Of its own for each test: they run side by side.
    fs::path folder =
        fs::temp_directory_path() /
        ("a 'quoted\" folder; $HOME " +
         std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));

  private:
    static std::string Variable(const char* name) {
        const char* value = std::getenv(name);
        return value == nullptr ? "" : value;
    }
    static void Restore(const char* name, const std::string& value) {
        if (value.empty())
            unsetenv(name);
        else
            setenv(name, value.c_str(), 1);
    }
    const std::string oldFolder = Variable("TMPDIR");
    const std::string oldPath = Variable("PATH");
};

using Texts = std::vector<std::string>;

}  // namespace

TEST_F(DebugGraph, StagesArePrintedAndTheGraphIsKept) {
    EXPECT_EQ(Output(), kStages);
    EXPECT_EQ(Files(".dot"), Texts{kGraph});
    EXPECT_EQ(Files(".png"), Texts{}) << "there is no Graphviz";
    EXPECT_EQ(Files(""), Texts{}) << "the file that kept the name";
}

TEST_F(DebugGraph, SameSceneGivesTheSameGraphEachTime) {
    Output();
    Output();
    EXPECT_EQ(Files(".dot"), (Texts{kGraph, kGraph}));
}

TEST_F(DebugGraph, GraphvizDrawsThePicture) {
    Install("unflatten",
            "printf '%s,' \"$1\" \"$2\" \"$3\"; while read -r line; do printf "
            "'%s/' \"$line\"; done < \"$4\"");
    Install("dot", "read -r line; printf '%s %s %s' \"$1\" \"$2\" \"$line\" > \"$3\"");
    EXPECT_EQ(Output(), kStages);
    ASSERT_EQ(Files(".png").size(), 1u);
    EXPECT_EQ(Files(".png")[0].substr(0, 42), "-Tpng -o -f,-c5,-l5,digraph test {/x000000");
}

TEST_F(DebugGraph, HalfAPictureDoesNotStay) {
    Install("unflatten", "");
    Install("dot", "echo half > \"$3\"; exit 1");
    EXPECT_EQ(Output(), kStages);
    EXPECT_EQ(Files(".png"), Texts{});
    EXPECT_EQ(Files(".dot"), Texts{kGraph});
}

TEST_F(DebugGraph, MissingFolderLeavesTheGraphOut) {
    setenv("TMPDIR", (folder / "none").c_str(), 1);
    EXPECT_EQ(Output(), kStages);
}

TEST_F(DebugGraph, NothingIsShownWithoutTheFlag) {
    RigScene rig(kScene);
    EXPECT_EQ(CaptureOutput([&rig] { rig.WithConstraints().Build(); }), "");
    EXPECT_EQ(Files(".dot"), Texts{});
}

TEST_F(DebugGraph, SkeletonAloneIsDrawnToo) {
    RigScene rig(R"(<scene><joint name="root"><joint name="a"/></joint></scene>)");
    rig.Debugging();
    EXPECT_EQ(CaptureOutput([&rig] { EXPECT_EQ(rig.Build(), nullptr); }), "");
    EXPECT_EQ(Files(".dot"), Texts{"digraph test {\nx00000002 -> x00000003 ;\n"
                                   "x00000002 [label=\"root\\n[VokJoint]\"];\n"
                                   "x00000003 [label=\"a\\n[VokJoint]\"];\n}\n"});
}

TEST(DebugGraphLooks, EveryClassHasItsTextAndShape) {
    TestScene scene(R"(<scene><node name="n"/></scene><aimConstraint name="aim" constrain="">
        </aimConstraint><translationConstraint name="t" constrain=""/>
        <parentConstraint name="p" constrain=""/><scaleConstraint name="s" constrain=""/>
        <anim name="left_arm_keys" target=""><animChannel name="ch"/></anim>
        <anim name="plain" target=""><animChannel name="ch"/></anim>
        <blend name="mix" target="" channel=""/>)");
    VokWorld& world = scene.World();
    const DocumentOrder order(world);
    Dependencies dependencies(order);
    const VokObj* node = world.GetChild(0)->GetChild(0);
    for (std::size_t i = 1; i < world.GetChildCount(); ++i)
        dependencies.Add(node, world.GetChild(i));
    dependencies.Add(node, world.GetChild(5)->GetChild(0));
    dependencies.Add(node, world.GetChild(6)->GetChild(0));
    std::ostringstream stream;
    WriteGraph(dependencies, stream);
    std::ostringstream something;
    something << std::hex << MakeTypeId("node");
    const std::string text = stream.str();
    EXPECT_EQ(text.substr(text.find("x00000002 [")),
              "x00000002 [label=\"n\\n[VokSomething(0x" + something.str() +
                  ")]\"];\n"
                  "x00000003 [label=\"aim\\n[VokAimConstraint]\",shape=box];\n"
                  "x00000004 [label=\"t\\n[VokTranslationConstraint]\",shape=box];\n"
                  "x00000005 [label=\"p\\n[VokParentConstraint]\",shape=box];\n"
                  "x00000006 [label=\"s\\n[VokScaleConstraint]\",shape=box];\n"
                  "x00000007 [label=\"left_arm_keys\\n[VokAnim]\",shape=polygon,sides=4,skew=.4];\n"
                  "x00000008 [label=\"keys::ch\\n[VokAnimChannel]\",shape=polygon,sides=4,skew=.4];"
                  "\n"
                  "x00000009 [label=\"plain\\n[VokAnim]\",shape=polygon,sides=4,skew=.4];\n"
                  "x0000000a [label=\"plain::ch\\n[VokAnimChannel]\",shape=polygon,sides=4,skew=.4]"
                  ";\n"
                  "x0000000b [label=\"mix\\n[VokBlend]\",shape=polygon,sides=4,skew=-.4];\n}\n");
}
