#include "toolpath/PathBuilder.h"

#include <utility>

namespace zyn {

void PathBuilder::addSegment(const PathPoint& to, int type, double speed, int lineNumber) {
  addPoint(to);
  columns_.types.push_back(type);
  columns_.speeds.push_back(speed);
  columns_.lines.push_back(lineNumber);
}

void PathBuilder::line(const PathPoint& to, int type, double speed, int lineNumber) {
  addSegment(to, type, speed, lineNumber);
}

void PathBuilder::arc(const ArcMove& move, double speed, int lineNumber) {
  const std::size_t last = points_.size() - 3;
  const PathArc arc{{points_[last], points_[last + 1], points_[last + 2]}, move};
  const std::size_t count = arc.chordCount(tolerance_);
  arcs_.push_back({pointCount() - 1, count, arc});
  for (std::size_t i = 1; i <= count; ++i) {
    addSegment(arc.pointAt(static_cast<double>(i) / static_cast<double>(count)), segment_type::kArc,
               speed, lineNumber);
  }
}

void PathBuilder::dwell(double seconds, int) { dwells_.push_back({pointCount() - 1, seconds}); }

ToolPath PathBuilder::take() {
  return {std::move(points_), std::move(columns_), std::move(arcs_), std::move(dwells_)};
}

}  // namespace zyn
