#pragma once

#include "core/Point.h"
#include "core/Vecteur.h"

namespace zyn {

/// A line of sight: origin + distance * direction, for distances of 0 and more.
struct Ray {
  Point origin;
  Vecteur direction;  ///< of any length but 0
};

/// Where a ray meets a surface.
struct SurfaceHit {
  double distance = 0.0;  ///< in lengths of the ray's direction
  Vecteur normal;         ///< of the flat face, of length 1, out of its front
};

}  // namespace zyn
