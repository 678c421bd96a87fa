#include "Support/CostRatio.h"
#include "VoktRigbake/NaiveSkeleton.h"
#include "VoktRigbake/ProceduralTestTools.h"

#include <VokLib/Objects/Animation/VokAnim.h>
#include <VokLib/Objects/Animation/VokAnimChannel.h>
#include <VokLib/Objects/Animation/VokBlend.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstdint>
#include <iterator>

namespace {

const std::string kScene = R"(<scene><joint name="root"><joint name="a"/><joint name="b"/></joint>
    </scene><scene name="apart"><joint name="outside"/><node name="plain"/></scene>
    <material name="ns:Skin" url=""/><blendshapeController name="ns:Face"/>)";

std::string AnimOf(const std::string& target, const std::string& channel,
                   const std::string& animData) {
    return "<anim name=\"keys\" target=\"" + target + "\"><animChannel name=\"ch\" channel=\"" +
           channel + "\" inputObject=\"||root|b\" inputChannel=\"rotateX\">" + animData +
           "</animChannel></anim>";
}

/// Driven keys that are filled by hand.
class DrivenKeysTest : public testing::Test {
  protected:
    ~DrivenKeysTest() noexcept override = default;

    void Load(const std::string& body) {
        rig.reset();
        rig = std::make_unique<RigScene>(kScene + body);
    }

    void Add(const std::string& name, const VokObj* input) {
        keys.AddChannel(rig->Get<VokAnimChannel>(name), input, procedural, rig->index);
    }
    /// Loads one driven key of joint b's rotateX and adds it.
    void AddKey(const std::string& target, const std::string& channel,
                const std::string& animData = kCurve) {
        Load(AnimOf(target, channel, animData));
        Add("ch", &rig->Get<VokJoint>("b"));
    }
    std::string Refusal(const std::string& target, const std::string& channel,
                        const std::string& animData = kCurve) {
        return FailureText([&] { AddKey(target, channel, animData); });
    }
    const DrivenOutput& Output() const { return keys.GetOutputs().front(); }
    const DrivenCurve& Curve() const { return Output().curves.front(); }

    static constexpr const char* kCurve =
        "<animData interp=\"QELCurve\" numKeys=\"2\" keyStride=\"4\"><keyValues>1 2 3 4 10 0 0 0"
        "</keyValues><keyTimes>0.5 1.5</keyTimes></animData>";

    std::unique_ptr<RigScene> rig;
    DrivenKeys keys;
    ProceduralJoints procedural;
};

}  // namespace

TEST_F(DrivenKeysTest, ChannelBecomesACurve) {
    AddKey("||root|a", "rotateZ");
    EXPECT_EQ(Output().object, &rig->Get<VokJoint>("a"));
    EXPECT_EQ(Output().type, DrivenChannelType::Rotation);
    EXPECT_EQ(Output().component, 2u);
    EXPECT_EQ(Output().channelHash, NaiveHash("rotatez"));
    EXPECT_EQ(Curve().firstTime, 0.5f);
    EXPECT_EQ(Curve().lastTime, 1.5f);
    EXPECT_EQ(Curve().inputObject, &rig->Get<VokJoint>("b"));
    EXPECT_EQ(Curve().inputType, DrivenChannelType::Rotation);
    ASSERT_EQ(Curve().keys.size(), 2u);
    EXPECT_EQ(Curve().keys[0].coefficients, (std::array<float, 4>{1, 2, 3, 4}));
    EXPECT_EQ(Curve().keys[1].time, 1.5f);
    ASSERT_EQ(keys.GetObjects().size(), 2u);
    EXPECT_EQ(keys.GetObjects()[0], &rig->Get<VokJoint>("a")) << "the output comes first";
}

TEST_F(DrivenKeysTest, NineChannelsOfAJointAreItsOwnInAnyLetterCase) {
    const char* names[] = {"rotateX",    "rotateY", "ROTATEZ", "translateX", "translatey",
                           "TranslateZ", "scaleX",  "scaleY",  "sCaLeZ"};
    for (int i = 0; i < 9; ++i) {
        keys = DrivenKeys();
        AddKey("||root|a", names[i]);
        EXPECT_EQ(static_cast<int>(Output().type), i / 3) << names[i];
        EXPECT_EQ(static_cast<int>(Output().component), i % 3) << names[i];
        if (i >= 3) {
            EXPECT_EQ(Output().index, 1) << names[i];
        }
    }
}

