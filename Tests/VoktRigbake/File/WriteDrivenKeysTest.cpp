#include "VoktRigbake/NaiveSkeleton.h"
#include "VoktRigbake/ProceduralFileReader.h"
#include "VoktRigbake/ProceduralTestTools.h"

#include <AnimUtil/Animation/VokAnimUtil.h>
#include <BiffLib/CBlock.h>
#include <VokLib/Base/VokMath.h>
#include <VokLib/Objects/Animation/VokAnimChannel.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <sstream>

namespace {

using Keys = ProceduralFileReader::Keys;
using Row = std::pair<std::uint32_t, std::uint32_t>;

constexpr const char* kBlock = R"(<scene><joint name="root">
    <joint name="a"><rotEul rotOrd="zyx">0 0 0</rotEul></joint><joint name="b"/></joint></scene>
    <scene name="apart"><node name="ctl"/></scene><blendshapeController name="Face"/>
    <anim name="k" target="||root|a">
    <animChannel name="" channel="rotateX" inputObject="||root|b" inputChannel="rotateY">
    <animData interp="QELCurve" numKeys="2" keyStride="4"><keyValues>1 2 3 4 5 0 0 0</keyValues>
    <keyTimes>0.5 1.5</keyTimes></animData></animChannel>
    <animChannel name="" channel="rotateX" inputObject="||root|b" inputChannel="translateZ">
    <animData interp="QELCurve" numKeys="3" keyStride="4">
    <keyValues>0 1 0 0 1 0 0 0.5 2 0 0 0</keyValues><keyTimes>0 1 2</keyTimes></animData>
    </animChannel></anim>
    <anim name="f" target="|Face">
    <animChannel name="" channel="Blink" inputObject="|apart|ctl" inputChannel="Open">
    <animData interp="QELCurve" numKeys="2" keyStride="4"><keyValues>5 6 7 8 9 0 0 0</keyValues>
    <keyTimes>-1 1</keyTimes></animData></animChannel></anim>)";

const std::string kJoints = R"(<scene><joint name="root"><joint name="a"/><joint name="b">
    <rotEul rotOrd="yxz">0.1 0.2 0.3</rotEul><rotAxisEul rotOrd="zxy">0.4 0 0.1</rotAxisEul>
    <jointOrientEul rotOrd="xzy">0.5 0.6 0.7</jointOrientEul></joint><joint name="c"/></joint>
    </scene><scene name="apart"><joint name="outside"/><node name="ctl"/></scene>
    <material name="Skin" url=""/><blendshapeController name="Face"/>)";

std::string ProceduralBytes(RigScene& rig, bool bigEndian) {
    const std::string bytes = rig.Bytes(bigEndian);
    const ProceduralFileReader file(bytes, bigEndian);
    EXPECT_EQ(file.proceduralEnd, bytes.size());
    return bytes.substr(file.procedural);
}

ProceduralFileReader FileOf(const std::string& body) {
    RigScene rig(kJoints + body);
    return ProceduralFileReader(rig.Bytes(false), false);
}

Keys KeysOf(const std::string& body) {
    return FileOf(body).ReadKeys(0);
}

void ExpectNear(const std::array<float, 4>& found, const VokQuaternion& expected) {
    EXPECT_EQ(found, (std::array{expected.x, expected.y, expected.z, expected.w}));
}

}  // namespace

