#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "core/PlanePoint.h"

namespace zyn {

/// What OpenGL's feedback mode wrote of drawn points, lines and polygons, of whose corners it tells
/// x and y.
class FeedbackShapes {
 public:
  /// Ends at the first thing that is none or not there as a whole.
  explicit FeedbackShapes(std::span<const float> buffer) : rest_(buffer) {}

  /// The corners of the next shape, until the one after it is asked for; none at the end. An image
  /// has the point at which it is drawn.
  std::optional<std::span<const PlanePoint>> next();

 private:
  std::optional<std::size_t> takeHead();

  std::span<const float> rest_;
  std::vector<PlanePoint> corners_;
};

}  // namespace zyn
