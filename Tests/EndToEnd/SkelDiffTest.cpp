#include "EndToEnd/ProgramRun.h"

#include <gtest/gtest.h>
#include <skeleton/skeleton.h>

#include <cstdio>

namespace {

constexpr const char* kBefore = R"(<scene><joint name="hips"><translate>0 1 0</translate>
    <joint name="leg"><joint name="foot"/></joint><joint name="spine"><joint name="head"/></joint>
    </joint></scene>)";

/// Two scenes are baked and compared.
class SkelDiff : public testing::Test {
  protected:
    void Bake(const std::string& name, const std::string& body) const {
        folder.WriteFile(name + ".qeli", Document(body));
        const ProgramResult run =
            folder.Rigbake({"-in", name + ".qeli", "-out", name, "-ojc", "true"});
        ASSERT_EQ(run.status, 0) << run.output;
    }
    /// `after` is compared with kBefore; names come from `after`, and the line on the signature is
    /// taken off.
    std::string Differences(const std::string& after) const {
        Bake("a", kBefore);
        Bake("b", after);
        const ProgramResult run = folder.Run("skel", {"diff", "a", "b", "--names", "b.qeli"});
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.errors, "");
        return run.output.substr(run.output.find('\n') + 1);
    }
    static std::string Changed(const std::string& from, const std::string& to) {
        std::string body = kBefore;
        body.replace(body.find(from), from.size(), to);
        return body;
    }

    static std::string HashText(const char* name) {
        char text[16];
        std::snprintf(text, sizeof text, "0x%08lX",
                      static_cast<unsigned long>(skeleton_hash_joint_name(name)));
        return text;
    }

    RunFolder folder;
};

}  // namespace

TEST_F(SkelDiff, FilesThatSayTheSameAreTheSameInEitherByteOrder) {
    folder.WriteFile("a.qeli", Document(kBefore));
    ASSERT_EQ(folder.Rigbake({"-in", "a.qeli", "-out", "a", "-bothendian"}).status, 0);
    const ProgramResult run = folder.Run("skel", {"diff", "aLE", "aBE"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output.substr(run.output.find(" is the same")),
              " is the same: animation made for the first fits the second\nno differences\n");
}

TEST_F(SkelDiff, AnotherPoseLeavesTheSignature) {
    Bake("a", kBefore);
    Bake("b", Changed("<translate>0 1 0</translate>",
                      "<translate>3 5 0</translate><rotEul rotOrd=\"xyz\">0 0 1.57079637</rotEul>"
                      "<scale>1 1.5 1</scale>"));
    const ProgramResult run = folder.Run("skel", {"diff", "a", "b", "--names", "a.qeli"});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.output.find(" is the same: animation made for the first fits the second\n"),
              std::string::npos);
    EXPECT_EQ(run.output.substr(run.output.find('\n') + 1),
              "transform 1\n  hips (0) moved by 5, turned by 90 degrees, scaled by 0.5\n");
}

TEST_F(SkelDiff, JointsThatCameAndWentAreToldNotThoseBehindThem) {
    // "foot" is not in the scene that gives the names, so its hash stands.
    EXPECT_EQ(Differences(Changed("<joint name=\"foot\"/>", "<joint name=\"toe\"/>")),
              "added 1\n  toe (2)\nremoved 1\n  " + HashText("foot") + " (2)\n");
}

TEST_F(SkelDiff, NamesComeFromAsManyScenesAsAreGiven) {
    const auto bake = [this](const std::string& name, const char* joint) {
        folder.WriteFile(name + ".qeli", Document("<scene><joint name=\"hips\"><joint name=\"" +
                                                  std::string(joint) + "\"/></joint></scene>"));
        ASSERT_EQ(folder.Rigbake({"-in", name + ".qeli", "-out", name}).status, 0);
    };
    bake("a", "foot");
    bake("b", "toe");
    const std::string output =
        folder.Run("skel", {"diff", "--names", "a.qeli", "--names", "b.qeli", "a", "b"}).output;
    EXPECT_EQ(output.substr(output.find('\n') + 1), "added 1\n  toe (1)\nremoved 1\n  foot (1)\n");
}

TEST_F(SkelDiff, AnotherSignatureMeansThatAnimationDoesNotFit) {
    Bake("a", kBefore);
    Bake("b", "<scene><joint name=\"hips\"/></scene>");
    const std::string output = folder.Run("skel", {"diff", "a", "b"}).output;
    EXPECT_NE(output.find(": animation made for the first does not fit the second\n"),
              std::string::npos);
}