TEST(DrivenKeysFile, WholeBlockLittleEndian) {
    RigScene rig(kBlock);
    EXPECT_EQ(ToHex(ProceduralBytes(rig, false)),
              ToHex(FromHex("50 4A 30 31  9C 01 00 00  01 00 00 00  18 00 00 00"
                            "18 00 00 00  01 00 00 00  88 01 00 00  01 00 00 00"
                            "90 01 00 00  00 00 00 00  08 00 00 00  00 00 00 00"
                            "44 4B 30 34  6C 01 00 00  02 00 00 00  01 00 00 00"
                            "20 00 00 00  2C 00 00 00  48 00 00 00  02 00 00 00"
                            "60 00 00 00  00 00 00 00  00 00 00 00  00 00 00 00"
                            "05 00 01 00  00 00 02 00  00 00 00 00  00 00 00 00"
                            "00 00 00 00  00 00 00 00  00 00 00 00  00 00 80 3F"
                            "00 00 00 00  00 00 00 00  00 00 00 00  00 00 80 3F"
                            "00 00 00 00  00 00 00 00  00 00 00 00  00 00 80 3F"
                            "00 00 00 00  00 00 00 00  00 00 00 00  00 00 80 3F"
                            "02 00 00 00  1C 00 00 00  01 00 00 00  74 00 00 00"
                            "01 00 00 00  44 00 00 00  01 00 00 00  6C 00 00 00"
                            "01 00 00 00  00 00 01 00  00 00 00 3F  00 00 C0 3F"
                            "02 00 00 00  5C 00 00 00  98 00 00 00  02 00 00 00"
                            "01 00 02 00  00 00 00 00  00 00 00 40  03 00 00 00"
                            "50 00 00 00  84 00 00 00  00 00 00 00  03 00 00 00"
                            "00 00 80 BF  00 00 80 3F  02 00 00 00  54 00 00 00"
                            "74 00 00 00  00 00 00 00  00 00 00 00  00 00 00 00"
                            "00 00 00 00  00 00 00 00  00 00 00 00  03 00 00 00"
                            "00 00 80 3F  00 00 00 40  00 00 40 40  00 00 80 40"
                            "00 00 00 00  00 00 80 3F  00 00 00 00  00 00 00 00"
                            "00 00 80 3F  00 00 00 00  00 00 00 00  00 00 00 3F"
                            "00 00 A0 40  00 00 C0 40  00 00 E0 40  00 00 00 41"
                            "00 00 00 3F  00 00 C0 3F  00 00 00 00  00 00 80 3F"
                            "00 00 00 40  00 00 80 BF  00 00 80 3F  00 00 00 00"
                            "5B 7C 8F 5B  00 00 00 00  00 00 00 00  00 00 00 00"
                            "22 6A C7 CD  01 00 00 00  00 00 00 00  00 00 00 00")));
}

TEST(DrivenKeysFile, WholeBlockBigEndian) {
    RigScene rig(kBlock);
    EXPECT_EQ(ToHex(ProceduralBytes(rig, true)),
              ToHex(FromHex("50 4A 30 31  00 00 01 9C  00 00 00 01  00 00 00 18"
                            "00 00 00 18  00 00 00 01  00 00 01 88  00 00 00 01"
                            "00 00 01 90  00 00 00 00  00 00 00 08  00 00 00 00"
                            "44 4B 30 34  00 00 01 6C  00 00 00 02  00 00 00 01"
                            "00 00 00 20  00 00 00 2C  00 00 00 48  00 00 00 02"
                            "00 00 00 60  00 00 00 00  00 00 00 00  00 00 00 00"
                            "00 05 00 01  00 00 00 02  00 00 00 00  00 00 00 00"
                            "00 00 00 00  00 00 00 00  00 00 00 00  3F 80 00 00"
                            "00 00 00 00  00 00 00 00  00 00 00 00  3F 80 00 00"
                            "00 00 00 00  00 00 00 00  00 00 00 00  3F 80 00 00"
                            "00 00 00 00  00 00 00 00  00 00 00 00  3F 80 00 00"
                            "00 00 00 02  00 00 00 1C  00 00 00 01  00 00 00 74"
                            "00 00 00 01  00 00 00 44  00 00 00 01  00 00 00 6C"
                            "00 00 00 01  00 00 00 01  3F 00 00 00  3F C0 00 00"
                            "00 00 00 02  00 00 00 5C  00 00 00 98  00 00 00 02"
                            "00 01 00 02  00 00 00 00  40 00 00 00  00 00 00 03"
                            "00 00 00 50  00 00 00 84  00 00 00 00  00 03 00 00"
                            "BF 80 00 00  3F 80 00 00  00 00 00 02  00 00 00 54"
                            "00 00 00 74  00 00 00 00  00 00 00 00  00 00 00 00"
                            "00 00 00 00  00 00 00 00  00 00 00 00  00 03 00 00"
                            "3F 80 00 00  40 00 00 00  40 40 00 00  40 80 00 00"
                            "00 00 00 00  3F 80 00 00  00 00 00 00  00 00 00 00"
                            "3F 80 00 00  00 00 00 00  00 00 00 00  3F 00 00 00"
                            "40 A0 00 00  40 C0 00 00  40 E0 00 00  41 00 00 00"
                            "3F 00 00 00  3F C0 00 00  00 00 00 00  3F 80 00 00"
                            "40 00 00 00  BF 80 00 00  3F 80 00 00  00 00 00 00"
                            "5B 8F 7C 5B  00 00 00 00  00 00 00 00  00 00 00 00"
                            "CD C7 6A 22  00 00 00 01  00 00 00 00  00 00 00 00")));
}

