#include "VoktRigbake/ProceduralFileReader.h"
#include "VoktRigbake/ProceduralTestTools.h"

#include <VokLib/Objects/Animation/VokAnimChannel.h>
#include <VokLib/Objects/Animation/VokBlend.h>
#include <VokLib/Objects/Constraints/VokAimConstraint.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VoktRigbake/Procedural/BuildProceduralJoints.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace {

const std::string kJoints = R"(<scene><joint name="root"><joint name="a"/><joint name="b"/>
    <joint name="c"/><joint name="d"><joint name="e"/></joint></joint></scene>)";

constexpr const char* kCircle =
    "Circular dependencies in the procedural joint DAG (constraints & driven keys) can not be "
    "handled.";

std::string Joint(const std::string& name) {
    return "||root|" + name;
}

std::string Aim(const std::string& name, const std::string& constrained,
                const std::string& target) {
    return Constraint("aimConstraint", name, Joint(constrained), {Joint(target)},
                      "<globalup>0 1 0</globalup>");
}

std::string Orientation(const std::string& name, const std::string& constrained,
                        const std::string& target) {
    return Constraint("orientationConstraint", name, Joint(constrained), {Joint(target)});
}

std::string Driven(const std::string& target, const std::string& input,
                   const std::string& channel = "rotateX") {
    return DrivenAnim(Joint(target), channel, Joint(input), "rotateY");
}

std::string Blend(const std::string& target) {
    return "<blend name=\"mix\" target=\"" + target +
           "\" channel=\"rotateX\"><input value=\"0\" weight=\"0.5\"/></blend>\n";
}

std::string KindsOf(const std::string& body, bool withConstraints = true) {
    RigScene rig(kJoints + body);
    if (withConstraints) rig.WithConstraints();
    return KindsOf(rig.Build().get());
}

std::string BuildFailure(const std::string& body) {
    return RigScene(kJoints + body).WithConstraints().Failure();
}

}  // namespace

TEST(ProceduralJoints, SkeletonAloneHasNone) {
    EXPECT_EQ(RigScene(kJoints).Build(), nullptr);
    EXPECT_EQ(RigScene(kJoints).WithConstraints().Build(), nullptr);
}

TEST(ProceduralJoints, FlagsDecideWhatIsGathered) {
    const std::string body = Driven("a", "b") + Orientation("o", "c", "d");
    EXPECT_EQ(KindsOf(RigScene(kJoints + body).Build().get()), "D");
    EXPECT_EQ(KindsOf(RigScene(kJoints + body).WithConstraints().Build().get()), "DC");
    EXPECT_EQ(KindsOf(RigScene(kJoints + body).WithoutDrivenKeys().WithConstraints().Build().get()),
              "C");
    EXPECT_EQ(RigScene(kJoints + body).WithoutDrivenKeys().Build(), nullptr);
}

TEST(ProceduralJoints, AimRunsAfterTheOtherConstraintOfItsJoint) {
    for (const std::string& body : {Aim("aim", "a", "b") + Orientation("o", "a", "c"),
                                    Orientation("o", "a", "c") + Aim("aim", "a", "b")}) {
        RigScene rig(kJoints + body);
        rig.WithConstraints();
        const auto procedural = rig.Build();
        ASSERT_EQ(KindsOf(procedural.get()), "CC");
        EXPECT_EQ(std::get<JointConstraints>(procedural->items[0]).orientationItems.size(), 1u);
        EXPECT_EQ(std::get<JointConstraints>(procedural->items[1]).aimItems.size(), 1u);
    }
}

TEST(ProceduralJoints, TwoAimsOnOneJointRunInDocumentOrder) {
    RigScene rig(kJoints + Aim("late", "a", "b") + Aim("early", "a", "c"));
    const auto procedural = rig.WithConstraints().Build();
    ASSERT_EQ(KindsOf(procedural.get()), "CC");
    EXPECT_EQ(std::get<JointConstraints>(procedural->items[0]).aimItems[0].constraint->GetName(),
              "late");
}

TEST(ProceduralJoints, TwoConstraintsOfWhichNoneAimsAreRefused) {
    EXPECT_EQ(BuildFailure(Orientation("o", "a", "b") + Orientation("p", "a", "c")),
              "joint a is affected by 2 constraints");
}

