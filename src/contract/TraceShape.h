#pragma once

#include <array>

namespace zyn {

class PathCache;
class PointSequence;
class RunBoxes;

/// A trace as it is drawn; what it points to is the object's, until its points change.
struct TraceShape {
  const PointSequence* points = nullptr;
  const RunBoxes* boxes = nullptr;
  PathCache* cache = nullptr;
  std::array<double, 4> colour{0, 0, 0, 1};  ///< red, green, blue, alpha
  double width = 1.0;                        ///< pixels of a screen
};

}  // namespace zyn
