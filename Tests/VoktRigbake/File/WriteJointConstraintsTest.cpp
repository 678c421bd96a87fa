#include "File/WriteProceduralJoints.h"
#include "VoktRigbake/ProceduralFileReader.h"
#include "VoktRigbake/ProceduralTestTools.h"

#include <BiffLib/CBlock.h>
#include <VokLib/Base/VokMath.h>
#include <VokLib/Objects/Constraints/VokAimConstraint.h>
#include <VokLib/Objects/Constraints/VokOrientationConstraint.h>
#include <VokLib/Objects/Constraints/VokParentConstraint.h>
#include <VokLib/Objects/Constraints/VokScaleConstraint.h>
#include <VokLib/Objects/Constraints/VokTranslationConstraint.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <gtest/gtest.h>

namespace {

const std::string kJoints = R"(<scene><joint name="root"><joint name="a"/><joint name="b"/>
    <joint name="c"/><joint name="d"/><joint name="e">
    <rotAxisEul rotOrd="yzx">0.1 0.2 0.3</rotAxisEul></joint><joint name="f"/></joint></scene>)";

constexpr const char* kBlock = R"(<scene><joint name="root"><joint name="a"/><joint name="b"/>
    <joint name="c"/><joint name="d"/><joint name="e"/><joint name="f"/></joint></scene>
    <parentConstraint name="p" constrain="||root|e">
    <offset><translation>1 2 3</translation><rotEul rotOrd="xyz">0 0 0</rotEul></offset>
    <offset><translation>4 5 6</translation><rotEul rotOrd="xyz">0 0 0</rotEul></offset>
    <target name="||root" weight="0.25"/><target name="||root|f" weight="0.75"/>
    </parentConstraint>
    <aimConstraint name="x" constrain="||root|d"><aim>0 0 1</aim><up>0 1 0</up>
    <globalup>1 0 0</globalup><upobject name="||root|a" transform="rotate"/>
    <target name="||root|f" weight="1"/></aimConstraint>
    <scaleConstraint name="s" constrain="||root|c"><offset>4 5 6</offset>
    <target name="||root|f" weight="1"/></scaleConstraint>
    <orientationConstraint name="o" constrain="||root|b"><rotEul>1 1 1</rotEul>
    <target name="||root" weight="0.5"/></orientationConstraint>
    <translationConstraint name="t" constrain="||root|a"><offset>1 2 3</offset>
    <target name="||root|f" weight="1"/></translationConstraint>)";

using Slots = std::vector<std::uint32_t>;

/// A block of the constraints of these names, whatever their order in the scene asks for.
struct HandMade {
    explicit HandMade(const std::string& body) : rig(body) {}

    template <class T>
    void Add(const char* name) {
        constraints.AddConstraint(&rig.Get<T>(name), rig.index);
    }

    /// From the procedural block to its end.
    std::string Bytes(bool bigEndian) {
        ProceduralJoints procedural;
        procedural.items.emplace_back(constraints);
        Biff::CBlock block;
        WriteProceduralJoints(procedural, *rig.skeleton, block);
        return WriteBytes(block, bigEndian ? Biff::kBigEndian : Biff::kLittleEndian);
    }
    std::string Failure() {
        return FailureText([this] { Bytes(false); });
    }
    ProceduralFileReader::Constraints Read(const std::string& fault = "") {
        ProceduralJoints procedural;
        procedural.items.emplace_back(constraints);
        Biff::CBlock block;
        WriteSkeleton(*rig.skeleton, block, &procedural);
        return ProceduralFileReader(WriteBytes(block, 0, fault), false).ReadConstraints(0);
    }

    RigScene rig;
    JointConstraints constraints;
};

struct FullBlock : HandMade {
    FullBlock() : HandMade(kBlock) {
        Add<VokParentConstraint>("p");
        Add<VokAimConstraint>("x");
        Add<VokScaleConstraint>("s");
        Add<VokOrientationConstraint>("o");
        Add<VokTranslationConstraint>("t");
    }
};

std::string AimDocument(const std::string& contents) {
    return kJoints + Constraint("aimConstraint", "x", "||root|d", {"||root|f"}, contents);
}

}  // namespace

