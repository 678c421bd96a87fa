#include "EndToEnd/ProgramRun.h"
#include "Runtime/SkeletonSample.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace {

constexpr const char* kSample = RIGBAKE_SOURCE_ROOT "/Fuzz/Seeds/Skeleton/parts-little";
constexpr const char* kSampleNames = RIGBAKE_SOURCE_ROOT "/Tests/Documents/skeleton-parts.qeli";

constexpr const char* kJoints = R"(<scene><joint name="root"><joint name="a"/><joint name="b"/>
    <joint name="t"/><joint name="u"/><joint name="v"/></joint></scene>)";

std::string Orientation(const std::string& joint, const std::vector<std::string>& targets) {
    std::string text = "<orientationConstraint name=\"c\" constrain=\"||root|" + joint + "\">";
    for (const std::string& target : targets)
        text += "<target name=\"||root|" + target + "\" weight=\"1\"/>";
    return text + "</orientationConstraint>";
}

std::string Driven(const std::string& joint, const std::string& input) {
    return "<anim name=\"k\" target=\"||root|" + joint +
           "\"><animChannel name=\"k\" channel=\"translateX\" inputObject=\"||root|" + input +
           "\" inputChannel=\"scaleX\"><animData interp=\"QELCurve\" numKeys=\"2\" keyStride=\"4\">"
           "<keyValues>0 1 0 0 0 0 0 0</keyValues><keyTimes>0 1</keyTimes></animData>"
           "</animChannel></anim>";
}

class SkelDiffOrder : public testing::Test {
  protected:
    /// What becomes of two scenes that have the same joints: everything behind the line on the
    /// signature. Status and words agree.
    std::string Differences(const std::string& before, const std::string& after) const {
        Bake("a", before);
        Bake("b", after);
        return Diff("a", "b", "a.qeli");
    }
    std::string Diff(const std::string& a, const std::string& b, const std::string& names) const {
        const ProgramResult run = folder.Run("skel", {"diff", a, b, "--names", names});
        EXPECT_EQ(run.errors, "");
        EXPECT_EQ(run.status, WithoutBanner(run.output) == "no differences\n" ? 0 : 1);
        return WithoutBanner(run.output);
    }
    void Bake(const std::string& name, const std::string& procedural) const {
        folder.WriteFile(name + ".qeli", Document(kJoints + procedural));
        const ProgramResult run =
            folder.Rigbake({"-in", name + ".qeli", "-out", name, "-ojc", "true"});
        ASSERT_EQ(run.status, 0) << run.output;
    }
    /// The sample file is compared with what `change` makes of it.
    template <class Change>
    std::string DifferencesOfSample(const Change& change) const {
        SkeletonSample sample = SkeletonSample::Load("parts-little");
        change(sample);
        folder.WriteFile("changed", sample.Bytes());
        EXPECT_EQ(folder.Run("skel", {"check", "changed"}).output, "changed: OK\n");
        return Diff(kSample, "changed", kSampleNames);
    }
    /// Of the item with five constraints, free to be changed.
    template <class T>
    static T* Free(const T* table) {
        return const_cast<T*>(table);
    }
    static skeleton_constraint* Belt(const SkeletonSample& sample) {
        return Free(skeleton_orientations(&sample.Constraints(2)));
    }

    RunFolder folder;
};

}  // namespace

TEST_F(SkelDiffOrder, AConstraintThatFallsInTwoIsTold) {
    EXPECT_EQ(DifferencesOfSample([](SkeletonSample& sample) {
                  Belt(sample)[0].flags = 3;
                  Belt(sample)[1].flags = 1;
              }),
              "order of evaluation 1\n"
              "  ! orientation of Belt by Arm:\n"
              "      item 2, constraint 0, target 1\n"
              "      item 2, constraint 1, target 0\n");
}