TEST(ProceduralJoints, ThreeConstraintsOnOneJointHaveNoOrder) {
    EXPECT_EQ(KindsOf(Orientation("o", "a", "b") + Orientation("p", "a", "c") +
                      Orientation("q", "a", "d")),
              "C");
}

TEST(ProceduralJoints, DrivenKeysAndConstraintsOnOneJointAreRefused) {
    EXPECT_EQ(BuildFailure(Orientation("o", "a", "b") + Driven("a", "c") +
                           Driven("a", "d", "scaleX") + Aim("p", "a", "b")),
              "joint a is affected by 2 constraints and 2 driven key clips");
    EXPECT_EQ(KindsOf(Orientation("o", "a", "b") + Driven("c", "a")), "CD")
        << "an input is not affected";
}

TEST(ProceduralJoints, FirstJointOfTheDocumentIsReported) {
    EXPECT_EQ(BuildFailure(Orientation("o", "c", "b") + Orientation("p", "c", "b") +
                           Orientation("q", "a", "b") + Orientation("r", "a", "b")),
              "joint a is affected by 2 constraints");
}

TEST(ProceduralJoints, ConstraintWaitsForTheDrivenTarget) {
    EXPECT_EQ(KindsOf(Orientation("o", "a", "b") + Driven("b", "c")), "DC");
}

TEST(ProceduralJoints, ConstraintWaitsForWhatMovesTheParentOfItsTarget) {
    EXPECT_EQ(KindsOf(Orientation("o", "a", "d|e") + Driven("d", "b")), "DC");
    EXPECT_EQ(KindsOf(Orientation("o", "a", "d|e") + Orientation("p", "d", "b")), "CC");
}

TEST(ProceduralJoints, ChainOfConstraintsGivesOneItemForEachLink) {
    EXPECT_EQ(KindsOf(Orientation("o", "a", "b") + Orientation("p", "b", "c")), "CC");
    EXPECT_EQ(KindsOf(Driven("a", "b") + Driven("b", "c") + Driven("c", "d")), "DDD");
}

TEST(ProceduralJoints, ThreeStagesOfKeysConstraintsAndKeys) {
    EXPECT_EQ(KindsOf(Driven("a", "b") + Orientation("o", "c", "a") + Driven("d", "c")), "DCD");
}

TEST(ProceduralJoints, CirclesOfEveryLengthAreRefused) {
    EXPECT_EQ(BuildFailure(Driven("a", "a")), kCircle);
    EXPECT_EQ(BuildFailure(Driven("a", "b") + Driven("b", "a")), kCircle);
    EXPECT_EQ(BuildFailure(Orientation("o", "a", "b") + Orientation("p", "b", "a")), kCircle);
    EXPECT_EQ(
        BuildFailure(Orientation("o", "a", "b") + Driven("b", "c") + Orientation("p", "c", "a")),
        kCircle);
    EXPECT_EQ(BuildFailure(Orientation("o", "a", "a")), kCircle)
        << "a constraint on its own target";
    EXPECT_EQ(BuildFailure(Constraint("orientationConstraint", "o", "||root", {"||root|a"})),
              kCircle)
        << "a parent that follows its child";
    EXPECT_EQ(BuildFailure(DrivenAnim("|keys_rotateX|rotateX", "rotateX", "|keys_rotateX|rotateX",
                                      "rotateX")),
              kCircle)
        << "a channel that drives itself";
}

TEST(ProceduralJoints, AimWaitsForItsUpObject) {
    const std::string aim = Constraint("aimConstraint", "aim", "||root|a", {"||root|b"},
                                       R"(<upobject name="||root|c" transform="rotate"/>)");
    EXPECT_EQ(KindsOf(aim + Driven("c", "d")), "DC");
    EXPECT_EQ(KindsOf(aim + Orientation("o", "c", "d")), "CC");
}

TEST(ProceduralJoints, AimThatNamesNoUpObjectIsRefused) {
    RigScene rig(kJoints + Aim("aim", "a", "b"));
    rig.WithConstraints().Get<VokAimConstraint>("aim").upMethod = AimUpMethod::ObjectRotation;
    EXPECT_EQ(rig.Failure(), "No world up object was found to get the path of. {|aim}");
}

