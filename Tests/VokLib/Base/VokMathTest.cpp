#include <VokLib/Base/VokMath.h>

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string_view>

namespace {

constexpr float kQuarter = 1.57079637f;
constexpr float kHalf = 3.14159274f;

VokVector3 Turn(const VokVector3& p, const EulerRotation& euler) {
    const VokMatrix m = VokMath::FromQuaternion(VokMath::EulerToQuaternion(euler));
    return {p.x * m[0][0] + p.y * m[1][0] + p.z * m[2][0],
            p.x * m[0][1] + p.y * m[1][1] + p.z * m[2][1],
            p.x * m[0][2] + p.y * m[1][2] + p.z * m[2][2]};
}

void ExpectNear(const VokVector3& is, const VokVector3& wanted) {
    EXPECT_NEAR(is.x, wanted.x, 1e-6);
    EXPECT_NEAR(is.y, wanted.y, 1e-6);
    EXPECT_NEAR(is.z, wanted.z, 1e-6);
}

VokMatrix Numbered(float first) {
    VokMatrix m;
    for (int row = 0; row < 4; ++row)
        for (unsigned column = 0; column < 4; ++column) m[row][column] = first++;
    return m;
}

}  // namespace

TEST(VokMath, LeftmostLetterOfTheOrderActsFirst) {
    const VokVector3 p{0, 0, 1};
    ExpectNear(Turn(p, {kQuarter, kQuarter, 0, RotationOrder::xyz}), {0, -1, 0});
    ExpectNear(Turn(p, {kQuarter, kQuarter, 0, RotationOrder::yxz}), {1, 0, 0});
    ExpectNear(Turn(p, {kQuarter, kQuarter, kQuarter, RotationOrder::xyz}), {1, 0, 0});
    ExpectNear(Turn(p, {kQuarter, kQuarter, kQuarter, RotationOrder::yzx}), {0, 0, 1});
    ExpectNear(Turn(p, {kQuarter, kQuarter, kQuarter, RotationOrder::zxy}), {0, -1, 0});
    ExpectNear(Turn(p, {kQuarter, kQuarter, kQuarter, RotationOrder::xzy}), {0, 0, -1});
    ExpectNear(Turn(p, {kQuarter, kQuarter, kQuarter, RotationOrder::yxz}), {0, 1, 0});
    ExpectNear(Turn(p, {kQuarter, kQuarter, kQuarter, RotationOrder::zyx}), {1, 0, 0});
}

TEST(VokMath, QuaternionOfOneAngleIsTakenFromTheRoundedSineAndCosine) {
    const float angle = 0.7f;
    const auto s = static_cast<float>(std::sin(static_cast<double>(angle)));
    const auto c = static_cast<float>(std::cos(static_cast<double>(angle)));
    const float root = std::sqrt(1.0f + c + c + 1.0f);
    const VokQuaternion q = VokMath::EulerToQuaternion({angle, 0, 0});
    EXPECT_EQ(q.w, root / 2);
    EXPECT_EQ(q.x, (s - -s) * (0.5f / root));
    EXPECT_EQ(q.y, 0);
    EXPECT_EQ(q.z, 0);
}

TEST(VokMath, HalfTurnsGoThroughTheLargestElementOfTheDiagonal) {
    const VokQuaternion x = VokMath::EulerToQuaternion({kHalf, 0, 0});
    EXPECT_FLOAT_EQ(x.x, 1);
    EXPECT_NEAR(x.w, 0, 1e-6);
    const VokQuaternion y = VokMath::EulerToQuaternion({0, kHalf, 0});
    EXPECT_FLOAT_EQ(y.y, 1);
    const VokQuaternion z = VokMath::EulerToQuaternion({0, 0, kHalf});
    EXPECT_FLOAT_EQ(z.z, 1);
}

TEST(VokMath, OfEqualDiagonalElementsTheFirstCounts) {
    // A half turn about the diagonal between x and y.
    VokMatrix m = VokMath::Scale(0, 0, -1);
    m[0][1] = m[1][0] = 1;
    const VokQuaternion q = VokMath::ToQuaternion(m);
    EXPECT_EQ(q.x, std::sqrt(2.0f) / 2);
    EXPECT_EQ(q.y, 2.0f * (0.5f / std::sqrt(2.0f)));
    EXPECT_EQ(q.z, 0);
    EXPECT_EQ(q.w, 0);
}

TEST(VokMath, OfEqualDiagonalElementsTheFirstCountsEverywhere) {
    // No rotation has these off-diagonal elements: they tell which element was taken as the
    // largest.
    VokMatrix m = VokMath::Scale(-1, 0, 0);
    m[1][2] = 1;
    m[2][1] = 3;
    EXPECT_EQ(VokMath::ToQuaternion(m).y, std::sqrt(2.0f) / 2);
    EXPECT_EQ(VokMath::ToQuaternion(m).z, 4 * (0.5f / std::sqrt(2.0f)));
    m = VokMath::Scale(0, -1, 0);
    m[0][2] = 1;
    m[2][0] = 3;
    EXPECT_EQ(VokMath::ToQuaternion(m).x, std::sqrt(2.0f) / 2);
    EXPECT_EQ(VokMath::ToQuaternion(m).z, 4 * (0.5f / std::sqrt(2.0f)));
    m = VokMath::Scale(0, 0, 0);
    m[0][1] = 5;
    EXPECT_EQ(VokMath::ToQuaternion(m), (VokQuaternion{0.5f, 2.5f, 0, 0}));
}