TEST_F(SkelDiffOrder, EveryGroupingOfTargetsIsAnother) {
    const auto group = [this](const std::string& name, const std::vector<std::uint32_t>& flags) {
        SkeletonSample sample = SkeletonSample::Load("parts-little");
        for (std::size_t i = 0; i < 3; ++i) Belt(sample)[i].flags = flags[i];
        folder.WriteFile(name, sample.Bytes());
    };
    group("one", {1, 0, 2});
    group("first", {3, 1, 2});
    group("last", {1, 2, 3});
    group("three", {3, 3, 3});
    const std::vector<std::string> names = {"one", "first", "last", "three"};
    for (const std::string& a : names)
        for (const std::string& b : names)
            EXPECT_EQ(Diff(a, b, kSampleNames) == "no differences\n", a == b) << a << " " << b;
}

TEST_F(SkelDiffOrder, TargetsInAnotherOrderAreTold) {
    const auto order = [](const std::vector<std::string>& targets) {
        return Orientation("a", targets);
    };
    EXPECT_EQ(Differences(order({"t", "u", "b"}), order({"b", "t", "u"})),
              "order of evaluation 1\n"
              "  ! orientation of a by b:\n"
              "      item 0, constraint 0, target 2\n"
              "      item 0, constraint 0, target 0\n");
}

TEST_F(SkelDiffOrder, WhatKeepsItsPlaceAndNotItsNeighboursIsTold) {
    EXPECT_EQ(Differences(Orientation("a", {"t", "u", "b"}), Orientation("a", {"b", "u", "t"})),
              "order of evaluation 2\n"
              "  ! orientation of a by t:\n"
              "      item 0, constraint 0, target 0\n"
              "      item 0, constraint 0, target 2\n"
              "  ! orientation of a by u:\n"
              "      item 0, constraint 0, target 1\n"
              "      item 0, constraint 0, target 1\n");
}

TEST_F(SkelDiffOrder, ATargetThatIsAddedMovesNoOther) {
    EXPECT_EQ(Differences(Orientation("a", {"t", "u"}), Orientation("a", {"b", "t", "u"})),
              "procedural 1\n  + orientation of a by b: item 0, weight 1\n");
}

TEST_F(SkelDiffOrder, ConstraintsInAnotherOrderAreTold) {
    EXPECT_EQ(Differences(Orientation("a", {"t"}) + Orientation("b", {"t"}),
                          Orientation("b", {"t"}) + Orientation("a", {"t"})),
              "order of evaluation 1\n"
              "  ! orientation of a by t:\n"
              "      item 0, constraint 0, target 0\n"
              "      item 0, constraint 1, target 0\n");
}

TEST_F(SkelDiffOrder, AConstraintThatMovesAsAWholeIsToldOnce) {
    const std::string both = Orientation("a", {"t", "u"});
    const std::string other = Orientation("b", {"t", "u", "t"});
    EXPECT_EQ(Differences(both + other, other + both),
              "order of evaluation 1\n"
              "  ! orientation of a by t:\n"
              "      item 0, constraint 0, target 0\n"
              "      item 0, constraint 1, target 0\n");
}

TEST_F(SkelDiffOrder, CurvesOfOneChannelInAnotherOrderAreTold) {
    EXPECT_EQ(Differences(Driven("a", "t") + Driven("a", "u"), Driven("a", "u") + Driven("a", "t")),
              "order of evaluation 1\n"
              "  ! a.translateX driven by t.scaleX:\n"
              "      item 0, output 0, curve 0\n"
              "      item 0, output 0, curve 1\n");
}

TEST_F(SkelDiffOrder, DrivenChannelsInAnotherOrderAreTold) {
    EXPECT_EQ(Differences(Driven("a", "t") + Driven("b", "t"), Driven("b", "t") + Driven("a", "t")),
              "order of evaluation 1\n"
              "  ! a.translateX driven by t.scaleX:\n"
              "      item 0, output 0, curve 0\n"
              "      item 0, output 1, curve 0\n");
}

TEST_F(SkelDiffOrder, AConstraintThatComesToStandInALaterItemIsTold) {
    const std::string first = Orientation("u", {"t"}) + Orientation("a", {"t"});
    EXPECT_EQ(Differences(first + Orientation("b", {"t"}), first + Orientation("b", {"t", "a"})),
              "procedural 1\n"
              "  + orientation of b by a: item 1, weight 1\n"
              "order of evaluation 1\n"
              "  ! orientation of b by t:\n"
              "      item 0, constraint 2, target 0\n"
              "      item 1, constraint 0, target 0\n");
}