TEST(JointConstraintsFile, WholeBlockLittleEndian) {
    EXPECT_EQ(ToHex(FullBlock().Bytes(false)),
              ToHex(FromHex("50 4A 30 31  6C 01 00 00  01 00 00 00  18 00 00 00"
                            "18 00 00 00  00 00 00 00  00 00 00 00  00 00 00 00"
                            "00 00 00 00  01 00 00 00  08 00 00 00  00 00 00 00"
                            "4A 43 30 31  3C 01 00 00  28 00 00 00  05 00 03 00"
                            "30 00 00 00  3C 00 00 00  58 00 00 00  74 00 00 00"
                            "C0 00 00 00  01 00 01 00  01 00 01 00  02 00 00 00"
                            "01 00 02 00  03 00 04 00  05 00 00 00  01 00 06 00"
                            "03 00 00 00  01 00 00 00  05 00 00 00  00 00 00 3F"
                            "03 00 00 00  00 00 00 00  07 00 00 00  00 00 80 3F"
                            "00 00 80 3F  00 00 00 40  00 00 40 40  00 00 40 40"
                            "03 00 00 00  02 00 00 00  07 00 00 00  00 00 80 3F"
                            "00 00 80 40  00 00 A0 40  00 00 C0 40  00 00 00 00"
                            "03 00 00 00  03 00 00 00  07 00 00 00  00 00 80 3F"
                            "00 00 00 00  00 00 00 00  00 00 80 3F  00 00 80 3F"
                            "00 00 00 00  00 00 80 3F  00 00 00 00  00 00 00 00"
                            "00 00 80 3F  00 00 00 00  00 00 00 00  00 00 00 00"
                            "02 00 00 00  00 00 00 00  00 00 00 00  00 00 00 00"
                            "01 00 00 00  04 00 00 00  05 00 00 00  00 00 80 3E"
                            "00 00 80 3F  00 00 00 40  00 00 40 40  00 00 80 3F"
                            "00 00 00 00  00 00 00 00  00 00 00 00  00 00 80 3F"
                            "02 00 00 00  04 00 00 00  07 00 00 00  00 00 40 3F"
                            "00 00 80 40  00 00 A0 40  00 00 C0 40  00 00 80 3F"
                            "00 00 00 00  00 00 00 00  00 00 00 00  00 00 80 3F")));
}

TEST(JointConstraintsFile, WholeBlockBigEndian) {
    EXPECT_EQ(ToHex(FullBlock().Bytes(true)),
              ToHex(FromHex("50 4A 30 31  00 00 01 6C  00 00 00 01  00 00 00 18"
                            "00 00 00 18  00 00 00 00  00 00 00 00  00 00 00 00"
                            "00 00 00 00  00 00 00 01  00 00 00 08  00 00 00 00"
                            "4A 43 30 31  00 00 01 3C  00 00 00 28  00 05 00 03"
                            "00 00 00 30  00 00 00 3C  00 00 00 58  00 00 00 74"
                            "00 00 00 C0  00 01 00 01  00 01 00 01  00 02 00 00"
                            "00 01 00 02  00 03 00 04  00 05 00 00  00 01 00 06"
                            "00 00 00 03  00 00 00 01  00 00 00 05  3F 00 00 00"
                            "00 00 00 03  00 00 00 00  00 00 00 07  3F 80 00 00"
                            "3F 80 00 00  40 00 00 00  40 40 00 00  40 40 00 00"
                            "00 00 00 03  00 00 00 02  00 00 00 07  3F 80 00 00"
                            "40 80 00 00  40 A0 00 00  40 C0 00 00  00 00 00 00"
                            "00 00 00 03  00 00 00 03  00 00 00 07  3F 80 00 00"
                            "00 00 00 00  00 00 00 00  3F 80 00 00  3F 80 00 00"
                            "00 00 00 00  3F 80 00 00  00 00 00 00  00 00 00 00"
                            "3F 80 00 00  00 00 00 00  00 00 00 00  00 00 00 00"
                            "00 02 00 00  00 00 00 00  00 00 00 00  00 00 00 00"
                            "00 00 00 01  00 00 00 04  00 00 00 05  3E 80 00 00"
                            "3F 80 00 00  40 00 00 00  40 40 00 00  3F 80 00 00"
                            "00 00 00 00  00 00 00 00  00 00 00 00  3F 80 00 00"
                            "00 00 00 02  00 00 00 04  00 00 00 07  3F 40 00 00"
                            "40 80 00 00  40 A0 00 00  40 C0 00 00  3F 80 00 00"
                            "00 00 00 00  00 00 00 00  00 00 00 00  3F 80 00 00")));
}

