#pragma once

#include <VokLib/Base/RotationOrder.h>
#include <VokLib/Base/VokVector.h>

/// The scene's arithmetic. Single precision, each operation rounded, in the order in which it
/// stands; sine, cosine, asin and atan2 are taken in double and rounded once, so that every
/// platform gives the same floats.
namespace VokMath {

/// The general product, which reads all sixteen elements.
VokMatrix Multiply(const VokMatrix& a, const VokMatrix& b);
/// The affine product: `a` counts as if its fourth column were (0, 0, 0, 1).
VokMatrix MultiplyAffine(const VokMatrix& a, const VokMatrix& b);
/// The Hamilton product.
VokQuaternion Multiply(const VokQuaternion& a, const VokQuaternion& b);

VokMatrix Identity();
VokMatrix Translation(float x, float y, float z);
VokMatrix Scale(float x, float y, float z);
/// Rows (1,0,0), (x,1,0), (y,z,1).
VokMatrix Shear(float x, float y, float z);
/// The rotation of `q` followed by a translation by `translation`'s first three elements.
VokMatrix FromQuaternion(const VokQuaternion& q, const VokVector4& translation = {});

/// The inverse of any matrix; one that has none gives infinities and not-a-numbers.
VokMatrix Inverse(const VokMatrix& m);

/// The quaternion of a rotation matrix; reads the upper 3 x 3 elements.
VokQuaternion ToQuaternion(const VokMatrix& m);
VokQuaternion EulerToQuaternion(const EulerRotation& euler);
/// The angles, in radians, of a unit quaternion: away from the poles the inverse of
/// EulerToQuaternion. A quaternion that rounding has taken past a pole gives a not-a-number.
EulerRotation QuaternionToEuler(const VokQuaternion& q, RotationOrder order);

}  // namespace VokMath