TEST_F(DrivenKeysTest, OtherChannelsOfAJointAreExternal) {
    AddKey("||root|a", "Stretch");
    EXPECT_EQ(Output().type, DrivenChannelType::External);
    procedural.externalOutputs.Sort();
    ASSERT_EQ(procedural.externalOutputs.GetSorted().size(), 1u);
    const ExternalChannel& channel = procedural.externalOutputs.GetSorted()[0];
    EXPECT_EQ(channel.channelHash, NaiveHash("stretch"));
    EXPECT_EQ(channel.kind, ExternalChannelKind::Other);
    EXPECT_EQ(channel.objectHash, 0xFFFFFFFFu) << "no object's name";
}

TEST_F(DrivenKeysTest, KindsThatCannotBecomeCurvesAreSkippedInSilence) {
    for (const char* interp :
         {"Linear", "Flat", "Smooth", "Tangent", "WTangent", "SplitTangent", "WSplitTangent"})
        AddKey("||root|a", "rotateX",
               std::string("<animData interp=\"") + interp + "\" numKeys=\"0\"/>");
    EXPECT_TRUE(keys.IsEmpty());
}

TEST_F(DrivenKeysTest, SkippedChannelNeedsNoTarget) {
    Load(AnimOf("||root|a", "rotateX", "<animData interp=\"Smooth\" numKeys=\"0\"/>"));
    rig->Get<VokAnim>("keys").target = VokObjLinkHandle(&rig->Get<VokAnim>("keys"));
    Add("ch", nullptr);
    EXPECT_TRUE(keys.IsEmpty());
}

TEST_F(DrivenKeysTest, ChannelOutsideAnAnimOrWithoutAnInputIsSkipped) {
    Load(R"(<animChannel name="loose" channel="rotateX" inputObject="||root|b" inputChannel="x"/>
        <anim name="k" target="||root|a"><animChannel name="plain" channel="rotateX"/></anim>)");
    Add("loose", nullptr);
    Add("plain", nullptr);
    EXPECT_TRUE(keys.IsEmpty());
}

TEST_F(DrivenKeysTest, HermiteChannelBecomesACurveInPlace) {
    AddKey("||root|a", "rotateX",
           "<animData interp=\"QELHermite\" numKeys=\"2\"><keyValues>1 3</keyValues>"
           "<keyTimes>0 2</keyTimes><tangents>1 1</tangents></animData>");
    EXPECT_EQ(rig->Get<VokAnimChannel>("ch").interp, AnimInterp::QELCurve);
    EXPECT_EQ(Curve().keys[0].coefficients, (std::array<float, 4>{1, 1, 0, 0}));
    EXPECT_EQ(Curve().keys[1].coefficients, (std::array<float, 4>{3, 0, 0, 0}));
}

TEST_F(DrivenKeysTest, TimestepChannelIsFittedToAThousandth) {
    AddKey("||root|a", "rotateX",
           "<animData interp=\"Timestep\" numKeys=\"5\" duration=\"1\">"
           "<keyValues>0 0.25 0.5 0.75 1</keyValues></animData>");
    EXPECT_EQ(Curve().keys.size(), 2u) << "a line is one segment";
    EXPECT_EQ(Curve().lastTime, 1.0f);
}

TEST_F(DrivenKeysTest, FitsOfAllChannelsAreBoundedTogether) {
    const std::string sampled =
        "<animData interp=\"Timestep\" numKeys=\"5\" duration=\"1\"><keyValues>0 0.25 0.5 0.75 "
        "1</keyValues></animData>";
    AddKey("||root|a", "rotateX", sampled);
    const std::uint64_t looks = procedural.fitEffort.GetLooks();
    EXPECT_GT(looks, 5u);
    AddKey("||root|a", "rotateY", sampled);
    EXPECT_EQ(procedural.fitEffort.GetLooks(), 2 * looks);
}