TEST_F(SkelDiffOrder, AConstraintThatCameToTheOneBehindItIsTheOneThatMoved) {
    const std::string first = Orientation("u", {"t"});
    const std::string last = Orientation("b", {"u"});
    EXPECT_EQ(Differences(first + Orientation("a", {"t"}) + Orientation("v", {"u"}) + last,
                          first + Orientation("a", {"t", "u"}) + last),
              "procedural 2\n"
              "  + orientation of a by u: item 1, weight 1\n"
              "  - orientation of v by u: item 1, weight 1\n"
              "order of evaluation 1\n"
              "  ! orientation of a by t:\n"
              "      item 0, constraint 1, target 0\n"
              "      item 1, constraint 0, target 0\n");
}

TEST_F(SkelDiffOrder, AnItemThatIsAddedInFrontMovesNoOther) {
    EXPECT_EQ(
        Differences(Orientation("a", {"t"}) + Orientation("b", {"t"}),
                    Orientation("t", {"u"}) + Orientation("a", {"t"}) + Orientation("b", {"t"})),
        "procedural 1\n  + orientation of t by u: item 0, weight 1\n");
}

TEST_F(SkelDiffOrder, TwoConstraintsThatAreAlikeAreTwo) {
    EXPECT_EQ(Differences(Orientation("a", {"t"}), Orientation("a", {"t", "t"})),
              "procedural 1\n  + orientation of a by t (2): item 0, weight 1\n");
}

TEST_F(SkelDiffOrder, AnotherObjectUpIsToldWhateverItIsCalled) {
    // Two joints go by the text of the hash of one of them.
    const auto bake = [this](const std::string& name, const char* up) {
        folder.WriteFile(
            name + ".qeli",
            Document(std::string("<scene><joint name=\"root\"><joint name=\"hips\"/>"
                                 "<joint name=\"0x811C56D0\"/><joint name=\"eye\"/></joint></scene>"
                                 "<aimConstraint name=\"c\" constrain=\"||root|eye\"><aim>1 0 0"
                                 "</aim><up>0 1 0</up><globalup>0 1 0</globalup><upobject "
                                 "name=\"||root|") +
                     up +
                     "\" transform=\"rotate\"/><target name=\"||root\" weight=\"1\"/>"
                     "</aimConstraint>"));
        ASSERT_EQ(folder.Rigbake({"-in", name + ".qeli", "-out", name, "-ojc", "true"}).status, 0);
    };
    bake("a", "hips");
    bake("b", "0x811C56D0");
    folder.WriteFile("names.qeli", Document("<scene><joint name=\"0x811C56D0\"/></scene>"));
    const std::string told = Diff("a", "b", "names.qeli");
    EXPECT_EQ(told.find("procedural 1\n  ! aim of 0x"), 0u) << told;
    EXPECT_EQ(told.find("other bytes"), std::string::npos) << told;
}

TEST_F(SkelDiffOrder, ExternalChannelsOfAnotherKindAreTold) {
    EXPECT_EQ(DifferencesOfSample([](SkeletonSample& sample) {
                  auto* const outputs = Free(skeleton_external_outputs(sample.Procedural()));
                  std::swap(outputs[0].kind, outputs[1].kind);
              }),
              "procedural 2\n"
              "  ! external output Smile:\n      blend shape controller\n      material\n"
              "  ! external output Wet:\n      material\n      blend shape controller\n");
}

TEST_F(SkelDiffOrder, ObjectsOfDrivenKeysInAnotherOrderAreTold) {
    EXPECT_EQ(DifferencesOfSample([](SkeletonSample& sample) {
                  // The second and third object and what reads them.
                  const skeleton_driven_keys& keys = sample.Keys(1);
                  auto* const objects = Free(
                      static_cast<const skeleton_driven_object*>(skeleton_follow(&keys.objects)));
                  std::swap(objects[1], objects[2]);
                  const skeleton_driven_output* output = skeleton_driven_output_at(&keys, 0);
                  for (const std::uint32_t curve : {0u, 1u})
                      Free(skeleton_driven_curve_at(output, curve))->input_index = 2 - curve;
              }),
              "order of evaluation 1\n"
              "  ! rotation of Hand in driven keys:\n"
              "      item 1, object 1\n"
              "      item 1, object 2\n");
}

