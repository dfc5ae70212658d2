#include "trace/PathWriter.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "trace/PathReduction.h"
#include "trace/RunOutline.h"

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

void PathWriter::beginLine() { isOpen_ = false; }

void PathWriter::add(const CellRun& run) {
  if (isPassage(run)) {
    passage_ = run;
    return;
  }
  const std::optional<RunSpan> span = spanFor(run);
  const bool isBeside = spanned_ && span && isNeighbour(run);
  if (grid_.takesSpans) {
    addMarked(run, span, isBeside);
    return;
  }
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

void PathWriter::addMarked(const CellRun& run, const std::optional<RunSpan>& span, bool isBeside) {
  if (isBeside) {
    writeBetween(common(spanned_->span.lit, span->lit), run.points.first);
  } else {
    writeLeft();
  }
  if (!span) {
    writeWhole(run);
    return;
  }
  if (isOpen_) {
    write(run.points.first);
    isOpen_ = false;
  }
  mark(run, *span);
  writeBeyond(run, *span);
  spanned_ = {run, *span};
}

/// What is seen of the span.
void PathWriter::mark(const CellRun& run, const RunSpan& span) {
  const Range seen =
      run.isInColumn ? Range{grid_.bottom, grid_.top} : Range{grid_.left, grid_.right};
  const double low = std::max(span.low, std::floor(seen.low));
  const double high = std::min(span.high, std::ceil(seen.high));
  if (low < high) {
    path_.spans.push_back(
        {run.isInColumn, laneOf(trace_, run).cell.middle, low, high, run.points.first});
  }
}

/// Writes the lines within the run that light more than its span tells.
void PathWriter::writeBeyond(const CellRun& run, const RunSpan& span) {
  for (const std::size_t i : span.beyond) {
    const std::size_t before = std::max(i, run.points.first + 1) - 1;
    const std::size_t after = std::min(i + 1, run.points.last);
    isOpen_ = isOpen_ && before <= path_.points.back();
    for (std::size_t j = isOpen_ ? path_.points.back() : before; j <= after; ++j) {
      write(j);
    }
  }
  isOpen_ = false;
}

/// Writes the lines from the last run through the passage to the next one's first point. Those
/// between points that lie in what is lit on both sides make no difference.
void PathWriter::writeBetween(const Range& lit, std::size_t first) {
  const std::size_t last = spanned_->run.points.last;
  if (first - last >= kManyPoints) {
    writeLeft();
    return;
  }
  const AffineForm& along = laneOf(trace_, spanned_->run).along;
  bool wasLit = lit.holds(trace_.at(along, last));
  for (std::size_t i = last + 1; i <= first; ++i) {
    const bool isLit = lit.holds(trace_.at(along, i));
    if (!wasLit || !isLit) {
      write(i - 1);
      write(i);
    } else {
      isOpen_ = false;
    }
    wasLit = isLit;
  }
  isOpen_ = false;
  spanned_.reset();
  passage_.reset();
}

std::optional<RunSpan> PathWriter::spanFor(const CellRun& run) const {
  const bool mayHaveSpan = grid_.isThin && run.points.last - run.points.first >= kFew &&
                           run.isFlat(grid_) && !run.isOutside() &&
                           !laneOf(trace_, run).cell.isEdge;
  if (!mayHaveSpan) {
    return std::nullopt;
  }
  std::optional<RunSpan> span = spanOf(trace_, run);
  return span || !grid_.takesSpans ? span : innerSpanOf(trace_, run);
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
  if (grid_.takesSpans) {
    isOpen_ = false;
    write(spanned_->run.points.last);
    spanned_.reset();
    return;
  }
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
    open();
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
  open();
  if (path_.points.size() == path_.starts.back() || path_.points.back() != i) {
    path_.points.push_back(i);
  }
}

void PathWriter::open() {
  if (!isOpen_) {
    path_.starts.push_back(path_.points.size());
    isOpen_ = true;
  }
}

}  // namespace zyn
