#pragma once

#include <cstddef>
#include <optional>

#include "core/PlanePoint.h"
#include "trace/PointSequence.h"

namespace zyn {

/// A point of a series, and how far it is away.
struct NearestOnScreen {
  std::size_t index = 0;
  double distance = 0.0;     ///< pixels
  std::size_t lookedAt = 0;  ///< so many points and boxes
};

/// The point (not the line through them) that is nearest to `target` on the screen; of several the
/// oldest. `pixels`: the size of a unit of each axis. None without points, or for a target that is
/// not finite. `boxes` are those of `points`.
std::optional<NearestOnScreen> nearestOnScreen(const PointSequence& points, const RunBoxes& boxes,
                                               const PlanePoint& target, const PlanePoint& pixels);

}  // namespace zyn
