#pragma once

#include "core/GlMatrix.h"
#include "core/VectorMath.h"

namespace zyn::test {

/// What gluLookAt multiplies with, in double precision.
inline GlMatrix lookAtMatrix(const Point& eye, const Point& target, const Vecteur& up) {
  const Vecteur f = normalised(target - eye);
  const Vecteur s = normalised(cross(f, up));
  const Vecteur u = cross(s, f);
  const Vecteur e = eye - Point();
  return {s.x, u.x, -f.x, 0, s.y,        u.y,        -f.y,      0,
          s.z, u.z, -f.z, 0, -dot(s, e), -dot(u, e), dot(f, e), 1};
}

/// What glOrtho multiplies with, for a rectangle about the axis.
inline GlMatrix orthographicMatrix(double width, double height, double zNear, double zFar) {
  const double depth = zFar - zNear;
  return {
      2 / width, 0, 0, 0, 0, 2 / height, 0, 0, 0, 0, -2 / depth, 0, 0, 0, -(zFar + zNear) / depth,
      1};
}

/// What glFrustum multiplies with, for a rectangle about the axis that has its size at `distance`.
inline GlMatrix perspectiveMatrix(double width, double height, double distance, double zNear,
                                  double zFar) {
  const double depth = zFar - zNear;
  return {2 * distance / width,
          0,
          0,
          0,
          0,
          2 * distance / height,
          0,
          0,
          0,
          0,
          -(zFar + zNear) / depth,
          -1,
          0,
          0,
          -2 * zFar * zNear / depth,
          0};
}

}  // namespace zyn::test