TEST(JointConstraintsFile, JointThatIsDrivenAndReadIsAddressedByItsFirstEntry) {
    const auto read = FullBlock().Read();
    EXPECT_EQ(read.constrained, (Slots{1, 2, 3, 4, 5}));
    EXPECT_EQ(read.targets, (Slots{0, 1, 6}));
    EXPECT_EQ(read.aim.at(0).upObject, 0u);
    EXPECT_EQ(read.aim.at(0).worldUp, 2u);
}

TEST(JointConstraintsFile, TargetsOfAConstraintAreFlaggedFirstAndLast) {
    HandMade made(kJoints + Constraint("scaleConstraint", "s", "||root|a",
                                       {"||root|b", "||root|c", "||root|d"}));
    made.Add<VokScaleConstraint>("s");
    const auto read = made.Read();
    ASSERT_EQ(read.scale.size(), 3u);
    EXPECT_EQ(read.scale[0].flags, 1u);
    EXPECT_EQ(read.scale[1].flags, 0u);
    EXPECT_EQ(read.scale[2].flags, 2u);
    EXPECT_EQ(read.scale[2].target, 3u);
    EXPECT_EQ(read.scale[2].constrained, 0u);
}

TEST(JointConstraintsFile, GlobalVectorHasNoUpObject) {
    HandMade made(AimDocument("<globalup>0 1 0</globalup>"));
    made.Add<VokAimConstraint>("x");
    const auto read = made.Read();
    EXPECT_EQ(read.aim.at(0).worldUp, 0u);
    EXPECT_EQ(read.aim.at(0).upObject, 0xFFFFu);
}

TEST(JointConstraintsFile, UpObjectsTranslationIsCodeOne) {
    HandMade made(AimDocument(R"(<upobject name="||root|b" transform="translate"/>)"));
    made.Add<VokAimConstraint>("x");
    const auto read = made.Read();
    EXPECT_EQ(read.aim.at(0).worldUp, 1u);
    EXPECT_EQ(read.aim.at(0).upObject, 1u);
    EXPECT_EQ(read.targets, (Slots{2, 6}));
}

TEST(JointConstraintsFile, AimWithoutAWorldUpMethodFailsWhenItIsWritten) {
    {
        HandMade made(AimDocument(""));
        made.Add<VokAimConstraint>("x");
        EXPECT_EQ(made.Failure(), "constraint x has an invalid WorldUpMethod");
    }
    EXPECT_EQ(RigScene(AimDocument("")).WithConstraints().Failure(),
              "constraint x has an invalid WorldUpMethod");
}

TEST(JointConstraintsFile, UpObjectThatIsGoneFailsWhenItIsWritten) {
    HandMade made(AimDocument(R"(<upobject name="||root|b" transform="translate"/>)"));
    made.Add<VokAimConstraint>("x");
    made.rig.Get<VokAimConstraint>("x").upTarget.reset();
    EXPECT_EQ(made.Failure(), "constraint x up object not in skeleton");
}

TEST(JointConstraintsFile, UpObjectThatHasNoSlotIsAnInternalFault) {
    HandMade made(AimDocument(R"(<upobject name="||root|b" transform="translate"/>)"));
    made.Add<VokAimConstraint>("x");
    made.rig.Get<VokAimConstraint>("x").upTarget->SetTarget(&made.rig.Get<VokJoint>("c"));
    EXPECT_EQ(made.Failure(), "Internal error - please report as a bug");
}