TEST_F(DrivenKeysTest, TheToleranceOfTheFitIsAThousandthToTheBit) {
    // A curve that stays within the tolerance of its first sample is flat.
    const auto samples = [](const char* value) {
        return std::string(
                   "<animData interp=\"Timestep\" numKeys=\"5\" duration=\"1\"><keyValues>"
                   "0 0 ") +
               value + " 0 0</keyValues></animData>";
    };
    AddKey("||root|a", "rotateX", samples("0.001"));
    EXPECT_EQ(Curve().keys.size(), 2u);
    AddKey("||root|a", "rotateY", samples("0.0010000002"));
    EXPECT_GT(keys.GetOutputs().back().curves.front().keys.size(), 2u);
}

// The wanted bits were computed apart from this library.
TEST_F(DrivenKeysTest, TimestepChannelKeepsTheKeysThatItNeeds) {
    AddKey("||root|a", "rotateX",
           "<animData interp=\"Timestep\" numKeys=\"25\" duration=\"6\"><keyValues>0.000 0.247 "
           "0.479 0.682 0.841 0.949 0.997 0.984 0.909 0.778 0.598 0.382 0.141 -0.108 -0.351 "
           "-0.572 -0.757 -0.895 -0.978 -0.999 -0.959 -0.859 -0.706 -0.508 -0.279</keyValues>"
           "</animData>");
    const std::array<std::uint32_t, 5> wanted[] = {
        {0x00000000, 0x00000000, 0x3F7CED91, 0x3D1988C0, 0xBE4285D0},
        {0x3F000000, 0x3EF59179, 0x3F620D04, 0xBE942A38, 0xBD707900},
        {0x3F800000, 0x3F576905, 0x3F0CB23A, 0xBEF3346D, 0xBBCEDFC0},
        {0x40000000, 0x3F68E349, 0xBED6B6E3, 0xBEEF3210, 0x3DF161C0},
        {0x40400000, 0x3E106C21, 0xBF80046C, 0xBB987200, 0x3D9924C0},
        {0x40600000, 0xBEB3A216, 0xBF72DE4E, 0x3E6B1FEF, 0x3DB78DD2},
        {0x40880000, 0xBF65394C, 0xBEE7F4CF, 0x3EFD46AC, 0xBBAA3700},
        {0x40A80000, 0xBF5BE4CC, 0x3F054EFA, 0x3EBBA2A8, 0xBC06A800},
        {0x40B80000, 0xBF020C4E, 0x3F618C56, 0x3E8F2BD0, 0xBF0F2C40},
        {0x40C00000, 0xBE8ED917, 0x00000000, 0x00000000, 0x00000000},
    };
    ASSERT_EQ(Curve().keys.size(), std::size(wanted));
    for (std::size_t k = 0; k < std::size(wanted); ++k) {
        const DrivenKey& key = Curve().keys[k];
        EXPECT_EQ(std::bit_cast<std::uint32_t>(key.time), wanted[k][0]);
        for (std::size_t c = 0; c < 4; ++c)
            EXPECT_EQ(std::bit_cast<std::uint32_t>(key.coefficients[c]), wanted[k][c + 1]) << k;
    }
}

TEST_F(DrivenKeysTest, AnimWithoutATargetIsRefused) {
    Load(AnimOf("||root|a", "rotateX", kCurve));
    rig->Get<VokAnim>("keys").target = VokObjLinkHandle(&rig->Get<VokAnim>("keys"));
    EXPECT_EQ(FailureText([this] { Add("ch", nullptr); }),
              "We didn't find a target for the driven key animation 'keys'");
}

