#pragma once

#include <cstdint>
#include <memory>

#include "core/Point.h"
#include "glcontext/ObjectLists_gl.h"
#include "trace/PointSequence.h"

namespace zyn {

/// The display lists of a trace in space, in every context that has drawn it: all of its points, in
/// single precision.
class TraceLists {
 public:
  /// The points have changed.
  void clear() { ++revision_; }

  /// Draws lines through the points, and those without a neighbour as points, relative to `origin`,
  /// always the same one until `clear`. `home`: the lists of the current context.
  void draw(const std::shared_ptr<DisplayLists>& home, const PointSequence& points,
            const Point& origin);

 private:
  ObjectLists lists_;
  std::uint64_t revision_ = 1;
};

}  // namespace zyn
