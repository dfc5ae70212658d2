#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "core/Box3.h"
#include "core/Point.h"
#include "core/Vecteur.h"

namespace zyn {

/// A line of sight: origin + distance * direction, for distances of 0 and more.
struct Ray {
  Point origin;
  Vecteur direction;  ///< of any length but 0

  /// Whether it meets the backs too of surfaces that show their front only: what is drawn
  /// translucent shows both.
  bool meetsBacks = false;

  Point at(double distance) const {
    return {origin.x + distance * direction.x, origin.y + distance * direction.y,
            origin.z + distance * direction.z};
  }
};

/// Where a ray meets a surface.
struct SurfaceHit {
  double distance = 0.0;  ///< in lengths of the ray's direction
  Vecteur normal;         ///< of the flat face, of length 1, out of its front
};

/// False where a ray surely passes by a box; sides that it grazes count as met.
inline bool mayMeet(const Ray& ray, const Box3& box) {
  struct Side {
    double origin, direction, low, high;
  };
  const std::array<Side, 3> sides = {{{ray.origin.x, ray.direction.x, box.xMin, box.xMax},
                                      {ray.origin.y, ray.direction.y, box.yMin, box.yMax},
                                      {ray.origin.z, ray.direction.z, box.zMin, box.zMax}}};
  constexpr double kMargin = 1e-9;  // of what rounding leaves of the sums below
  double first = 0;
  double last = std::numeric_limits<double>::infinity();
  for (const Side& side : sides) {
    const double reach =
        kMargin * (std::abs(side.origin) + std::abs(side.low) + std::abs(side.high));
    const double low = side.low - side.origin - reach;
    const double high = side.high - side.origin + reach;
    if (side.direction == 0) {
      if (low > 0 || high < 0) {
        return false;
      }
      continue;
    }
    const double a = low / side.direction;
    const double b = high / side.direction;
    first = std::max(first, std::min(a, b));
    last = std::min(last, std::max(a, b));
  }
  return !(first > last * (1 + kMargin));
}

}  // namespace zyn
