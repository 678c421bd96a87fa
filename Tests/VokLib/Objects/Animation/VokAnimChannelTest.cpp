#include <VokLib/Objects/Animation/VokAnim.h>
#include <VokLib/Objects/Animation/VokAnimChannel.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

namespace {

using Floats = std::vector<float>;

std::string Channel(std::string_view attributes, std::string_view content) {
    return "<animChannel name=\"c\" channel=\"rotateX\">\n<animData " + std::string(attributes) +
           ">\n" + std::string(content) + "</animData>\n</animChannel>";
}

std::string Rewrite(const std::string& channel) {
    return Rewritten<VokAnimChannel>(channel);
}

constexpr std::string_view kValues = "<keyValues>1.0 2.0 </keyValues>\n";
constexpr std::string_view kTimes = "<keyTimes>0.0 1.0 </keyTimes>\n";
constexpr std::string_view kTangents = "<tangents>3.0 4.0 </tangents>\n";
constexpr std::string_view kMoreTangents = "<tangents>5.0 6.0 </tangents>\n";

std::string Join(std::initializer_list<std::string_view> parts) {
    std::string joined;
    for (std::string_view part : parts) joined += part;
    return joined;
}

}  // namespace

TEST(VokAnimChannel, ATimestepChannelWritesNoTimesNorStrideNorOffset) {
    const std::string text = Channel(R"(interp="Timestep" numKeys="2" duration="1.5")", kValues);
    EXPECT_EQ(Rewrite(text), text);
}

TEST(VokAnimChannel, StrideAndOffsetAreWrittenWhenGiven) {
    const std::string text = Channel(
        R"(interp="Timestep" numKeys="1" keyStride="2" timeOffset="0.0" duration="0.0")", kValues);
    EXPECT_EQ(Rewrite(text), text);
}

TEST(VokAnimChannel, EachKindWritesItsOwnTangents) {
    const std::string all = Join({kValues, kTimes, kTangents, kMoreTangents});
    const auto rewritten = [&](const std::string& kind) {
        return Rewrite(Channel("interp=\"" + kind + "\" numKeys=\"2\"", all));
    };
    for (const std::string kind :
         {"Linear", "Flat", "Smooth", "WTangent", "WSplitTangent", "QELCurve"})
        EXPECT_EQ(rewritten(kind),
                  Channel("interp=\"" + kind + "\" numKeys=\"2\"", Join({kValues, kTimes})));
    for (const std::string kind : {"Tangent", "QELHermite"})
        EXPECT_EQ(rewritten(kind), Channel("interp=\"" + kind + "\" numKeys=\"2\"",
                                           Join({kValues, kTimes, kTangents})));
    EXPECT_EQ(rewritten("SplitTangent"), Channel(R"(interp="SplitTangent" numKeys="2")", all));
}

TEST(VokAnimChannel, ReadsItsFields) {
    Scene scene(
        R"(<animChannel name="n" channel="translate" inputObject="||a" inputChannel="rotateY">
        <animData interp="SplitTangent" numKeys="2" keyStride="2" timeOffset="0.25">
        <keyValues>1 2 3 4 5</keyValues><keyTimes>0 1 2</keyTimes>
        <tangents>1 2 3 4</tangents><tangents>5 6 7</tangents></animData></animChannel>)");
    const auto& channel = scene.First<VokAnimChannel>();
    EXPECT_EQ(channel.GetChannel(), "translate");
    EXPECT_TRUE(channel.IsDrivenKey());
    EXPECT_EQ(channel.attributes.GetString("inputObject"), "||a");
    EXPECT_EQ(channel.attributes.GetString("inputChannel"), "rotateY");
    EXPECT_EQ(channel.interp, AnimInterp::SplitTangent);
    EXPECT_EQ(channel.numKeys, 2u);
    EXPECT_EQ(channel.GetKeyStride(), 2u);
    EXPECT_TRUE(channel.hasTimeOffset);
    EXPECT_EQ(channel.timeOffset, 0.25f);
    EXPECT_EQ(channel.keyValues, (Floats{1, 2, 3, 4}));
    EXPECT_EQ(channel.keyTimes, (Floats{0, 1}));
    EXPECT_EQ(channel.tangents[0], (Floats{1, 2, 3, 4}));
    EXPECT_EQ(channel.tangents[1], (Floats{5, 6, 7, 0}));
    EXPECT_EQ(
        Write(channel).substr(0, 81),
        R"(<animChannel name="n" channel="translate" inputObject="||a" inputChannel="rotateY)");
}

TEST(VokAnimChannel, AnUnnamedChannelTakesTheChannelsTextWithUnderscoresForBars) {
    Scene scene(R"(<animChannel name="" channel="a|b|c"/><animChannel name="own" channel="x|y"/>
        <animChannel name="bare"/>)");
    EXPECT_EQ(scene.world.GetChild(1)->GetName(), "a_b_c");
    EXPECT_EQ(Write(*scene.world.GetChild(1)).substr(0, 42),
              "<animChannel name=\"a_b_c\" channel=\"a|b|c\">");
    EXPECT_EQ(scene.world.GetChild(2)->GetName(), "own");
    EXPECT_EQ(Write(*scene.world.GetChild(3)).substr(0, 26), "<animChannel name=\"bare\">\n");
}

