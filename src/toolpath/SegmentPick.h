#pragma once

#include <cstddef>
#include <functional>
#include <optional>

#include "core/GlMatrix.h"
#include "toolpath/SegmentTree.h"

namespace zyn {

/// What a pick asks a path.
struct SegmentQuery {
  GlMatrix clip;        ///< maps points to OpenGL's clip space, in whose middle the pick is
  bool isFlat = false;  ///< points lie in the plane
  std::function<bool(std::int32_t type)> isVisible;
};

/// The segment nearest to the viewer, of those that are equally near the one nearest to the pick's
/// middle; none where none meets the clip space.
std::optional<std::size_t> nearestSegment(const ToolPath& path, const SegmentTree& tree,
                                          const SegmentQuery& query);

}  // namespace zyn
