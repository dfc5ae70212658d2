#pragma once

#include <array>

#include "core/Box3.h"
#include "core/GlMatrix.h"
#include "core/Point.h"

namespace zyn {

/// A rectangle parallel to the screen, relative to a point of it, in the units of the eye's space.
struct ScreenRectangle {
  double left = 0.0;
  double right = 0.0;
  double bottom = 0.0;
  double top = 0.0;
};

/// The part of space that a selection pass looks at, with a margin for OpenGL's single precision:
/// what lies outside cannot be hit.
class PickVolume {
 public:
  /// OpenGL's matrices, column by column; their product maps model points to clip space.
  PickVolume(const GlMatrix& projection, const GlMatrix& modelView);

  /// False when nothing within the box can be hit. True where numbers are not finite.
  bool mayMeet(const Box3& box) const;

  /// The same for the rectangle about a model point.
  bool mayMeet(const Point& point, const ScreenRectangle& around) const;

  /// How much longer a pixel is at a model point than where the projection is as it says: 1
  /// everywhere without perspective, the distance from the eye's plane with it.
  double depthOf(const Point& point) const;

  /// How long a model unit along an axis (0: x, 1: y, 2: z) is in the eye's space.
  double axisLength(std::size_t axis) const;
  /// Whether an axis points against the one of the same name in the eye's space.
  bool isAxisReversed(std::size_t axis) const;

 private:
  /// One of the volume's sides. A point's distance from it is negative outside.
  struct Side {
    std::array<double, 4> distance;     ///< of a model point: the factors of x, y, z and 1
    std::array<double, 4> magnitude;    ///< of all terms that are summed up for that
    std::array<double, 2> eyeDistance;  ///< by which a step in the eye's space changes it
    std::array<double, 2> eyeMagnitude;
  };

  Side sideOf(const GlMatrix& projection, std::size_t axis, double sign) const;

  GlMatrix modelView_;
  std::array<Side, 6> sides_;
  std::array<double, 4> depth_{};  ///< of a model point: the factors of x, y, z and 1
};

}  // namespace zyn