TEST_F(SkelDiff, JointsUnderAnotherParentAreTold) {
    EXPECT_EQ(Differences(R"(<scene><joint name="hips"><translate>0 1 0</translate>
        <joint name="leg"/><joint name="spine"><joint name="foot"/><joint name="head"/></joint>
        </joint></scene>)"),
              "moved in order 1\n  foot from 2 to 3\n"
              "reparented 1\n  foot (3) from leg to spine\n");
}

TEST_F(SkelDiff, LevelsOfDetailAndScaleCompensationAreTold) {
    EXPECT_EQ(Differences(
                  Changed("<joint name=\"head\"/>",
                          "<joint name=\"head\"><scaleCompensate>false</scaleCompensate></joint>") +
                  R"(<objset name="skelLodSet1" type="set">
               <member path="||hips|leg|foot" membership=""/></objset>)"),
              "moved in order 1\n  foot from 2 to 4\n"
              "scale compensation 1\n  head (3) lost it\n"
              "level of detail 1\n  foot (4) from level 0 to 1\n"
              "levels of detail 1\n  + row 0: 1 members, 4 joints left without it\n");
}

TEST_F(SkelDiff, ProceduralItemsAreComparedByWhatTheyDo) {
    const auto constraint = [](const char* weight) {
        return std::string(
                   "<orientationConstraint name=\"c\" constrain=\"||hips|spine|head\">"
                   "<target name=\"||hips|leg\" weight=\"") +
               weight + "\"/></orientationConstraint>";
    };
    Bake("a", kBefore + constraint("1"));
    Bake("b", kBefore + constraint("0.5"));
    Bake("c", kBefore);
    EXPECT_EQ(WithoutBanner(folder.Run("skel", {"diff", "a", "b", "--names", "a.qeli"}).output),
              "procedural 1\n  ! orientation of head by leg:\n      item 0, weight 1\n"
              "      item 0, weight 0.5\n");
    EXPECT_EQ(WithoutBanner(folder.Run("skel", {"diff", "a", "c", "--names", "a.qeli"}).output),
              "procedural 1\n  - orientation of head by leg: item 0, weight 1\n");
    EXPECT_EQ(WithoutBanner(folder.Run("skel", {"diff", "c", "a", "--names", "a.qeli"}).output),
              "procedural 1\n  + orientation of head by leg: item 0, weight 1\n");
}

TEST_F(SkelDiff, NumbersThatMeanTheSamePoseAreShown) {
    Bake("a", kBefore);
    std::string bytes = folder.ReadFile("a");
    const auto turnSign = [&bytes](std::size_t at) {
        bytes[at + 3] = static_cast<char>(static_cast<unsigned char>(bytes[at + 3]) ^ 0x80u);
    };
    // Behind the header and five joints: a quaternion is negated, and a nought.
    const std::size_t transforms = 96;
    for (std::size_t i = 0; i < 4; ++i) turnSign(transforms + 48 + 4 * i);
    turnSign(transforms + 2 * 48 + 16);
    folder.WriteFile("b", bytes);
    const ProgramResult run = folder.Run("skel", {"diff", "a", "b", "--names", "a.qeli"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output.substr(run.output.find('\n') + 1),
              "transform 2\n"
              "  leg (1) moved by 0, turned by 0 degrees, scaled by 0\n"
              "      rotation (0, 0, 0, 1) became (-0, -0, -0, -1)\n"
              "  foot (2) moved by 0, turned by 0 degrees, scaled by 0\n"
              "      translation (0, 0, 0) became (-0, 0, 0)\n");
}

TEST_F(SkelDiff, AmountsAreExactWhereTheyAreSmall) {
    EXPECT_EQ(Differences(
                  Changed("<translate>0 1 0</translate>",
                          "<translate>0 1 0</translate><rotEul rotOrd=\"xyz\">0 0 1e-7</rotEul>")),
              "transform 1\n  hips (0) moved by 0, turned by 5.729578e-06 degrees, scaled by 0\n");
}

TEST_F(SkelDiff, WhatIsInfiniteInBothHasNotMoved) {
    const auto infinite = [](const std::string& scale) {
        return Changed("<translate>0 1 0</translate>",
                       "<translate>1e39 1 0</translate><scale>1 " + scale + " 1</scale>");
    };
    Bake("a", infinite("1"));
    Bake("b", infinite("2"));
    const ProgramResult run = folder.Run("skel", {"diff", "a", "b", "--names", "a.qeli"});
    EXPECT_EQ(run.output.substr(run.output.find('\n') + 1),
              "transform 1\n  hips (0) moved by 0, turned by 0 degrees, scaled by 1\n");
}