TEST(JointConstraintsFile, JointsThatHaveNoSlotAreAnInternalFault) {
    for (const bool constrained : {false, true}) {
        HandMade made(kJoints + Constraint("scaleConstraint", "s", "||root|a", {"||root|b"}));
        made.Add<VokScaleConstraint>("s");
        auto& constraint = made.rig.Get<VokScaleConstraint>("s");
        (constrained ? constraint.constrained : constraint.GetTarget(0).object)
            .SetTarget(&made.rig.Get<VokJoint>("c"));
        EXPECT_EQ(made.Failure(), "Internal error - please report as a bug");
    }
}

TEST(JointConstraintsFile, InterpolationOtherThanAverageFailsWhenItIsWritten) {
    const std::string document =
        kJoints + Constraint("orientationConstraint", "o", "||root|a", {"||root|b"},
                             "<orientInterpolation>noFlip</orientInterpolation>");
    {
        HandMade made(document);
        made.Add<VokOrientationConstraint>("o");
        EXPECT_EQ(made.Failure(), "unsupported orientation constraint interpolation encountered");
    }
    EXPECT_EQ(RigScene(document).WithConstraints().Failure(),
              "unsupported orientation constraint interpolation encountered");
    EXPECT_EQ(KindsOf(RigScene(document).WithConstraints().Build().get()), "C");
}

TEST(JointConstraintsFile, ParentRotationHasTheRotationAxisInFront) {
    HandMade made(kJoints + Constraint("parentConstraint", "p", "||root|e", {"||root|a"},
                                       "<offset><translation>1 2 3</translation>"
                                       "<rotEul rotOrd=\"zxy\">0.5 0.6 0.7</rotEul></offset>"));
    made.Add<VokParentConstraint>("p");
    const auto read = made.Read();
    const VokQuaternion q =
        VokMath::Multiply(VokMath::EulerToQuaternion({0.1f, 0.2f, 0.3f, RotationOrder::yzx}),
                          VokMath::EulerToQuaternion({0.5f, 0.6f, 0.7f, RotationOrder::zxy}));
    EXPECT_EQ(read.parent.at(0).values, (std::vector<float>{1, 2, 3, 1, q.x, q.y, q.z, q.w}));
}

TEST(JointConstraintsFile, ParentTargetWithoutAnOffsetIsRefused) {
    EXPECT_EQ(RigScene(kJoints + Constraint("parentConstraint", "p", "||root|e",
                                            {"||root|a", "||root|b"}, "<offset/>"))
                  .WithConstraints()
                  .Failure(),
              "Out of range access of parent constraint target offsets. {|p}");
}

TEST(JointConstraintsFile, EmptyListsPointAtTheNextPart) {
    HandMade made(kJoints + Constraint("scaleConstraint", "s", "||root|a", {"||root|b"}));
    made.Add<VokScaleConstraint>("s");
    const std::string bytes = made.Bytes(false);
    // The block stands behind 64 bytes of "PJ01"; its joints at 48, the scale items at 64.
    const auto at = [&bytes](std::size_t place) {
        return static_cast<unsigned char>(bytes[0x30 + place]) + place;
    };
    EXPECT_EQ(at(0x08), 0x30u);
    EXPECT_EQ(at(0x10), 0x40u) << "orientation";
    EXPECT_EQ(at(0x14), 0x40u) << "translation";
    EXPECT_EQ(at(0x18), 0x40u) << "scale";
    EXPECT_EQ(at(0x1C), 0x60u) << "aim";
    EXPECT_EQ(at(0x20), 0x60u) << "parent";
    EXPECT_EQ(at(0x04), 0x60u) << "end";
}

TEST(JointConstraintsFile, CountsKeepTheirLow16Bits) {
    HandMade made(kJoints + Constraint("scaleConstraint", "s", "||root|a", {"||root|b"}));
    made.Add<VokScaleConstraint>("s");
    made.constraints.scaleItems.resize(0x10001, made.constraints.scaleItems.front());
    EXPECT_EQ(made.Read("items[0].aims leads to 0x200290, not to 0x0290").scale.size(), 1u);
}
