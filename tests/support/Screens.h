#pragma once

#include <cmath>

#include "core/ScreenMap.h"

namespace zyn::test {

/// Matrices and screens as hosts set them up, in double precision.
inline constexpr std::array<double, 4> kViewport = {0, 0, 800, 600};

inline GlMatrix identity() { return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}; }

inline GlMatrix product(const GlMatrix& a, const GlMatrix& b) {
  GlMatrix result{};
  for (std::size_t i = 0; i < 16; ++i) {
    for (std::size_t k = 0; k < 4; ++k) {
      result[i] += a[4 * k + i % 4] * b[4 * (i / 4) + k];
    }
  }
  return result;
}

inline GlMatrix translation(double x, double y, double z) {
  GlMatrix m = identity();
  m[12] = x;
  m[13] = y;
  m[14] = z;
  return m;
}

inline GlMatrix scaling(double x, double y, double z) {
  return {x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, 1};
}

/// By an angle in radians about the x, y (1) or z (2) axis.
inline GlMatrix rotation(double angle, std::size_t axis) {
  GlMatrix m = identity();
  const std::size_t a = (axis + 1) % 3;
  const std::size_t b = (axis + 2) % 3;
  m[4 * a + a] = m[4 * b + b] = std::cos(angle);
  m[4 * a + b] = std::sin(angle);
  m[4 * b + a] = -std::sin(angle);
  return m;
}

/// As glOrtho.
inline GlMatrix orthographic(double left, double right, double bottom, double top, double near,
                             double far) {
  GlMatrix m = scaling(2 / (right - left), 2 / (top - bottom), -2 / (far - near));
  m[12] = -(right + left) / (right - left);
  m[13] = -(top + bottom) / (top - bottom);
  m[14] = -(far + near) / (far - near);
  return m;
}

/// As glFrustum, symmetric: half sides of the window at the near plane.
inline GlMatrix perspective(double halfWidth, double halfHeight, double near, double far) {
  GlMatrix m{};
  m[0] = near / halfWidth;
  m[5] = near / halfHeight;
  m[10] = -(far + near) / (far - near);
  m[11] = -1;
  m[14] = -2 * far * near / (far - near);
  return m;
}

/// Model units are so many pixels long; the origin lies in the middle of the viewport. The model
/// is turned by `modelview` before.
inline ScreenMap orthographicScreen(double pixelsPerUnit, const GlMatrix& modelview = identity()) {
  const double halfWidth = kViewport[2] / 2 / pixelsPerUnit;
  const double halfHeight = kViewport[3] / 2 / pixelsPerUnit;
  return {modelview,
          {orthographic(-halfWidth, halfWidth, -halfHeight, halfHeight, -1000, 1000), kViewport}};
}

}  // namespace zyn::test
