#pragma once

#include "core/Box3.h"
#include "core/GlMatrix.h"
#include "core/Point.h"

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

}  // namespace zyn
