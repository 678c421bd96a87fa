#include "VoktRigbake/ProceduralTestTools.h"

#include <VokLib/Objects/Constraints/VokAimConstraint.h>
#include <VokLib/Objects/Constraints/VokOrientationConstraint.h>
#include <VokLib/Objects/Constraints/VokScaleConstraint.h>
#include <VokLib/Objects/Constraints/VokSpringConstraint.h>
#include <VokLib/Objects/Constraints/VokTranslationConstraint.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Tree/VokNode.h>
#include <gtest/gtest.h>

namespace {

constexpr const char* kScene = R"(<scene><joint name="root"><joint name="a"/><joint name="b"/>
    <joint name="c"/><joint name="d"/></joint></scene>
    <scene name="apart"><joint name="outside"/><node name="plain"/></scene>)";

using Flags = std::vector<std::uint32_t>;

class JointConstraintsTest : public testing::Test {
  protected:
    ~JointConstraintsTest() noexcept override = default;

    /// A new constraint of the scene; null names stand for links that lead nowhere.
    template <class T>
    T& Make(const char* name, const char* constrained, const std::vector<const char*>& targets) {
        auto* constraint = new T;
        rig.World().AddChild(constraint);
        constraint->SetName(name);
        if (constrained != nullptr) constraint->constrained.SetTarget(&Find(constrained));
        for (const char* target : targets) {
            constraint->AddTarget();
            if (target != nullptr)
                constraint->GetTarget(constraint->GetTargetCount() - 1)
                    .object.SetTarget(&Find(target));
        }
        return *constraint;
    }

    VokAimConstraint& MakeAim(const char* constrained, const char* target, const char* upObject) {
        auto& aim = Make<VokAimConstraint>("aim", constrained, {target});
        aim.upMethod = AimUpMethod::ObjectTranslation;
        aim.upTarget.emplace(&aim);
        if (upObject != nullptr) aim.upTarget->SetTarget(&Find(upObject));
        return aim;
    }

    VokObj& Find(std::string_view name) {
        for (VokItHierarchy it(&rig.World()); !it.AtEnd(); it.Next())
            if (it.Current()->GetName() == name) return *it.Current();
        throw std::runtime_error("no such object");
    }

    void Add(const VokConstraint& constraint) { constraints.AddConstraint(&constraint, rig.index); }
    std::string Refusal(const VokConstraint* constraint) {
        return FailureText([&] { constraints.AddConstraint(constraint, rig.index); });
    }
    std::string Refusal(const VokConstraint& constraint) { return Refusal(&constraint); }

    RigScene rig{kScene};
    JointConstraints constraints;
};

Flags FlagsOf(const std::vector<ConstraintItem>& items) {
    Flags flags;
    for (const ConstraintItem& item : items) flags.push_back(item.flags);
    return flags;
}

}  // namespace

TEST_F(JointConstraintsTest, StartsEmpty) {
    EXPECT_TRUE(constraints.IsEmpty());
}

TEST_F(JointConstraintsTest, OneTargetIsFirstAndLast) {
    Add(Make<VokTranslationConstraint>("c", "a", {"b"}));
    EXPECT_EQ(FlagsOf(constraints.translationItems), Flags{3});
    EXPECT_FALSE(constraints.IsEmpty());
}

TEST_F(JointConstraintsTest, EveryTargetIsAnItem) {
    const auto& two = Make<VokScaleConstraint>("two", "a", {"b", "c"});
    Add(two);
    Add(Make<VokScaleConstraint>("three", "d", {"b", "c", "root"}));
    EXPECT_EQ(FlagsOf(constraints.scaleItems), (Flags{1, 2, 1, 0, 2}));
    EXPECT_EQ(constraints.scaleItems[1].targetIndex, 1u);
    EXPECT_EQ(constraints.scaleItems[1].constraint, &two);
    EXPECT_EQ(constraints.constrainedJoints, (std::set{1, 4}));
    EXPECT_EQ(constraints.targetJoints, (std::set{0, 2, 3}));
}

TEST_F(JointConstraintsTest, ConstraintWithoutTargetsHasNoItems) {
    Add(Make<VokSpringConstraint>("spring", "a", {}));
    EXPECT_TRUE(constraints.IsEmpty());
    EXPECT_EQ(constraints.constrainedJoints, std::set{1});
}

TEST_F(JointConstraintsTest, OtherTypesAreRefused) {
    EXPECT_EQ(Refusal(Make<VokSpringConstraint>("spring", "a", {"b"})),
              "Unsupported constraint spring");
}

TEST_F(JointConstraintsTest, NullIsAnInternalFault) {
    EXPECT_EQ(Refusal(nullptr), "Internal error - please report as a bug");
}