TEST(ProceduralJoints, AimWhoseUpObjectIsGoneIsRefusedByItsBlock) {
    RigScene rig(kJoints + Aim("aim", "a", "b"));
    auto& aim = rig.WithConstraints().Get<VokAimConstraint>("aim");
    aim.upMethod = AimUpMethod::ObjectRotation;
    aim.upTarget.emplace(&aim);
    EXPECT_EQ(rig.Failure(), "constraint aim up object (<null>) not in skeleton");
}

TEST(ProceduralJoints, ConstraintWithoutTargetsHasNoRelations) {
    EXPECT_EQ(KindsOf(Constraint("scaleConstraint", "s", "||root|a", {})), "");
}

TEST(ProceduralJoints, ConstraintOnAPlainNodeIsRefused) {
    EXPECT_EQ(BuildFailure(R"(<scene name="props"><node name="box"/></scene>)" +
                           Constraint("scaleConstraint", "s", "|props|box", {"||root|a"})),
              "constraint s has an invalid constrained object (box)");
}

TEST(ProceduralJoints, ConstraintsOfOneStageAreOrderedByTypeThenByDocument) {
    RigScene rig(kJoints + Constraint("scaleConstraint", "s", "||root|a", {"||root|b"}) +
                 Constraint("translationConstraint", "t", "||root|c", {"||root|a"}) +
                 Constraint("translationConstraint", "u", "||root|d", {"||root|b"}));
    const auto procedural = rig.WithConstraints().Build();
    ASSERT_EQ(KindsOf(procedural.get()), "CC");
    const auto& items = std::get<JointConstraints>(procedural->items[0]);
    EXPECT_EQ(items.translationItems.size(), 1u);
    EXPECT_EQ(items.scaleItems.size(), 1u);
}

TEST(ProceduralJoints, AJointAndItsParentMayBeConstrainedInOneItem) {
    RigScene rig(kJoints + Orientation("o", "d", "a") +
                 Constraint("orientationConstraint", "p", "||root|d|e", {"||root|a"}));
    const auto procedural = rig.WithConstraints().Build();
    ASSERT_EQ(KindsOf(procedural.get()), "C");
    const auto& item = std::get<JointConstraints>(procedural->items[0]);
    EXPECT_EQ(item.constrainedJoints, (std::set<std::int32_t>{4, 5}));
    EXPECT_EQ(item.orientationItems.size(), 2u);
}

TEST(ProceduralJoints, AnAimWithAnUpObjectAloneConstrainsItsJointWithoutAnEntry) {
    // Nothing waits for it: its joint may be the up object of another aim of the same item.
    const std::string up = R"(<upobject name="||root|c" transform="rotate"/>)";
    RigScene rig(kJoints + Constraint("aimConstraint", "x", "||root|c", {}, up) +
                 Constraint("aimConstraint", "y", "||root|a", {"||root|b"}, up));
    const auto procedural = rig.WithConstraints().Build();
    ASSERT_EQ(KindsOf(procedural.get()), "C");
    const auto& item = std::get<JointConstraints>(procedural->items[0]);
    EXPECT_EQ(item.constrainedJoints, (std::set<std::int32_t>{1, 3}));
    EXPECT_EQ(item.targetJoints, (std::set<std::int32_t>{2, 3}));
    ASSERT_EQ(item.aimItems.size(), 1u);
    EXPECT_EQ(item.aimItems[0].constraint->GetName(), "y");
}

TEST(ProceduralJoints, TypesDecideWhichOfTwoFaultsIsReported) {
    // The translation constraint stands last in the document and is added first.
    EXPECT_EQ(BuildFailure(R"(<scene name="x"><node name="n"/></scene>)" +
                           Constraint("scaleConstraint", "s", "||root|a", {"|x|n"}) +
                           Constraint("translationConstraint", "t", "||root|b", {"|x|n"})),
              "constraint t (b)  has an invalid target (n) ");
}

TEST(ProceduralJoints, UnresolvedInputLeavesTheKeyOut) {
    EXPECT_EQ(KindsOf(DrivenAnim("||root|a", "rotateX", "||root|gone", "rotateX")), "");
    EXPECT_EQ(KindsOf(DrivenAnim("||root|a", "rotateX", "", "rotateX")), "");
}