TEST(DrivenKeysFile, DrivenObjectsStandFirstAndTheirTablesTellTheRest) {
    // In order of first use: a (translated, so none), c (input), b (rotated), c again.
    const Keys keys = KeysOf(DrivenAnim("||root|a", "translateX", "||root|c", "rotateX") +
                             DrivenAnim("||root|b", "rotateZ", "||root|c", "rotateY"));
    EXPECT_EQ(keys.objectCount, 2u);
    EXPECT_EQ(keys.drivenObjectCount, 1u);
    EXPECT_EQ(keys.objects, (std::vector<Row>{{4, 2}, {0, 3}}));
    ExpectNear(keys.rotationAxes[0],
               VokMath::EulerToQuaternion({0.4f, 0, 0.1f, RotationOrder::zxy}));
    ExpectNear(keys.jointOrients[0],
               VokMath::EulerToQuaternion({0.5f, 0.6f, 0.7f, RotationOrder::xzy}));
    ASSERT_EQ(keys.outputs.size(), 2u);
    EXPECT_EQ(keys.outputs[0].index, 1u);
    EXPECT_EQ(keys.outputs[0].type, 1u);
    EXPECT_EQ(keys.outputs[0].curves[0].inputIndex, 1u) << "c's place behind b";
    EXPECT_EQ(keys.outputs[1].index, 0u);
    EXPECT_EQ(keys.outputs[1].component, 2u);
    EXPECT_EQ(keys.outputs[1].curves[0].inputComponent, 1u);
}

TEST(DrivenKeysFile, JointThatRotatesAndMovesIsOneObject) {
    const Keys keys = KeysOf(DrivenAnim("||root|a", "rotateX", "||root|c", "scaleX") +
                             DrivenAnim("||root|a", "translateY", "||root|c", "scaleX"));
    EXPECT_EQ(keys.objectCount, 1u);
    EXPECT_EQ(keys.drivenObjectCount, 1u);
    EXPECT_EQ(keys.outputs.size(), 2u);
    EXPECT_EQ(keys.outputs[0].curves[0].inputType, 2u);
    EXPECT_EQ(keys.outputs[0].curves[0].inputIndex, 3u) << "a joint index";
}

TEST(DrivenKeysFile, JointOutsideTheSkeletonHasNoRow) {
    const Keys keys = KeysOf(DrivenAnim("||root|a", "rotateX", "|apart|outside", "rotateY") +
                             DrivenAnim("||root|a", "rotateY", "||root|c", "rotateY"));
    EXPECT_EQ(keys.objectCount, 3u);
    EXPECT_EQ(keys.objects, (std::vector<Row>{{0, 1}, {0, 3}})) << "one row fewer than objects";
    EXPECT_EQ(keys.outputs[1].curves[0].inputIndex, 2u) << "the place among the objects";
}

