#pragma once

#include <vector>

#include "toolpath/PathSink.h"
#include "toolpath/ToolPath.h"

namespace zyn {

/// Makes a path of motion: arcs become chords, but are kept.
class PathBuilder final : public PathSink {
 public:
  /// `tolerance`: how far chords may be from their arc.
  explicit PathBuilder(double tolerance) : tolerance_(tolerance) {}

  void start(const PathPoint& place) override { addPoint(place); }
  void line(const PathPoint& to, int type, double speed, int lineNumber) override;
  void arc(const ArcMove& move, double speed, int lineNumber) override;
  void dwell(double seconds, int lineNumber) override;

  /// What has been told. Nothing is left here.
  ToolPath take();

 private:
  std::size_t pointCount() const { return points_.size() / 3; }
  void addPoint(const PathPoint& place) {
    points_.insert(points_.end(), place.begin(), place.end());
  }
  void addSegment(const PathPoint& to, int type, double speed, int lineNumber);

  double tolerance_;
  std::vector<double> points_;
  ToolPath::Columns columns_;
  std::vector<ToolPath::ArcSpan> arcs_;
  std::vector<ToolPath::Dwell> dwells_;
};

}  // namespace zyn
