#pragma once

#include <cstddef>
#include <optional>

#include "core/Point.h"
#include "core/Vecteur.h"
#include "trace/PointSequence.h"

namespace zyn {

/// A point of a trace.
struct TracePoint {
  std::size_t segment = 0;  ///< the point at which its segment, or the point on its own, begins
  double fraction = 0.0;    ///< along the segment, 0 to 1
  Point position;
  Vecteur direction{0, 0, 0};  ///< of the trace there, length 1; null where it has none

  /// The curve parameter.
  double parameter() const { return static_cast<double>(segment) + fraction; }
};

/// The point of the trace that is nearest to `target`; of several the one that comes first on the
/// trace. None without points, or for a target that is not finite. `boxes` are those of `points`.
std::optional<TracePoint> nearestPoint(const PointSequence& points, const RunBoxes& boxes,
                                       const Point& target);

}  // namespace zyn