TEST_F(DrivenKeysTest, FewerThanTwoKeysAreRefused) {
    constexpr const char* kText =
        "Encountered a driven key channel that has less than 2 keyframes. This is bad!";
    EXPECT_EQ(Refusal("||root|a", "rotateX",
                      "<animData interp=\"QELCurve\" numKeys=\"1\" keyStride=\"4\">"
                      "<keyValues>1 0 0 0</keyValues><keyTimes>0</keyTimes></animData>"),
              kText);
    EXPECT_EQ(Refusal("||root|a", "rotateX",
                      "<animData interp=\"QELCurve\" numKeys=\"0\" keyStride=\"8\"/>"),
              kText);
    EXPECT_EQ(Refusal("||root|a", "rotateX",
                      "<animData interp=\"QELHermite\" numKeys=\"1\"><keyValues>1</keyValues>"
                      "<keyTimes>0</keyTimes><tangents>0</tangents></animData>"),
              kText);
}

TEST_F(DrivenKeysTest, StridesOtherThanFourAreRefused) {
    for (const char* stride : {"1", "3", "5", "8"})
        EXPECT_EQ(Refusal("||root|a", "rotateX",
                          std::string("<animData interp=\"QELCurve\" numKeys=\"2\" keyStride=\"") +
                              stride +
                              "\"><keyValues>1</keyValues><keyTimes>0 1</keyTimes>"
                              "</animData>"),
                  "Our driven key channels need a key stride of 4.");
}

TEST_F(DrivenKeysTest, KeysThatTheDocumentPromisesAndDoesNotGiveAreRefused) {
    constexpr const char* kText =
        "A driven key channel has fewer keys than its number of keys asks for. {|keys|ch}";
    EXPECT_EQ(Refusal("||root|a", "rotateX",
                      "<animData interp=\"QELCurve\" numKeys=\"4000000000\" keyStride=\"4\"/>"),
              kText);
    EXPECT_EQ(Refusal("||root|a", "rotateX",
                      "<animData interp=\"QELCurve\" numKeys=\"2\" keyStride=\"4\">"
                      "<keyTimes>0 1</keyTimes></animData>"),
              kText);
}

TEST_F(DrivenKeysTest, TimesThatDoNotRiseAndNaNStay) {
    AddKey("||root|a", "rotateX",
           "<animData interp=\"QELCurve\" numKeys=\"3\" keyStride=\"4\">"
           "<keyValues>1 0 0 0 2 0 0 0 3 0 0 0</keyValues><keyTimes>2 1 1</keyTimes></animData>");
    EXPECT_EQ(Curve().firstTime, 2.0f);
    EXPECT_EQ(Curve().lastTime, 1.0f);
}

TEST_F(DrivenKeysTest, JointOutsideTheSkeletonMayRotateAlone) {
    AddKey("|apart|outside", "rotateX");
    EXPECT_EQ(Output().type, DrivenChannelType::Rotation);
    EXPECT_EQ(Refusal("|apart|outside", "translateX"),
              "Unable to locate driven key joint ('translatex') in skeleton");
    EXPECT_EQ(Refusal("|apart|outside", "ScaleZ"),
              "Unable to locate driven key joint ('scalez') in skeleton");
}

TEST_F(DrivenKeysTest, InputOutsideTheSkeletonMayRotateAlone) {
    Load(AnimOf("||root|a", "rotateX", kCurve));
    Add("ch", &rig->Get<VokJoint>("outside"));
    EXPECT_EQ(Curve().inputType, DrivenChannelType::Rotation);
    rig->Get<VokAnimChannel>("ch").attributes.Set("inputChannel", "scaleX");
    EXPECT_EQ(FailureText([this] { Add("ch", &rig->Get<VokJoint>("outside")); }),
              "Unable to locate driven key joint ('scalex') in skeleton");
}

TEST_F(DrivenKeysTest, InputThatIsNoJointIsExternal) {
    Load(AnimOf("||root|a", "rotateX", kCurve));
    rig->Get<VokAnimChannel>("ch").attributes.Set("inputChannel", "RotateX");
    Add("ch", rig->World().GetChild(2));
    EXPECT_EQ(Curve().inputObject, nullptr);
    EXPECT_EQ(Curve().inputType, DrivenChannelType::External);
    EXPECT_EQ(Curve().inputHash, NaiveHash("rotatex"));
    EXPECT_TRUE(procedural.externalInputs.Contains(NaiveHash("rotatex")));
    EXPECT_EQ(FailureText([this] { Add("ch", nullptr); }),
              "Internal error - please report as a bug")
        << "an external input is used once";
}

