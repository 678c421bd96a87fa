#include <VokLib/VokMath.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

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

TEST(VokMath, NotANumberPassesThrough) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(std::isnan(VokMath::EulerToQuaternion({nan, 0, 0}).w));
}
