#pragma once

#include <array>
#include <optional>
#include <span>

#include "core/PlanePoint.h"
#include "trace/WindowMapping.h"

namespace zyn {

/// What is seen of the plane z = 0, with a generous band around it. Segments are cut off at its
/// edge in double precision: OpenGL, in single precision, loses those that lead very far away.
class ClipBand {
 public:
  /// What is left of a segment.
  struct Segment {
    PlanePoint from;
    PlanePoint to;
    bool isFromCut = false;  ///< it enters at `from`
  };

  /// Around a viewport (left, bottom, width, height).
  ClipBand(const WindowMapping& mapping, std::span<const int, 4> viewport);

  /// None where nothing is left. Ends within the band stay exactly as they are.
  std::optional<Segment> clip(const PlanePoint& from, const PlanePoint& to) const;

 private:
  std::array<AffineForm, 4> sides_;  ///< not negative within
};

}  // namespace zyn