TEST_F(JointConstraintsTest, OnlyJointsAreConstrained) {
    EXPECT_EQ(Refusal(Make<VokScaleConstraint>("c", nullptr, {"b"})),
              "constraint c has an invalid constrained object (<null>)");
    EXPECT_EQ(Refusal(Make<VokScaleConstraint>("c", "plain", {"b"})),
              "constraint c has an invalid constrained object (plain)");
}

TEST_F(JointConstraintsTest, OnlyJointsAreTargets) {
    EXPECT_EQ(Refusal(Make<VokScaleConstraint>("c", "a", {"b", nullptr})),
              "constraint c (a)  has an invalid target (<null>) ");
    EXPECT_EQ(Refusal(Make<VokScaleConstraint>("c", "a", {"plain"})),
              "constraint c (a)  has an invalid target (plain) ");
}

TEST_F(JointConstraintsTest, NoJointFollowsItself) {
    EXPECT_EQ(Refusal(Make<VokScaleConstraint>("c", "a", {"b", "a"})),
              "constraint c (a) references itself ");
}

TEST_F(JointConstraintsTest, TargetsAreCheckedOneByOne) {
    EXPECT_EQ(Refusal(Make<VokScaleConstraint>("c", "a", {"a", "plain"})),
              "constraint c (a) references itself ");
    EXPECT_EQ(Refusal(Make<VokScaleConstraint>("c", "a", {"plain", "a"})),
              "constraint c (a)  has an invalid target (plain) ");
}

TEST_F(JointConstraintsTest, NoTargetIsDrivenInTheSameBlock) {
    Add(Make<VokScaleConstraint>("first", "a", {"b"}));
    EXPECT_EQ(Refusal(Make<VokScaleConstraint>("second", "c", {"d", "a"})),
              "constraint second (c)  has a target (a) that is constrained by another constraint");
}

TEST_F(JointConstraintsTest, NoDrivenJointIsReadInTheSameBlock) {
    Add(Make<VokScaleConstraint>("first", "a", {"b"}));
    EXPECT_EQ(Refusal(Make<VokScaleConstraint>("second", "b", {"c"})),
              "constraint second has a constrained object (b) that is used as a target by another "
              "constraint");
}

TEST_F(JointConstraintsTest, DrivenTargetIsReportedBeforeReadJoint) {
    Add(Make<VokScaleConstraint>("first", "a", {"b"}));
    EXPECT_EQ(Refusal(Make<VokScaleConstraint>("second", "b", {"a"})),
              "constraint second (b)  has a target (a) that is constrained by another constraint");
}

TEST_F(JointConstraintsTest, BlocksKnowNothingOfEachOther) {
    Add(Make<VokScaleConstraint>("first", "a", {"b"}));
    JointConstraints later;
    later.AddConstraint(&Make<VokScaleConstraint>("second", "b", {"a"}), rig.index);
    EXPECT_FALSE(later.IsEmpty());
}

TEST_F(JointConstraintsTest, UpObjectMustBeInTheSkeleton) {
    EXPECT_EQ(Refusal(MakeAim("a", "b", nullptr)),
              "constraint aim up object (<null>) not in skeleton");
    EXPECT_EQ(Refusal(MakeAim("a", "b", "plain")),
              "constraint aim up object (plain) not in skeleton");
    EXPECT_EQ(Refusal(MakeAim("a", "b", "outside")),
              "constraint aim up object (outside) not in skeleton");
}

TEST_F(JointConstraintsTest, UpObjectIsReadButNoTarget) {
    Add(Make<VokScaleConstraint>("first", "c", {"d"}));
    Add(MakeAim("a", "b", "c"));
    EXPECT_EQ(constraints.targetJoints, (std::set{2, 3, 4}));
    Add(Make<VokScaleConstraint>("second", "c", {"d"}));
    EXPECT_EQ(constraints.scaleItems.size(), 2u);
}

TEST_F(JointConstraintsTest, GlobalVectorNeedsNoUpObject) {
    auto& aim = Make<VokAimConstraint>("aim", "a", {"b"});
    aim.upMethod = AimUpMethod::GlobalVector;
    Add(aim);
    EXPECT_EQ(FlagsOf(constraints.aimItems), Flags{3});
}

TEST_F(JointConstraintsTest, JointsOutsideTheSkeletonAreRefused) {
    EXPECT_EQ(Refusal(Make<VokScaleConstraint>("c", "outside", {"a"})),
              "Constrained object outside is not a joint in the skeleton");
    constraints = {};
    EXPECT_EQ(Refusal(Make<VokScaleConstraint>("c", "a", {"b", "outside"})),
              "Constrained object outside is not a joint in the skeleton");
}

TEST_F(JointConstraintsTest, InterpolationOtherThanAverageIsAdded) {
    auto& constraint = Make<VokOrientationConstraint>("c", "a", {"b"});
    constraint.orientInterpolation = OrientInterpolation::NoFlip;
    Add(constraint);
    EXPECT_EQ(constraints.orientationItems.size(), 1u);
}