TEST(ProceduralJoints, InputThatIsNoPathIsRefused) {
    EXPECT_EQ(BuildFailure(DrivenAnim("||root|a", "rotateX", "root", "rotateX")),
              "Unrecognised path format: root");
}

TEST(ProceduralJoints, ChannelsOfAStageStandInDocumentOrder) {
    RigScene rig(kJoints + Driven("c", "d", "rotateZ") + Driven("a", "b") + Driven("c", "b"));
    const auto procedural = rig.Build();
    ASSERT_EQ(KindsOf(procedural.get()), "D");
    std::vector<std::string> names;
    for (const DrivenOutput& output : std::get<DrivenKeys>(procedural->items[0]).GetOutputs())
        names.push_back(output.object->GetName() + std::to_string(output.component));
    EXPECT_EQ(names, (std::vector<std::string>{"c2", "a0", "c0"}));
}

TEST(ProceduralJoints, DrivenConstraintIsWrittenEvenWithoutTheFlag) {
    const std::string body =
        Orientation("o", "a", "b") + DrivenAnim("|o", "weight", "||root|c", "rotateX");
    EXPECT_EQ(KindsOf(body, false), "DC") << "the driven key brings the constraint in";
}

TEST(ProceduralJoints, ChannelThatIsDrivenItselfNeedsNoInput) {
    // The second anim's channel is reached as a target; it is no driven key and adds nothing.
    EXPECT_EQ(KindsOf(R"(<anim name="walk" target="||root|b"><animChannel name="rx"
        channel="rotateX"/></anim>)" +
                      DrivenAnim("|walk|rx", "speed", "||root|c", "rotateX")),
              "D");
}

TEST(ProceduralJoints, BlendFoldsItsDrivenChannels) {
    RigScene rig(kJoints + DrivenAnim("|mix", "input0", "||root|b", "rotateX") +
                 DrivenAnim("|mix", "input1", "||root|c", "rotateX") + Blend("||root|a"));
    const auto procedural = rig.Build();
    ASSERT_EQ(KindsOf(procedural.get()), "D");
    const auto& outputs = std::get<DrivenKeys>(procedural->items[0]).GetOutputs();
    ASSERT_EQ(outputs.size(), 1u);
    EXPECT_EQ(outputs.front().object, &rig.Get<VokJoint>("a"));
    EXPECT_EQ(outputs.front().type, DrivenChannelType::Rotation);
    EXPECT_EQ(outputs.front().curves.size(), 2u);
    EXPECT_EQ(procedural->externalOutputs.GetSorted().size(), 2u)
        << "the blend's inputs stay in the table";
}

TEST(ProceduralJoints, AChainOfBlendsTakesTimeInProportionToItsLength) {
    // At each of the stages every output goes on by one blend: step by step half a thousand million
    // moves, many minutes, far past the limit of a test.
    constexpr int kLength = 30000;
    std::string body = kJoints;
    for (int i = 0; i < kLength; ++i) {
        const std::string blend = "m" + std::to_string(i);
        const std::string target = i == 0 ? Joint("a") : "|m" + std::to_string(i - 1);
        body += "<blend name=\"" + blend + "\" target=\"" + target + "\" channel=\"rotateX\"/>" +
                DrivenAnim("|" + blend, "input", "||root|b", "rotateX");
    }
    RigScene rig(body);
    const auto procedural = rig.Build();
    ASSERT_EQ(KindsOf(procedural.get()), "D");
    const auto& outputs = std::get<DrivenKeys>(procedural->items[0]).GetOutputs();
    EXPECT_EQ(outputs.size(), static_cast<std::size_t>(kLength));
    const VokJoint* target = &rig.Get<VokJoint>("a");
    for (const DrivenOutput& output : outputs) ASSERT_EQ(output.object, target);
}

TEST(ProceduralJoints, BlendWithNothingBeforeItIsRefused) {
    EXPECT_EQ(BuildFailure(Blend("||root|a")),
              "Found an animation blend which doesn't have any preceeding update. This is not "
              "currently supported but could be if required.");
}