TEST_F(DrivenKeysTest, InputThatIsAnExternalOutputDoesNotBecomeAnInput) {
    Load(AnimOf("||root|a", "Stretch", kCurve));
    rig->Get<VokAnimChannel>("ch").attributes.Set("inputChannel", "stretch");
    Add("ch", nullptr);
    EXPECT_FALSE(procedural.externalInputs.Contains(NaiveHash("stretch")));
}

TEST_F(DrivenKeysTest, ControllersAreKnownByTheirLowerCaseNames) {
    AddKey("|ns:Face", "Blink");
    EXPECT_EQ(Output().type, DrivenChannelType::External);
    EXPECT_EQ(Output().channelHash, NaiveHash("blink"));
    const ExternalChannel& channel = procedural.externalOutputs.GetSorted()[0];
    EXPECT_EQ(channel.kind, ExternalChannelKind::BlendshapeController);
    EXPECT_EQ(channel.objectHash, NaiveHash("face"));
}

TEST_F(DrivenKeysTest, ChannelsOfOneOwnerTakeTimeInProportionToTheirNumberAndItsName) {
    if (!kHasProcessorTime) GTEST_SKIP() << "other processes would have a say";
    for (const std::string owner : {"blendshapeController", "material"}) {
        const double cost = CostOfFourTimes(2000, [&](int count) {
            const std::string name(static_cast<std::size_t>(count) * 20, 'n');
            keys = DrivenKeys();
            procedural.externalOutputs = {};
            Load("<" + owner + " name=\"" + name + "\"" +
                 (owner == "material" ? " url=\"\"/>" : "/>") + AnimOf("|" + name, "c", kCurve));
            auto& channel = rig->Get<VokAnimChannel>("ch");
            for (int i = 0; i < count; ++i) {
                channel.attributes.Set("channel", "c" + std::to_string(i) + "_");
                Add("ch", &rig->Get<VokJoint>("b"));
            }
            EXPECT_EQ(keys.GetOutputs().size(), static_cast<std::size_t>(count));
        });
        EXPECT_LT(cost, kMostOfFourTimes) << owner;
    }
}

TEST_F(DrivenKeysTest, ChannelsOfMaterialsKeepTheirLetterCaseAndLoseTheirDigit) {
    struct Case {
        const char* text;
        const char* name;
        std::uint32_t component;
    };
    for (const Case& c : {Case{"Colour2", "Colour", 2}, Case{"colour0", "colour", 0},
                          Case{"map13", "map1", 3}, Case{"colour4", "colour4", 0},
                          Case{"2", "2", 0}, Case{"Colour", "Colour", 0}, Case{"", "", 0}}) {
        keys = DrivenKeys();
        procedural.externalOutputs = {};
        AddKey("|ns:Skin", c.text);
        EXPECT_EQ(Output().channelHash, NaiveHash(c.name)) << c.text;
        EXPECT_EQ(Output().component, c.component) << c.text;
        const ExternalChannel& channel = procedural.externalOutputs.GetSorted()[0];
        EXPECT_EQ(channel.kind, ExternalChannelKind::Material);
        EXPECT_EQ(channel.objectHash, NaiveHash("Skin"));
        EXPECT_EQ(channel.component, c.component);
    }
}

TEST_F(DrivenKeysTest, ComponentsOfAMaterialsChannelShareAnOutput) {
    Load(DrivenAnim("|ns:Skin", "Colour2", "||root|b", "rotateX") +
         DrivenAnim("|ns:Skin", "Colour0", "||root|b", "rotateX"));
    Add("Colour2", &rig->Get<VokJoint>("b"));
    Add("Colour0", &rig->Get<VokJoint>("b"));
    ASSERT_EQ(keys.GetOutputs().size(), 1u);
    EXPECT_EQ(Output().component, 2u) << "that of the first";
    EXPECT_EQ(Output().curves.size(), 2u);
}

