#pragma once

#include "core/Box3.h"
#include "core/GlMatrix.h"
#include "core/Point.h"
#include "core/Vecteur.h"

namespace zyn {

inline constexpr GlMatrix kIdentity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

/// A point moved by a matrix whose last row is 0 0 0 1.
inline Point moved(const GlMatrix& m, double x, double y, double z) {
  return {m[0] * x + m[4] * y + m[8] * z + m[12], m[1] * x + m[5] * y + m[9] * z + m[13],
          m[2] * x + m[6] * y + m[10] * z + m[14]};
}

inline Point moved(const GlMatrix& matrix, const Point& point) {
  return moved(matrix, point.x, point.y, point.z);
}

/// The box around the moved corners of a box.
inline Box3 moved(const GlMatrix& matrix, const Box3& box) {
  const Point first = moved(matrix, box.xMin, box.yMin, box.zMin);
  Box3 around{first.x, first.x, first.y, first.y, first.z, first.z};
  for (const double x : {box.xMin, box.xMax}) {
    for (const double y : {box.yMin, box.yMax}) {
      for (const double z : {box.zMin, box.zMax}) {
        const Point corner = moved(matrix, x, y, z);
        around.unite({corner.x, corner.x, corner.y, corner.y, corner.z, corner.z});
      }
    }
  }
  return around;
}

// Of matrices whose last row is 0 0 0 1:

/// Whether each moved coordinate comes from a single one, so that a moved box is a box.
bool keepsAxes(const GlMatrix& matrix);

/// Whether it turns right into left.
bool isMirror(const GlMatrix& matrix);

/// Whether it has no inverse, or none that numbers can hold.
bool isSingular(const GlMatrix& matrix);

/// What leads back; the matrix is not singular.
GlMatrix inverse(const GlMatrix& matrix);

/// What it does to x and y of points of the plane z = 0, without leaving that.
GlMatrix flattened(const GlMatrix& matrix);

/// The direction, of length 1, that is square to a moved surface where `normal` was; the matrix is
/// not singular.
Vecteur movedNormal(const GlMatrix& matrix, const Vecteur& normal);

/// How it changes lengths: not, all alike, or otherwise.
enum class Stretch { kNone, kEven, kUneven };
Stretch stretchOf(const GlMatrix& matrix);

/// The matrix that puts an orthonormal frame at `origin`: its first axis along `x`, its second one
/// in the half plane of `y`. Neither has no length, nor are they parallel (areParallel).
GlMatrix frame(const Point& origin, const Vecteur& x, const Vecteur& y);

/// Also of a direction without length.
bool areParallel(const Vecteur& a, const Vecteur& b);

}  // namespace zyn
