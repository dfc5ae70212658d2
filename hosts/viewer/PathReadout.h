#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "common/SkippedCodes.h"
#include "common/Vector.h"

namespace zyn::viewer {

/// Where the tool is on a path, and how far the path leads.
struct PathPlace {
  long line = 0;
  long type = 0;     ///< of the segment: 0 rapid, 1 feed, 2 plunge, 3 retract, 4 arc
  double speed = 0;  ///< mm a minute; 0: not known
  host::Vector point = {};
  double time = 0;  ///< seconds
  double duration = 0;
  double travelled = 0;  ///< mm
  double length = 0;
};

/// "line 12  x 1.500  y 0.000  z -2.000 mm  feed 1500 mm/min  0:07.5 of 3:20.0  81.2 of 2034.5 mm".
std::string placeText(const PathPlace& place);

/// "0:07.5", "1:02:03".
std::string durationText(double seconds);

/// "4133 lines, 3900 segments", and what was skipped, if anything.
std::string programText(std::size_t lines, long segments, const host::SkippedCodes& skipped);

/// "line 12: G1 X3"; of a long line its begin.
std::string lineText(long line, std::string_view text);

/// "tool of 6 mm".
std::string toolText(double diameter);

}  // namespace zyn::viewer
