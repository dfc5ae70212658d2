#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "core/PlanePoint.h"
#include "trace/CellRun.h"

namespace zyn {

/// What thin lines through a run light of its column, or of its row: all pixels between two points.
struct RunSpan {
  std::size_t early = 0;  ///< the points at its ends, in the order of the trace
  std::size_t late = 0;
  double low = 0.0;  ///< along the column: the edges of what is lit
  double high = 0.0;
  Range lit;  ///< along the column: lines within it lie in lit pixels, well away from others
  std::vector<std::size_t> beyond;  ///< points out of `lit`, whose lines light something more
};

/// One axis of a run and the other one.
struct RunLane {
  const AffineForm& along;
  const AffineForm& across;
  const RunExtent& extent;  ///< along
  const PixelCell& cell;    ///< that holds the run across
};

/// Along the column that holds the run, or else along the row.
RunLane laneOf(const TraceInWindow& trace, const CellRun& run);

/// The line from a point to another.
class Chord {
 public:
  Chord(const TraceInWindow& trace, const AffineForm& along, const AffineForm& across,
        std::size_t from, std::size_t to);

  /// Where it passes a place across the lane, or where it is nearest to it.
  double at(double place) const;

  /// Whether it passes a place across the lane, if it does, within a range along it.
  bool crossesWithin(double place, const Range& range) const;

 private:
  PlanePoint from_;  ///< x across the lane, y along it
  PlanePoint to_;
};

/// The span of a run in the plane. None where it depends on how OpenGL rounds, or on corners of
/// pixels that lines may cut: there only the trace's own lines are sure to light what they light.
std::optional<RunSpan> spanOf(const TraceInWindow& trace, const CellRun& run);

/// What a run in the plane lights however OpenGL rounds: the pixels that it crosses from edge to
/// edge. None where there are no such pixels, or many points beyond them.
std::optional<RunSpan> innerSpanOf(const TraceInWindow& trace, const CellRun& run);

}  // namespace zyn
