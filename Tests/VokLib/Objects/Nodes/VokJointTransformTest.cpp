#include <VokLib/Base/VokMath.h>
#include <VokLib/Objects/Nodes/VokJoint.h>

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstdint>
#include <numbers>

#include "VokLib/SceneTestTools.h"

// The wanted bits were computed apart from this library, from the definition of each transform with
// every operation rounded to single precision: they hold the order of the operations, which other
// tests compare up to rounding only.

using namespace SceneTest;

namespace {

using Bits4 = std::array<std::uint32_t, 4>;

std::uint32_t BitsOf(float value) {
    return std::bit_cast<std::uint32_t>(value);
}

Bits4 BitsOf(const VokQuaternion& q) {
    return {BitsOf(q.x), BitsOf(q.y), BitsOf(q.z), BitsOf(q.w)};
}

std::array<Bits4, 4> BitsOf(const VokMatrix& m) {
    std::array<Bits4, 4> bits;
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column)
            bits[row][column] = BitsOf(m.rows[row][column]);
    return bits;
}

struct Turn {
    EulerRotation euler;
    Bits4 quaternion;
};

void ExpectBits(const Turn& turn) {
    EXPECT_EQ(BitsOf(VokMath::EulerToQuaternion(turn.euler)), turn.quaternion)
        << turn.euler.x << ' ' << turn.euler.y << ' ' << turn.euler.z << ' '
        << GetRotationOrderText(turn.euler.order);
}

/// Everything that a transform can be made of; what a joint alone has comes as `jointOnly`.
std::string Child(const std::string& element, const std::string& jointOnly) {
    return "<joint name=\"above\"><scale>1.7 0.6 2.9</scale><" + element + " name=\"under\">" +
           jointOnly + R"(<rotatePivotTranslation>0.3 0.2 -0.1</rotatePivotTranslation>
        <rotatePivot>-0.6 0.9 1.4</rotatePivot>
        <scalePivotTranslation>0.01 0.02 -0.03</scalePivotTranslation>
        <scalePivot>0.7 -1.9 2.3</scalePivot>
        <shear>0.11 -0.23 0.37</shear>
        <scale>1.3 0.7 -2.1</scale>
        <rotAxisEul rotOrd="yzx">0.1 0.9 -2.6</rotAxisEul>
        <rotEul rotOrd="zxy">0.7 -1.3 0.4</rotEul>
        <translate>1.1 -2.3 3.7</translate></)" +
           element + "></joint>";
}

}  // namespace

TEST(TransformBits, EveryOrderWhereTheTraceIsPositive) {
    const auto turn = [](RotationOrder order) { return EulerRotation{0.7f, -1.3f, 0.4f, order}; };
    ExpectBits({turn(RotationOrder::xyz), {0x3EC2CDD7u, 0xBF00C022u, 0x3EB432B4u, 0x3F31124Eu}});
    ExpectBits({turn(RotationOrder::yzx), {0x3EC2CDD7u, 0xBF1C8468u, 0xBD60824Fu, 0x3F31124Eu}});
    ExpectBits({turn(RotationOrder::zxy), {0x3E1E4D36u, 0xBF1C8468u, 0x3EB432B4u, 0x3F31124Eu}});
    ExpectBits({turn(RotationOrder::xzy), {0x3E1E4D37u, 0xBF00C022u, 0x3EB432B4u, 0x3F462E0Bu}});
    ExpectBits({turn(RotationOrder::yxz), {0x3EC2CDD7u, 0xBF00C022u, 0xBD608251u, 0x3F462E0Bu}});
    ExpectBits({turn(RotationOrder::zyx), {0x3E1E4D37u, 0xBF1C8469u, 0xBD608250u, 0x3F462E0Bu}});
}

TEST(TransformBits, EachElementOfTheDiagonalAsTheLargest) {
    const EulerRotation x{2.9f, 0.3f, -0.2f, RotationOrder::yzx};
    ExpectBits({x, {0x3F7A7C59u, 0x3DED62A5u, 0x3E0AF855u, 0x3DD477CFu}});
    const EulerRotation y{0.3f, 3.0f, 0.1f, RotationOrder::zyx};
    ExpectBits({y, {0x3D752728u, 0x3F7C0A5Fu, 0x3E1C07B8u, 0x3D7F9CD0u}});
    const EulerRotation z{0.2f, -0.25f, 2.8f, RotationOrder::zxy};
    ExpectBits({z, {0xBDD7E1A8u, 0xBDF317E9u, 0x3F79990Fu, 0x3E1F4406u}});
}

TEST(TransformBits, HalfAndQuarterTurnsKeepTheRoundingOfTheirAngles) {
    constexpr float kHalf = std::numbers::pi_v<float>;
    constexpr float kQuarter = kHalf / 2;
    ExpectBits({{kHalf, 0, 0}, {0x3F800000u, 0x00000000u, 0x00000000u, 0xB33BBD2Eu}});
    // The trace is a rounding error below zero: the largest element, not the root of the trace.
    ExpectBits({{kQuarter, kQuarter, 0}, {0xBF000000u, 0xBF000000u, 0x3F000000u, 0xBF000000u}});
}

TEST(TransformBits, ANodeWithEverything) {
    Scene scene(Child("node", ""));
    const std::array<Bits4, 4> wanted{{
        {0x3F7C5001u, 0x3E817EA1u, 0xBF4F20C9u, 0x00000000u},
        {0x3F0EC0A0u, 0xBE7C7C51u, 0x3EBEAF71u, 0x00000000u},
        {0x3E3AE7A1u, 0x3FDD4125u, 0x3F9F1DACu, 0x00000000u},
        {0xBE112398u, 0xC0A848C1u, 0x3ECCB7B0u, 0x3F800000u},
    }};
    EXPECT_EQ(BitsOf(scene.At<VokNode>("|above|under").GetLocalMatrix()), wanted);
}

TEST(TransformBits, AJointWithEverything) {
    Scene scene(Child("joint", "<jointOrientEul rotOrd=\"yxz\">-0.8 0.35 1.9</jointOrientEul>"));
    const auto& joint = scene.At<VokJoint>("|above|under");
    const std::array<Bits4, 4> wanted{{
        {0x3E5E42E4u, 0x3FAD119Eu, 0xBEA7176Du, 0x00000000u},
        {0xBDEC8BF7u, 0x3F68FAA5u, 0x3E0A3E6Fu, 0x00000000u},
        {0xBF90FB77u, 0xBE22ED09u, 0xBE92FD83u, 0x00000000u},
        {0x3F8CCCCDu, 0xC0133333u, 0x406CCCCDu, 0x3F800000u},
    }};
    EXPECT_EQ(BitsOf(joint.GetLocalRotation()),
              (Bits4{0xBE27B9DDu, 0xBF063BC0u, 0xBE93A123u, 0xBF48C65Du}));
    EXPECT_EQ(BitsOf(joint.GetLocalMatrix()), wanted);
}
