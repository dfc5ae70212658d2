#include "geometry/PathWriter.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "geometry/PathReduction.h"
#include "geometry/RunOutline.h"

namespace zyn {

namespace {

/// Around an edge between pixels, in pixels: what may be counted to either.
constexpr double kNearEdge = 1.0 / 64;

/// A run of no more points is drawn as it is.
constexpr std::size_t kFew = 4;

/// A passage of as many points is outlined instead of looked at point by point.
constexpr std::size_t kManyPoints = 64;

Range common(const Range& a, const Range& b) {
  return {std::max(a.low, b.low), std::min(a.high, b.high)};
}

}  // namespace

void PathWriter::beginLine() { path_.starts.push_back(path_.points.size()); }

void PathWriter::add(const CellRun& run) {
  if (isPassage(run)) {
    passage_ = run;
    return;
  }
  const std::optional<RunSpan> span = spanFor(run);
  const bool isBeside = spanned_ && span && isNeighbour(run);
  const std::optional<Link> link = isBeside ? linkTo(run, *span) : std::nullopt;
  if (link) {
    writeSpan(link->drawsLast);
    passage_.reset();
  } else if (isBeside && passage_) {
    const Range lit = common(spanned_->span.lit, span->lit);
    writeSpan(true);
    writePassage(lit);
  } else {
    writeLeft();
  }
  if (span) {
    spanned_ = {run, *span, !link || link->drawsFirst};
  } else {
    writeWhole(run);
  }
}

void PathWriter::endLine(const CellRun& run) {
  writeLeft();
  writeWhole(run);
}

std::optional<RunSpan> PathWriter::spanFor(const CellRun& run) const {
  const bool mayHaveSpan = grid_.isThin && run.points.last - run.points.first >= kFew &&
                           run.isFlat(grid_) && !run.isOutside() &&
                           !laneOf(trace_, run).cell.isEdge;
  return mayHaveSpan ? spanOf(trace_, run) : std::nullopt;
}

/// Whether the run lies on an edge of the last run's column.
bool PathWriter::isPassage(const CellRun& run) const {
  return spanned_ && !passage_ && run.isFlat(grid_) && laneOf(trace_, run).cell.isEdge &&
         distanceTo(run) == 0.5;
}

/// Whether the run lies in the next column, and what is between them on the edge that they share.
bool PathWriter::isNeighbour(const CellRun& run) const {
  return distanceTo(run) == 1 &&
         (!passage_ || std::fabs(laneOf(trace_, run).cell.middle -
                                 laneOf(trace_, *passage_).cell.middle) == 0.5);
}

/// From the last run's column (or row), in pixels.
double PathWriter::distanceTo(const CellRun& run) const {
  constexpr double kFar = std::numeric_limits<double>::infinity();
  return spanned_->run.isInColumn == run.isInColumn
             ? std::fabs(laneOf(trace_, run).cell.middle -
                         laneOf(trace_, spanned_->run).cell.middle)
             : kFar;
}

/// How a single line leads from the last run to its neighbour. None where the trace, or that line,
/// leaves what is lit on both sides.
std::optional<PathWriter::Link> PathWriter::linkTo(const CellRun& run, const RunSpan& span) const {
  const RunLane lane = laneOf(trace_, run);
  const Range lit = common(spanned_->span.lit, span.lit);
  const std::size_t last = spanned_->run.points.last;
  const std::size_t first = run.points.first;
  if (!lit.holds(trace_.at(lane.along, last)) || !lit.holds(trace_.at(lane.along, first)) ||
      (passage_ && !lit.holds(laneOf(trace_, *passage_).extent.pixels))) {
    return std::nullopt;
  }
  for (const Link link : {Link{false, false}, Link{true, false}, Link{false, true}}) {
    if (isClear(
            run, span,
            {link.drawsLast ? last : spanned_->span.late, link.drawsFirst ? first : span.early})) {
      return link;
    }
  }
  return Link{true, true};
}

/// Whether the line from a point of the last run to one of its neighbour's lights nothing else than
/// what their spans do.
bool PathWriter::isClear(const CellRun& run, const RunSpan& span, const IndexRange& line) const {
  const RunLane lane = laneOf(trace_, run);
  const RunLane before = laneOf(trace_, spanned_->run);
  const double edge = (lane.cell.middle + before.cell.middle) / 2;
  const Range lit = common(spanned_->span.lit, span.lit);
  const Chord chord(trace_, lane.along, lane.across, line.first, line.last);
  return lit.holds(chord.at(edge - kNearEdge)) && lit.holds(chord.at(edge + kNearEdge)) &&
         chord.crossesWithin(before.cell.middle, spanned_->span.lit) &&
         chord.crossesWithin(lane.cell.middle, span.lit);
}

void PathWriter::writeSpan(bool drawsLast) {
  if (spanned_->drawsFirst) {
    write(spanned_->run.points.first);
  }
  write(spanned_->span.early);
  write(spanned_->span.late);
  if (drawsLast) {
    write(spanned_->run.points.last);
  }
  spanned_.reset();
}

void PathWriter::writeWhole(const CellRun& run) {
  if (run.isOutside()) {
    write(run.points.first);
    write(run.points.last);
  } else {
    outlineRun(trace_, grid_, run, path_.points);
  }
}

void PathWriter::writeLeft() {
  if (spanned_) {
    writeSpan(true);
  }
  if (passage_) {
    outlineRun(trace_, grid_, *passage_, path_.points);
    passage_.reset();
  }
}

/// Lines between two points of the passage that lie in what is lit on both sides make no
/// difference.
void PathWriter::writePassage(const Range& lit) {
  const auto [first, last] = passage_->points;
  if (last - first >= kManyPoints) {
    writeLeft();
    return;
  }
  const AffineForm& along = laneOf(trace_, *passage_).along;
  bool wasLit = false;
  for (std::size_t i = first; i <= last; ++i) {
    const bool isLit = lit.holds(trace_.at(along, i));
    if (i > first && isLit != wasLit) {
      write(i - 1);
    }
    if (i == first || i == last || !isLit || !wasLit) {
      write(i);
    }
    wasLit = isLit;
  }
  passage_.reset();
}

void PathWriter::write(std::size_t i) {
  if (path_.points.size() == path_.starts.back() || path_.points.back() != i) {
    path_.points.push_back(i);
  }
}

}  // namespace zyn