TEST(VokMath, AMatrixWithoutATraceGoesThroughItsDiagonal) {
    // A third of a turn about the diagonal of space: the sum of the diagonal is 0, not above it.
    VokMatrix m = VokMath::Scale(0, 0, 0);
    m[0][1] = m[1][2] = m[2][0] = 1;
    EXPECT_EQ(VokMath::ToQuaternion(m), (VokQuaternion{0.5f, 0.5f, 0.5f, 0.5f}));
    m[2][0] = 3;
    EXPECT_EQ(VokMath::ToQuaternion(m), (VokQuaternion{0.5f, 0.5f, 1.5f, 0.5f}));
}

TEST(VokMath, HamiltonProduct) {
    const VokQuaternion a{1, 2, 3, 4}, b{5, 6, 7, 8};
    EXPECT_EQ(VokMath::Multiply(a, b), (VokQuaternion{24, 48, 48, -6}));
    EXPECT_EQ(VokMath::Multiply(b, a), (VokQuaternion{32, 32, 56, -6}));
}

TEST(VokMath, AffineProductTakesTheFirstFourthColumnAsThatOfTheUnitMatrix) {
    VokMatrix a = Numbered(1), b = Numbered(2);
    const VokMatrix affine = VokMath::MultiplyAffine(a, b);
    for (int row = 0; row < 4; ++row) a[row][3] = 99;
    EXPECT_EQ(VokMath::MultiplyAffine(a, b), affine);
    for (int row = 0; row < 3; ++row) a[row][3] = 0;
    a[3][3] = 1;
    EXPECT_EQ(VokMath::Multiply(a, b), affine);
}

TEST(VokMath, GeneralProductReadsAllElements) {
    const VokMatrix product = VokMath::Multiply(Numbered(1), Numbered(2));
    EXPECT_EQ(product[0][0], 1 * 2 + 2 * 6 + 3 * 10 + 4 * 14);
    EXPECT_EQ(product[3][3], 13 * 5 + 14 * 9 + 15 * 13 + 16 * 17);
}

TEST(VokMath, QuaternionMatrixHasItsTranslationInTheFourthRow) {
    const VokMatrix m = VokMath::FromQuaternion({0.5f, 0.5f, 0.5f, 0.5f}, {7, 8, 9, 10});
    const VokMatrix wanted{{{{0, 1, 0, 0}, {0, 0, 1, 0}, {1, 0, 0, 0}, {7, 8, 9, 1}}}};
    EXPECT_EQ(m, wanted);
}

TEST(VokMath, ShearStandsBelowTheDiagonal) {
    const VokMatrix wanted{{{{1, 0, 0, 0}, {2, 1, 0, 0}, {3, 4, 1, 0}, {0, 0, 0, 1}}}};
    EXPECT_EQ(VokMath::Shear(2, 3, 4), wanted);
}

TEST(VokMath, AProductWithTheInverseIsTheUnitMatrix) {
    std::mt19937 random(3);
    for (int turn = 0; turn < 200; ++turn) {
        VokMatrix m;
        for (auto& row : m.rows)
            for (float& element : row) element = static_cast<float>(random() % 17) - 8;
        const VokMatrix inverse = VokMath::Inverse(m);
        if (!std::isfinite(inverse[0][0]) || std::fabs(inverse[0][0]) > 4) continue;
        const VokMatrix product = VokMath::Multiply(inverse, m);
        for (int row = 0; row < 4; ++row)
            for (unsigned column = 0; column < 4; ++column)
                EXPECT_NEAR(product[row][column], row == static_cast<int>(column) ? 1 : 0, 1e-3);
    }
}

TEST(VokMath, TheInverseOfAScaledAndMovedMatrixIsExact) {
    VokMatrix m = VokMath::Scale(2, 4, 0.5f);
    m.rows[3] = {8, 4, 1, 1};
    const VokMatrix wanted{{{{0.5f, 0, 0, 0}, {0, 0.25f, 0, 0}, {0, 0, 2, 0}, {-4, -1, -2, 1}}}};
    EXPECT_EQ(VokMath::Inverse(m), wanted);
}

TEST(VokMath, AMatrixWithoutAnInverseGivesNoNumbers) {
    const VokMatrix inverse = VokMath::Inverse(VokMath::Scale(1, 0, 1));
    EXPECT_FALSE(std::isfinite(inverse[1][1]));
}