TEST(ProceduralJoints, BlendBehindConstraintsIsRefused) {
    EXPECT_EQ(BuildFailure(Blend("||root|a") + Orientation("o", "b", "c")),
              "Found an animation blend which doesn't have driven key input. This is not currently "
              "supported but could be if required.");
}

TEST(ProceduralJoints, BlendBelowAnotherObjectIsNotLookedFor) {
    EXPECT_EQ(KindsOf("<scene name=\"more\">" + Blend("||root|a") + "</scene>"), "");
}

TEST(ProceduralJoints, WithoutDrivenKeysBlendsAreNotLookedAt) {
    EXPECT_EQ(RigScene(kJoints + Blend("||root|a")).WithoutDrivenKeys().Build(), nullptr);
}

TEST(ProceduralJoints, SkeletonIsLaidOutAsWithoutThem) {
    const std::string body =
        kJoints + R"(<objset name="skelLodSet1" type="set"><member path="||root|a" membership=""/>
        </objset>)" +
        Driven("b", "c");
    std::string with = RigScene(body).Bytes(false);
    const std::string without = RigScene(body).WithoutDrivenKeys().Bytes(false);
    const SkeletonFileReader file(with, false);
    EXPECT_EQ(file.procedural, (without.size() + 15) / 16 * 16);
    EXPECT_EQ(file.proceduralEnd, with.size());
    with.replace(0x1C, 8, 8, '\0');
    EXPECT_EQ(ToHex(with.substr(0, without.size())), ToHex(without));
}

TEST(ProceduralJoints, ProductionRigReadsBackFromBothForms) {
    std::string body = "<scene><joint name=\"root\">";
    for (int i = 0; i < 127; ++i) body += "<joint name=\"j" + std::to_string(i) + "\"/>";
    body += "</joint></scene>";
    const char* channels[] = {"rotateX", "rotateY", "rotateZ", "translateX", "scaleY"};
    for (int i = 0; i < 2000; ++i)
        body += DrivenAnim(Joint("j" + std::to_string(i % 40)), channels[i % 5],
                           Joint("j" + std::to_string(40 + i % 27)), channels[i % 3]);
    for (int i = 0; i < 300; ++i)
        body += Constraint("parentConstraint", "c" + std::to_string(i),
                           Joint("j" + std::to_string(70 + i % 57)), {Joint("j0"), Joint("j1")},
                           "<offset><translation>1 2 3</translation></offset>"
                           "<offset><translation>4 5 6</translation></offset>");
    RigScene rig(body);
    rig.WithConstraints();
    for (const bool bigEndian : {false, true}) {
        const ProceduralFileReader file(rig.Bytes(bigEndian), bigEndian);
        EXPECT_EQ(file.kinds, (std::vector<std::uint32_t>{0, 1}));
        EXPECT_EQ(file.ReadConstraints(1).parent.size(), 600u);
        std::size_t curves = 0;
        for (const auto& output : file.ReadKeys(0).outputs) curves += output.curves.size();
        EXPECT_EQ(curves, 2000u);
    }
}

TEST(ProceduralJoints, ExampleBakesWithItsConstraintsAndWithout) {
    std::ifstream stream(std::string(RIGBAKE_SOURCE_ROOT) + "/Examples/biped-procedural.qeli");
    const std::string document{std::istreambuf_iterator<char>(stream),
                               std::istreambuf_iterator<char>()};
    const std::size_t begin = document.find("<scene>");
    const std::string body = document.substr(begin, document.find("</QEL>") - begin);
    EXPECT_EQ(KindsOf(RigScene(body, "hero:Hips").Build().get()), "DD");
    RigScene rig(body, "hero:Hips");
    const ProceduralFileReader file(rig.WithConstraints().Bytes(true), true);
    EXPECT_EQ(file.kinds, (std::vector<std::uint32_t>{0, 0, 1, 1}));
    ASSERT_EQ(file.ReadKeys(0).outputs.size(), 1u) << "the blend";
    EXPECT_EQ(file.ReadKeys(0).outputs[0].curves.size(), 2u);
    EXPECT_EQ(file.ReadKeys(1).outputs.size(), 3u);
    EXPECT_EQ(file.ReadConstraints(2).parent.size(), 4u);
    EXPECT_EQ(file.ReadConstraints(3).aim.size(), 2u);
}
