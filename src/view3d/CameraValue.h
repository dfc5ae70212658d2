#pragma once

#include <optional>
#include <string>

#include "core/Point.h"
#include "core/Vecteur.h"

namespace zyn {

/// All that hosts can say of a camera. Lengths are in scene units, angles in degrees.
struct CameraValue {
  Point eye{0.0, 0.0, 2.0};
  Point target;
  Vecteur up{0.0, 1.0, 0.0};
  double width = 2.0;  ///< of the view rectangle, which is centred on the target
  double height = 2.0;
  bool perspective = false;
  double openingAngle = 30.0;  ///< vertical, of the perspective
  double depth = 2.0;          ///< that part of space is shown around the target at least

  static constexpr double kSmallestAngle = 1.0;
  static constexpr double kLargestAngle = 170.0;

  bool operator==(const CameraValue& other) const = default;
};

/// Whether it has a length.
bool hasDirection(const Vecteur& v);

/// What is wrong with a camera that nothing can be seen with, its member named first; none for
/// one that can be used.
std::optional<std::string> faultOf(const CameraValue& camera);

/// On the way from one camera to another, both of them usable: `t` from 0, `a`, to 1, `b`. Turns by
/// the shortest way; sizes and distances go geometrically, the target straight; perspective
/// switches at 0.5.
CameraValue between(const CameraValue& a, const CameraValue& b, double t);

}  // namespace zyn