TEST(DrivenKeysFile, ExternalTablesAreSortedByHash) {
    std::string body;
    std::vector<ProceduralFileReader::Channel> inputs, outputs;
    for (const char* name : {"smile", "frown", "blink", "jaw", "puff"}) {
        body += DrivenAnim("|Face", name, "|apart|ctl", std::string(name) + "In");
        outputs.emplace_back(NaiveHash(name), 1);
        inputs.emplace_back(NaiveHash(std::string(name) + "in"), 0);
    }
    body += DrivenAnim("|Skin", "Wetness1", "||root|a", "rotateX");
    outputs.emplace_back(NaiveHash("Wetness"), 2);
    const ProceduralFileReader file = FileOf(body);
    const std::vector<ProceduralFileReader::Channel> inOrder = inputs;
    std::sort(inputs.begin(), inputs.end());
    std::sort(outputs.begin(), outputs.end());
    EXPECT_EQ(file.inputs, inputs);
    EXPECT_EQ(file.outputs, outputs);
    const Keys keys = file.ReadKeys(0);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(inputs[keys.outputs[i].curves[0].inputIndex], inOrder[i]);
        EXPECT_EQ(keys.outputs[i].type, 3u);
    }
    EXPECT_EQ(outputs[keys.outputs[5].index].first, NaiveHash("Wetness"));
    EXPECT_EQ(keys.outputs[5].component, 1u);
}

TEST(DrivenKeysFile, ExternalInputIsReadByOneCurveAlone) {
    EXPECT_EQ(RigScene(kJoints + DrivenAnim("||root|a", "rotateX", "|apart|ctl", "open") +
                       DrivenAnim("||root|b", "rotateX", "|apart|ctl", "OPEN"))
                  .Failure(),
              "Internal error - please report as a bug");
}

TEST(DrivenKeysFile, ExternalOutputFeedsNoLaterCurve) {
    EXPECT_EQ(RigScene(kJoints + DrivenAnim("|apart|ctl", "open", "||root|a", "rotateX") +
                       DrivenAnim("||root|b", "rotateX", "|apart|ctl", "open"))
                  .Failure(),
              "Internal error - please report as a bug");
}

TEST(DrivenKeysFile, OutputThatWasAnExternalInputBeforeIsBoth) {
    const ProceduralFileReader file =
        FileOf(DrivenAnim("||root|a", "rotateX", "|apart|ctl", "open") +
               DrivenAnim("|Face", "Open", "||root|c", "rotateX"));
    EXPECT_EQ(file.inputs, (std::vector<Row>{{NaiveHash("open"), 0}}));
    EXPECT_EQ(file.outputs, (std::vector<Row>{{NaiveHash("open"), 1}}));
}

TEST(DrivenKeysFile, TwoKeysAreOneSegment) {
    const Keys keys = KeysOf(DrivenAnim("||root|a", "rotateX", "||root|c", "rotateX"));
    const auto& curve = keys.outputs[0].curves[0];
    EXPECT_EQ(curve.coefficients, (std::vector<std::array<float, 4>>{{1, 2, 0, 0}}));
    EXPECT_EQ(curve.times, (std::vector<float>{0, 1}));
}

TEST(DrivenKeysFile, EveryNotANumberIsTheSame) {
    for (const bool bigEndian : {false, true}) {
        RigScene rig(kJoints + DrivenAnim("||root|a", "rotateX", "||root|c", "rotateX"));
        auto& channel = rig.Get<VokAnimChannel>("rotateX");
        channel.keyValues[2] = -std::numeric_limits<float>::signaling_NaN();
        channel.keyTimes[1] = -std::numeric_limits<float>::quiet_NaN();
        const std::string bytes = rig.Bytes(
            bigEndian, "items[0].outputs[0].curves[0].coefficients[0][2] is not a number");
        const ProceduralFileReader file(bytes, bigEndian);
        const auto curve = file.ReadKeys(0).outputs[0].curves[0];
        EXPECT_EQ(std::bit_cast<std::uint32_t>(curve.coefficients[0][2]), 0x7FC00000u);
        EXPECT_EQ(std::bit_cast<std::uint32_t>(curve.times[1]), 0x7FC00000u);
        EXPECT_EQ(std::bit_cast<std::uint32_t>(curve.lastTime), 0x7FC00000u);
    }
}