TEST_F(SkelDiffOrder, BytesThatNoComparisonShowsAreNoEquality) {
    // A joint that is gathered, though no constraint of the item reads it.
    const auto read = [](SkeletonSample& sample, std::uint16_t joint) {
        const skeleton_joint_constraints& item = sample.Constraints(2);
        const auto* joints = static_cast<const std::uint16_t*>(skeleton_follow(&item.joints));
        Belt(sample)[1].target = Belt(sample)[0].target;
        Free(joints)[7] = joint;
    };
    SkeletonSample sample = SkeletonSample::Load("parts-little");
    read(sample, 2);
    folder.WriteFile("a", sample.Bytes());
    read(sample, 4);
    folder.WriteFile("b", sample.Bytes());
    ASSERT_EQ(folder.Run("skel", {"check", "a", "b"}).status, 0);
    EXPECT_EQ(Diff("a", "b", kSampleNames),
              "other bytes from 0x065C on, though all that is compared joint by joint and item by "
              "item is the same\n");
    const std::string json = folder.Run("skel", {"diff", "--json", "a", "b"}).output;
    EXPECT_NE(json.find("\"same\": false"), std::string::npos);
    EXPECT_NE(json.find("\"otherBytesAt\": 1628"), std::string::npos) << json;
}

TEST_F(SkelDiffOrder, NumbersInNamesAreSortedByNumber) {
    std::string joints = "<scene><joint name=\"root\">", constraints;
    for (const char* name : {"j1", "j2", "j10", "j010", "k"})
        joints += std::string("<joint name=\"") + name + "\"/>";
    for (const char* name : {"k", "j10", "j2", "j010", "j1"})
        constraints += Orientation(name, {""});
    for (std::size_t at; (at = constraints.find("root|\"")) != std::string::npos;)
        constraints.erase(at + 4, 1);
    folder.WriteFile("a.qeli", Document(joints + "</joint></scene>"));
    folder.WriteFile("b.qeli", Document(joints + "</joint></scene>" + constraints));
    for (const char* name : {"a", "b"})
        ASSERT_EQ(folder.Rigbake({"-in", std::string(name) + ".qeli", "-out", name, "-ojc", "true"})
                      .status,
                  0);
    EXPECT_EQ(Diff("a", "b", "b.qeli"),
              "procedural 5\n"
              "  + orientation of j1 by root: item 0, weight 1\n"
              "  + orientation of j2 by root: item 0, weight 1\n"
              "  + orientation of j010 by root: item 0, weight 1\n"
              "  + orientation of j10 by root: item 0, weight 1\n"
              "  + orientation of k by root: item 0, weight 1\n");
}

TEST_F(SkelDiffOrder, RowsAreToldByNumber) {
    const auto bake = [this](const std::string& name, int sets) {
        std::string joints, members;
        for (int i = 0; i < 12; ++i) {
            const std::string joint = "j" + std::to_string(i);
            joints += "<joint name=\"" + joint + "\"/>";
            if (i < sets)
                members += "<objset name=\"skelLodSet" + std::to_string(i + 1) +
                           "\" type=\"set\"><member path=\"||root|" + joint +
                           "\" membership=\"\"/></objset>";
        }
        folder.WriteFile(name + ".qeli", Document("<scene><joint name=\"root\">" + joints +
                                                  "</joint></scene>" + members));
        ASSERT_EQ(folder.Rigbake({"-in", name + ".qeli", "-out", name}).status, 0);
    };
    bake("a", 12);
    bake("b", 0);
    const std::string told = Diff("a", "b", "a.qeli");
    std::size_t at = 0;
    for (int row = 0; row < 12; ++row) {
        const std::size_t next = told.find("  - row " + std::to_string(row) + ":");
        ASSERT_NE(next, std::string::npos) << told;
        EXPECT_GT(next, at);
        at = next;
    }
}