TEST_F(DrivenKeysTest, OneChannelDrivenTwiceIsOneOutput) {
    Load(DrivenAnim("||root|a", "rotateX", "", "rotateX") +
         DrivenAnim("||root|a", "ROTATEX", "", "rotateY"));
    Add("rotateX", &rig->Get<VokJoint>("b"));
    Add("ROTATEX", &rig->Get<VokJoint>("root"));
    ASSERT_EQ(keys.GetOutputs().size(), 1u);
    EXPECT_EQ(Output().curves.size(), 2u);
}

TEST_F(DrivenKeysTest, TwoChannelsOfAJointAreTwoOutputsAndOneObject) {
    Load(DrivenAnim("||root|a", "rotateX", "", "translateX") +
         DrivenAnim("||root|a", "translateY", "", "translateX"));
    Add("rotateX", &rig->Get<VokJoint>("b"));
    Add("translateY", &rig->Get<VokJoint>("b"));
    EXPECT_EQ(keys.GetOutputs().size(), 2u);
    EXPECT_EQ(keys.GetObjects(), std::vector<const VokObj*>{&rig->Get<VokJoint>("a")});
}

namespace {

class DrivenBlends : public DrivenKeysTest {
  protected:
    ~DrivenBlends() noexcept override = default;

    void AddOnto(const std::string& body, const std::vector<std::string>& channels) {
        Load(body);
        for (const std::string& channel : channels) Add(channel, &rig->Get<VokJoint>("b"));
        Apply();
    }
    void Apply(int count = 1) {
        for (int i = 0; i < count; ++i) keys.ApplyBlends(rig->index, procedural);
        keys.MoveOutputs();
    }
    /// "object.component:curves" for each output.
    std::vector<std::string> Outputs() const {
        std::vector<std::string> texts;
        for (const DrivenOutput& output : keys.GetOutputs())
            texts.push_back((output.object == nullptr ? "-" : output.object->GetName()) + "." +
                            std::to_string(output.component) + ":" +
                            std::to_string(output.curves.size()));
        return texts;
    }
};

using Texts = std::vector<std::string>;

constexpr const char* kBlends = R"(<blend name="m" target="||root|a" channel="rotateY"/>
    <blend name="n" target="|m" channel="next"/>)";

}  // namespace

TEST_F(DrivenBlends, OutputsOfOneBlendBecomeOneInThePlaceOfTheFirst) {
    AddOnto(kBlends + DrivenAnim("|m", "in0", "", "rotateX") +
                DrivenAnim("||root|a", "rotateX", "", "rotateX") +
                DrivenAnim("|m", "in1", "", "rotateX") + DrivenAnim("|m", "in2", "", "rotateX"),
            {"in0", "rotateX", "in1", "in2"});
    EXPECT_EQ(Outputs(), (Texts{"a.1:3", "a.0:1"}));
    EXPECT_EQ(Output().channelHash, NaiveHash("rotatey"));
    EXPECT_EQ(Output().type, DrivenChannelType::Rotation);
}

TEST_F(DrivenBlends, OutputOnABlendOfABlendMovesUpOneStepEachTime) {
    AddOnto(kBlends + DrivenAnim("|n", "in0", "", "rotateX") +
                DrivenAnim("|n", "in1", "", "rotateX") + DrivenAnim("|m", "in2", "", "rotateX"),
            {"in0", "in1", "in2"});
    EXPECT_EQ(Outputs(), (Texts{"m.0:2", "a.1:1"}));
    Apply();
    EXPECT_EQ(Outputs(), (Texts{"a.1:2", "a.1:1"}));
    Apply();
    EXPECT_EQ(Outputs(), (Texts{"a.1:2", "a.1:1"}));
}

TEST_F(DrivenBlends, BlendWithoutATargetBecomesExternal) {
    Load(kBlends + DrivenAnim("|m", "in0", "", "rotateX"));
    Add("in0", &rig->Get<VokJoint>("b"));
    rig->Get<VokBlend>("m").target = VokObjLinkHandle(&rig->Get<VokBlend>("m"));
    Apply();
    EXPECT_EQ(Outputs(), Texts{"-.0:1"});
    EXPECT_EQ(Output().type, DrivenChannelType::External);
    EXPECT_TRUE(procedural.externalOutputs.Contains(NaiveHash("rotatey")));
}