TEST(DrivenKeysFile, BlendOfTwoChannelsIsOneOutputOnItsTarget) {
    const ProceduralFileReader file = FileOf(
        DrivenAnim("|mix", "input0", "||root|b", "rotateX") +
        DrivenAnim("|mix", "input1", "||root|c", "rotateX") +
        R"(<blend name="mix" target="||root|a" channel="translateZ"><input value="0" weight="0.5"/>
        <input value="0" weight="0.25"/></blend>)");
    ASSERT_EQ(file.items.size(), 1u);
    const Keys keys = file.ReadKeys(0);
    ASSERT_EQ(keys.outputs.size(), 1u);
    EXPECT_EQ(keys.outputs[0].curves.size(), 2u);
    EXPECT_EQ(keys.outputs[0].type, 1u);
    EXPECT_EQ(keys.outputs[0].component, 2u);
    EXPECT_EQ(file.outputs.size(), 2u);
}

namespace {

/// A driven key on joint a with keys of a kind, at random rising times from 0 on.
std::string RandomKey(std::mt19937& random, const std::string& interp) {
    std::uniform_real_distribution<float> value(-2, 2), step(0.1f, 1);
    const unsigned count = 2 + random() % 8;
    const unsigned stride = interp == "QELCurve" ? 4 : 1;
    std::ostringstream data, times, tangents;
    data << "<animData interp=\"" << interp << "\" numKeys=\"" << count << "\" keyStride=\""
         << stride << "\"><keyValues>";
    float time = 0;
    for (unsigned i = 0; i < count; ++i, time += step(random)) {
        for (unsigned k = 0; k < stride; ++k) data << value(random) << ' ';
        tangents << value(random) << ' ';
        times << time << ' ';
    }
    data << "</keyValues><keyTimes>" << times.str() << "</keyTimes>";
    if (interp == "QELHermite") data << "<tangents>" << tangents.str() << "</tangents>";
    return "<anim name=\"k\" target=\"||root|a\"><animChannel name=\"ch\" channel=\"rotateX\" "
           "inputObject=\"||root|b\" inputChannel=\"rotateX\">" +
           data.str() + "</animData></animChannel></anim>";
}

/// (input, value) over the whole of a channel.
std::vector<std::pair<float, float>> Evaluate(const VokAnimChannel& channel) {
    std::vector<std::pair<float, float>> values;
    for (int i = 0; i <= 50; ++i) {
        const float last = channel.keyTimes.back();
        const float t = std::min(last, last * static_cast<float>(i) / 50);
        float value = 0;
        VokAnimUtil::Evaluate(&value, channel, t, nullptr);
        values.emplace_back(t, value);
    }
    return values;
}

}  // namespace

TEST(DrivenKeysFile, CurvesOfTheFileGiveTheValuesOfTheirChannels) {
    std::mt19937 random(3);
    for (int round = 0; round < 60; ++round)
        for (const char* interp : {"QELCurve", "QELHermite"})
            for (const bool bigEndian : {false, true}) {
                RigScene rig(kJoints + RandomKey(random, interp));
                const auto expected = Evaluate(rig.Get<VokAnimChannel>("ch"));
                const ProceduralFileReader file(rig.Bytes(bigEndian), bigEndian);
                const auto curve = file.ReadKeys(0).outputs[0].curves[0];
                for (const auto& [t, value] : expected)
                    EXPECT_NEAR(curve.ValueAt(t), value, 1e-4f * (1 + std::abs(value)))
                        << interp << " at " << t;
            }
}

TEST(DrivenKeysFile, FittedCurveMeetsEverySample) {
    RigScene rig(kJoints + R"(<anim name="k" target="||root|a"><animChannel name="ch"
        channel="rotateX" inputObject="||root|b" inputChannel="rotateX"><animData interp="Timestep"
        numKeys="9" duration="4"><keyValues>0 0.3 0.5 0.9 1.1 0.7 0.2 -0.1 -0.4</keyValues>
        </animData></animChannel></anim>)");
    const ProceduralFileReader file(rig.Bytes(false), false);
    const auto curve = file.ReadKeys(0).outputs[0].curves[0];
    const float samples[] = {0, 0.3f, 0.5f, 0.9f, 1.1f, 0.7f, 0.2f, -0.1f, -0.4f};
    for (std::size_t i = 0; i < 9; ++i)
        EXPECT_NEAR(curve.ValueAt(static_cast<float>(i) * 0.5f), samples[i], 0.0011f) << i;
}
