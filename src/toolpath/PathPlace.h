#pragma once

#include <cstddef>
#include <cstdint>

#include "toolpath/ToolPath.h"

namespace zyn {

/// Where the tool is on a path. At a point that two segments share it is on the later one, at the
/// end on the last; while it waits at a point, it is at that point.
struct PathPlace {
  double time = 0;          ///< seconds from the begin
  double length = 0;        ///< of the way there
  std::size_t segment = 0;  ///< also 0 without segments
  double share = 0;         ///< of the segment's length
};

// Beyond the ends of the path it is the end. Nothing here is not a number.
PathPlace placeAtTime(const ToolPath& path, double time);
/// After what the tool waits for there, but for the begin of the path.
PathPlace placeAtLength(const ToolPath& path, double length);
/// The start of a segment; `segment` may be below 0 or beyond the last.
PathPlace placeAtSegment(const ToolPath& path, std::int64_t segment);
/// The start of the first segment of a line or, where that has none, of the next one that has; the
/// end where none follows.
PathPlace placeAtLine(const ToolPath& path, std::int32_t line);

}  // namespace zyn