TEST(VokAnimChannel, AnInputObjectNeedsItsChannelAndAnInputChannelAloneIsDropped) {
    EXPECT_EQ(LoadFailure(R"(<animChannel name="c" inputObject="||a"/>)"),
              (Failure{"Missing attribute in parse", "|c"}));
    Scene scene(R"(<animChannel name="c" channel="x" inputChannel="y"/>)");
    EXPECT_FALSE(scene.First<VokAnimChannel>().IsDrivenKey());
    EXPECT_EQ(Write(scene.First<VokAnimChannel>()).substr(0, 36),
              "<animChannel name=\"c\" channel=\"x\">\n<");
}

TEST(VokAnimChannel, TheNameIsRequired) {
    EXPECT_EQ(LoadFailure(R"(<animChannel channel="x"/>)").text, "Missing attribute in parse");
}

TEST(VokAnimChannel, AStrideOfZeroIsRefused) {
    const std::string text =
        "0 is not a permitted stride. There must be at least one float value per key.";
    for (const char* stride : {"0", "-2", "x"})
        EXPECT_EQ(
            LoadFailure(Channel("interp=\"Linear\" keyStride=\"" + std::string(stride) + "\"", "")),
            (Failure{text, "|c"}));
    Library library;
    VokAnimChannel channel;
    EXPECT_EQ(FailureOf([&] { channel.SetKeyStride(0); }).text, text);
    EXPECT_EQ(channel.GetKeyStride(), 1u);
}

TEST(VokAnimChannel, TheDurationBelongsToTimestepAlone) {
    EXPECT_EQ(LoadFailure(Channel(R"(interp="Linear" duration="1")", "")),
              (Failure{"Anim type must be time step to use the duration", "|c"}));
    Scene scene(Channel(R"(interp="QELCurve")", ""));
    auto& channel = scene.First<VokAnimChannel>();
    EXPECT_EQ(FailureOf([&] { channel.GetDuration(); }),
              (Failure{"Anim type must be time step to use the time step", "|c"}));
    EXPECT_EQ(FailureOf([&] { channel.SetDuration(1); }),
              (Failure{"Anim type must be time step to use the duration", "|c"}));
}

TEST(VokAnimChannel, AnUnknownKindLeavesTheKindAsItWas) {
    Scene scene(R"(<animChannel name="c"><animData interp="Smooth"/><animData interp="Spline"/>
        </animChannel>)");
    EXPECT_EQ(scene.First<VokAnimChannel>().interp, AnimInterp::Smooth);
}

TEST(VokAnimChannel, OfSeveralFaultsTheFirstAttributeIsReported) {
    EXPECT_EQ(LoadFailure(Channel(R"(duration="1" keyStride="0")", "")).text,
              "Missing attribute in parse");
    EXPECT_EQ(LoadFailure(Channel(R"(duration="1" keyStride="0" interp="Linear")", "")).text,
              "0 is not a permitted stride. There must be at least one float value per key.");
}

TEST(VokAnimChannel, AnOffsetOnceGivenStays) {
    Scene scene(R"(<animChannel name="c"><animData interp="Linear" timeOffset="2"/>
        <animData interp="Linear"/></animChannel>)");
    EXPECT_TRUE(scene.First<VokAnimChannel>().hasTimeOffset);
    EXPECT_EQ(scene.First<VokAnimChannel>().timeOffset, 2);
}

TEST(VokAnimChannel, TheKindMustBeGiven) {
    EXPECT_EQ(LoadFailure(Channel("numKeys=\"1\"", "")),
              (Failure{"Missing attribute in parse", "|c"}));
}

TEST(VokAnimChannel, AThirdTangentsElementIsRefused) {
    EXPECT_EQ(LoadFailure(Channel(R"(interp="SplitTangent" numKeys="2")",
                                  Join({kTangents, kTangents, kTangents}))),
              (Failure{"Too many tangents elements when parsing animation channel.", "|c"}));
}

TEST(VokAnimChannel, KeysBelongInsideAnimData) {
    EXPECT_EQ(LoadFailure(R"(<animChannel name="c"><keyValues>1</keyValues></animChannel>)"),
              (Failure{"Unknown tag \"keyValues\"", "|c"}));
}

TEST(VokAnimChannel, CountsAreClaims) {
    for (const char* counts :
         {R"(numKeys="2147483647")", R"(numKeys="2147483647" keyStride="2147483647")",
          R"(numKeys="-1")"}) {
        const Failure failure = LoadFailure(
            Channel("interp=\"Linear\" " + std::string(counts), "<keyValues>1</keyValues>"));
        EXPECT_EQ(failure.text.empty(), std::string_view(counts) == R"(numKeys="-1")") << counts;
    }
}

TEST(VokAnimChannel, ChildObjectsStandBehindItsData) {
    const std::string text =
        "<animChannel name=\"c\">\n<animData interp=\"Timestep\" numKeys=\"0\" duration=\"0.0\">\n"
        "<keyValues>\n</keyValues>\n</animData>\n"
        "<animDiscontinuities name=\"d\" keyStride=\"1\">\n</animDiscontinuities>\n</animChannel>";
    EXPECT_EQ(Rewrite(text), text);
}