// Bits computed apart from this library, every operation rounded to single precision.
TEST(VokMath, AnglesOfAQuaternionAreReadInEveryOrder) {
    struct Case {
        RotationOrder order;
        std::array<std::uint32_t, 4> quaternion;
        std::array<std::uint32_t, 3> angles;
    };
    const Case cases[] = {
        {RotationOrder::xyz,
         {0x3ECD014B, 0x3E6CA694, 0xBF1A559E, 0x3F267680},
         {0x3ECCCCCE, 0x3F666668, 0xBFA66666}},
        {RotationOrder::yzx,
         {0x3ECD014A, 0x3EE52FAA, 0xBEEE398E, 0x3F267680},
         {0x3ECCCCC3, 0x3F66666C, 0xBFA6666B}},
        {RotationOrder::zxy,
         {0xBDECB2EE, 0x3EE52FA9, 0xBF1A559E, 0x3F267680},
         {0x3ECCCCCE, 0x3F666666, 0xBFA66667}},
        {RotationOrder::xzy,
         {0xBDECB2ED, 0x3E6CA692, 0xBF1A559D, 0x3F413D25},
         {0x3ECCCCC6, 0x3F666665, 0xBFA66665}},
        {RotationOrder::yxz,
         {0x3ECD0149, 0x3E6CA692, 0xBEEE398D, 0x3F413D25},
         {0x3ECCCCCB, 0x3F666666, 0xBFA66666}},
        {RotationOrder::zyx,
         {0xBDECB2EB, 0x3EE52FA9, 0xBEEE398D, 0x3F413D25},
         {0x3ECCCCCE, 0x3F666668, 0xBFA66666}},
    };
    for (const Case& expected : cases) {
        // The quaternion of 0.4, 0.9 and -1.3 about x, y and z.
        const VokQuaternion q = VokMath::EulerToQuaternion({0.4f, 0.9f, -1.3f, expected.order});
        EXPECT_EQ(std::bit_cast<std::uint32_t>(q.x), expected.quaternion[0]);
        EXPECT_EQ(std::bit_cast<std::uint32_t>(q.y), expected.quaternion[1]);
        EXPECT_EQ(std::bit_cast<std::uint32_t>(q.z), expected.quaternion[2]);
        EXPECT_EQ(std::bit_cast<std::uint32_t>(q.w), expected.quaternion[3]);
        const EulerRotation angles = VokMath::QuaternionToEuler(q, expected.order);
        EXPECT_EQ(std::bit_cast<std::uint32_t>(angles.x), expected.angles[0]);
        EXPECT_EQ(std::bit_cast<std::uint32_t>(angles.y), expected.angles[1]);
        EXPECT_EQ(std::bit_cast<std::uint32_t>(angles.z), expected.angles[2]);
        EXPECT_EQ(angles.order, expected.order);
    }
}

TEST(VokMath, AnglesAreTheInverseOfTheirQuaternionAwayFromThePoles) {
    std::mt19937 random(11);
    const auto angle = [&random](float limit) {
        return (static_cast<float>(random() % 2001) / 1000 - 1) * limit;
    };
    for (int turn = 0; turn < 600; ++turn) {
        const auto order = static_cast<RotationOrder>(turn % 6);
        // The middle one of an order's three axes turns by less than a quarter.
        const std::string_view text = GetRotationOrderText(order);
        const EulerRotation euler{angle(text[1] == 'x' ? 1.4f : 3.0f),
                                  angle(text[1] == 'y' ? 1.4f : 3.0f),
                                  angle(text[1] == 'z' ? 1.4f : 3.0f), order};
        const EulerRotation back =
            VokMath::QuaternionToEuler(VokMath::EulerToQuaternion(euler), order);
        EXPECT_NEAR(back.x, euler.x, 1e-5);
        EXPECT_NEAR(back.y, euler.y, 1e-5);
        EXPECT_NEAR(back.z, euler.z, 1e-5);
    }
}

TEST(VokMath, AQuaternionPastAPoleHasNoMiddleAngle) {
    const VokQuaternion past{0, 0.75f, 0, 0.75f};
    EXPECT_TRUE(std::isnan(VokMath::QuaternionToEuler(past, RotationOrder::xyz).y));
    EXPECT_TRUE(std::isnan(VokMath::QuaternionToEuler(past, RotationOrder::zyx).y));
    EXPECT_FALSE(std::isnan(VokMath::QuaternionToEuler(past, RotationOrder::yzx).y));
}

TEST(VokMath, AnOrderThatThereIsNotTurnsAsXyz) {
    const EulerRotation euler{0.3f, -0.7f, 1.1f, static_cast<RotationOrder>(6)};
    const EulerRotation xyz{0.3f, -0.7f, 1.1f, RotationOrder::xyz};
    const VokQuaternion turned = VokMath::EulerToQuaternion(euler);
    const VokQuaternion expected = VokMath::EulerToQuaternion(xyz);
    EXPECT_EQ(turned.x, expected.x);
    EXPECT_EQ(turned.y, expected.y);
    EXPECT_EQ(turned.z, expected.z);
    EXPECT_EQ(turned.w, expected.w);
}

TEST(VokMath, NotANumberPassesThrough) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(std::isnan(VokMath::EulerToQuaternion({nan, 0, 0}).w));
}
