#include <VokLib/Objects/Constraints/VokAimConstraint.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

namespace {

constexpr std::string_view kNodes =
    R"(<scene><node name="a"/><node name="b"/><node name="c"/></scene>)";

std::string Aim(std::string_view content) {
    return "<aimConstraint name=\"k\" constrain=\"||a\">\n" + std::string(content) +
           "</aimConstraint>";
}

std::string Rewrite(const std::string& element) {
    return Rewritten<VokAimConstraint>(std::string(kNodes) + element);
}

Failure AimFailure(std::string_view content) {
    return LoadFailure(std::string(kNodes) + Aim(content));
}

constexpr std::string_view kFixed =
    "<offset rotOrd=\"yzx\">0.5 0.25 0.125</offset>\n<aim>1.0 0.0 0.0</aim>\n"
    "<up>0.0 1.0 0.0</up>\n";
constexpr std::string_view kZeros =
    "<offset rotOrd=\"xyz\">0.0 0.0 0.0</offset>\n<aim>0.0 0.0 0.0</aim>\n<up>0.0 0.0 0.0</up>\n";

std::string Join(std::initializer_list<std::string_view> parts) {
    std::string joined;
    for (std::string_view part : parts) joined += part;
    return joined;
}

constexpr std::string_view kGlobal = "<globalup>0.0 0.0 1.0</globalup>\n";
constexpr std::string_view kTranslate = "<upobject name=\"||b\" transform=\"translate\" />\n";
constexpr std::string_view kRotate = "<upobject name=\"||b\" transform=\"rotate\" />\n";
constexpr std::string_view kTargets =
    "<target name=\"||c\" weight=\"1.0\" />\n<target name=\"||b\" weight=\"0.5\" />\n";

}  // namespace

TEST(VokAimConstraint, WritesWhatItReadsForEachUpMethod) {
    for (const std::string& content :
         {Join({kFixed, kTargets}), Join({kFixed, kGlobal, kTargets}),
          Join({kFixed, kTranslate, kTargets}), Join({kFixed, kGlobal, kRotate, kTargets})})
        EXPECT_EQ(Rewrite(Aim(content)), Aim(content));
}

TEST(VokAimConstraint, WithoutTargetsItWritesItsOwnElementsOnly) {
    EXPECT_EQ(Rewrite(Aim("")), Aim(kZeros));
}

TEST(VokAimConstraint, AnUpObjectDecidesTheMethodWhereverItStands) {
    for (const std::string& content : {Join({kGlobal, kTranslate}), Join({kTranslate, kGlobal})}) {
        Scene scene(std::string(kNodes) + Aim(content));
        const auto& aim = scene.First<VokAimConstraint>();
        EXPECT_EQ(aim.upMethod, AimUpMethod::ObjectTranslation);
        EXPECT_EQ(aim.globalUp, (VokVector4{0, 0, 1, 1}));
        EXPECT_EQ(Write(aim), Aim(Join({kZeros, kTranslate})));
    }
    EXPECT_EQ(Rewrite(Aim(Join({kRotate, kGlobal}))), Aim(Join({kZeros, kGlobal, kRotate})));
}

TEST(VokAimConstraint, ARotatingUpObjectWritesAGlobalUpOfZeros) {
    EXPECT_EQ(Rewrite(Aim(kRotate)),
              Aim(Join({kZeros, "<globalup>0.0 0.0 0.0</globalup>\n", kRotate})));
}

TEST(VokAimConstraint, OffsetWithoutOrderIsXyzAndAnUnknownOrderIsRefused) {
    {
        Scene scene(std::string(kNodes) +
                    Aim(R"(<offset rotOrd="zyx">1 2 3</offset><offset>4 5 6</offset>)"));
        EXPECT_EQ(scene.First<VokAimConstraint>().offset, (EulerRotation{4, 5, 6}));
    }
    EXPECT_EQ(AimFailure(R"(<offset rotOrd="abc">1 2 3</offset>)"),
              (Failure{"Unknown rotation order \"abc\".", "|k"}));
}

TEST(VokAimConstraint, AnUnknownTransformIsRefused) {
    EXPECT_EQ(AimFailure(R"(<upobject name="||b" transform="scale"/>)"),
              (Failure{"Unknown aim constraint world up method. \"scale\".", "|k"}));
    EXPECT_EQ(AimFailure(R"(<upobject name="||b"/>)"),
              (Failure{"Unknown aim constraint world up method. \"\".", "|k"}));
}

TEST(VokAimConstraint, ASecondUpObjectIsRefused) {
    const Failure failure{"Too many up target objects when parsing aim constraint.", "|k"};
    EXPECT_EQ(AimFailure(Join({kTranslate, kRotate})), failure);
    EXPECT_EQ(AimFailure(Join({R"(<upobject name="" transform="rotate"/>)", kRotate})), failure);
    EXPECT_EQ(AimFailure(Join({kRotate, R"(<upobject name="||b" transform="scale"/>)"})).text,
              "Unknown aim constraint world up method. \"scale\".")
        << "the transform is looked at first";
}

TEST(VokAimConstraint, AnUpObjectThatIsGoneIsWrittenAsAnEmptyPath) {
    Scene scene(std::string(kNodes) + Aim(kTranslate));
    auto& hierarchy = *scene.world.GetHierarchy();
    hierarchy.DeleteChild(hierarchy.FindChild("b"));
    EXPECT_EQ(Write(scene.First<VokAimConstraint>()),
              Aim(Join({kZeros, "<upobject name=\"\" transform=\"translate\" />\n"})));
}
