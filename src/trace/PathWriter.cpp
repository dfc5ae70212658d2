#include "trace/PathWriter.h"

#include <algorithm>
#include <cmath>

#include "trace/PathReduction.h"
#include "trace/RunSearch.h"

namespace zyn {

namespace {

/// A run of no more points is drawn as it is.
constexpr std::size_t kFew = 4;

/// As many points beyond a span are drawn with it: an outline has hardly more.
constexpr std::size_t kMostBeyond = 8;

/// So many points in or beyond the last pixel are looked at.
constexpr std::size_t kMostLookedAt = 32;

/// Between two spans no more points are drawn one by one.
constexpr std::size_t kManyPoints = 64;

/// Whether a place in the pixel above this edge is sure to be in it.
bool isClear(double place, double edge) {
  return place >= edge + kRounding && place <= edge + 1 - kRounding;
}

}  // namespace

void PathWriter::add(const CellRun& run) {
  if (isPassage(run)) {
    spanned_->passage = run;
    return;
  }
  const std::optional<Span> span = spanOf(run);
  if (span && isBeside(run)) {
    writeBetween(span->lit(), run.points.first);
  } else {
    writeLeft();
  }
  if (!span) {
    writeWhole(run);
    return;
  }
  if (isOpen_) {
    write(run.points.first);
  }
  path_.spans.push_back(
      {run.isInColumn, run.lane().middle, span->low, span->high, run.points.first});
  writeAround(span->beyond, run.points);
  spanned_ = {run, span->lit()};
}

void PathWriter::endLine(const CellRun& run) {
  writeLeft();
  writeWhole(run);
}

/// None where the run lights nothing for sure, or many points lie beyond that.
std::optional<PathWriter::Span> PathWriter::spanOf(const CellRun& run) const {
  const PixelCell& lane = run.lane();
  if (!grid_.takesSpans || run.points.last - run.points.first < kFew || run.isOutside() ||
      lane.isEdge) {
    return std::nullopt;
  }
  const AffineForm& along = run.along(trace_.mapping);
  const AffineForm& across = run.across(trace_.mapping);
  const RunExtent& extent = run.along();
  Span span;
  const auto high = litEnd({along, across, lane.middle, true}, run, extent.highest,
                           extent.pixels.high, span.beyond);
  const auto low = high ? litEnd({-along, across, lane.middle, true}, run, extent.lowest,
                                 -extent.pixels.low, span.beyond)
                        : std::nullopt;
  if (!low || !(-*low < *high)) {
    return std::nullopt;
  }
  span.low = -*low;
  span.high = *high;
  std::sort(span.beyond.begin(), span.beyond.end());
  return span;
}

/// The upper edge of the last pixel that is lit, upwards by `reach`: the highest into whose diamond
/// a point of the run reaches for sure, where lines enter it and leave it; or else the highest that
/// the run crosses. `among`: where the highest point is likely to be; `height` is its height.
std::optional<double> PathWriter::litEnd(const DiamondReach& reach, const CellRun& run,
                                         const IndexRange& among, double height,
                                         std::vector<std::size_t>& beyond) const {
  RunSearch search(trace_, reach.along);
  const auto isInDiamond = [&](std::size_t i, double edge) {
    return isClear(trace_.at(reach, i), edge) && !isInMiddle(trace_.at(reach.across, i)) &&
           !isInMiddle(trace_.at(reach.along, i));
  };
  const double last = std::floor(height);
  const IndexRange searched =
      trace_.isStable ? run.points : IndexRange{among.first, std::min(among.last, run.points.last)};
  if (isClear(height, last) && isInDiamond(search.highest(searched), last)) {
    return last + 1;
  }
  const std::size_t furthest = RunSearch(trace_, reach).highest(run.points);
  const double reached = std::floor(trace_.at(reach, furthest));
  const bool isReached = isInDiamond(furthest, reached);
  const auto isRight = [&](std::size_t i) { return trace_.at(reach.across, i) > reach.middle; };
  // Beyond what is reached, lines that stay on one side of the middle keep to corners of pixels.
  const auto staysInCorner = [&](std::size_t i) {
    return isReached && (i == run.points.first || isRight(i - 1) == isRight(i)) &&
           (i == run.points.last || isRight(i + 1) == isRight(i));
  };
  const double edge = isReached ? reached + 1 : last;
  std::size_t count = 0;
  const bool areFew = search.allAbove(edge - kRounding, run.points, [&](std::size_t i) {
    if (!staysInCorner(i)) {
      beyond.push_back(i);
    }
    return ++count <= kMostLookedAt && beyond.size() <= kMostBeyond;
  });
  return areFew ? std::optional(edge) : std::nullopt;
}

/// Whether the run lies on an edge of the last run's column.
bool PathWriter::isPassage(const CellRun& run) const {
  return spanned_ && !spanned_->passage && run.lane().isEdge &&
         run.isInColumn == spanned_->run.isInColumn &&
         std::fabs(run.lane().middle - spanned_->run.lane().middle) == 0.5;
}

/// Whether the run lies in the column next to the last run's, and what is between them on the edge
/// that they share.
bool PathWriter::isBeside(const CellRun& run) const {
  const auto distanceFrom = [&run](const CellRun& other) {
    return std::fabs(run.lane().middle - other.lane().middle);
  };
  return spanned_ && run.isInColumn == spanned_->run.isInColumn &&
         distanceFrom(spanned_->run) == 1 &&
         (!spanned_->passage || distanceFrom(*spanned_->passage) == 0.5);
}

/// Writes the lines within a range that lead to these points of it, which are in order.
void PathWriter::writeAround(const std::vector<std::size_t>& chosen, const IndexRange& range) {
  isOpen_ = false;
  for (const std::size_t i : chosen) {
    const std::size_t before = std::max(i, range.first + 1) - 1;
    const std::size_t after = std::min(i + 1, range.last);
    isOpen_ = isOpen_ && before <= path_.points.back();
    for (std::size_t j = isOpen_ ? path_.points.back() : before; j <= after; ++j) {
      write(j);
    }
  }
  isOpen_ = false;
}

/// Writes the lines from the last run through the passage to the next one's first point. Those
/// between points that lie in what is lit on both sides make no difference. `next`: what is lit
/// there.
void PathWriter::writeBetween(const Range& next, std::size_t first) {
  const IndexRange between{spanned_->run.points.last, first};
  const AffineForm& along = spanned_->run.along(trace_.mapping);
  std::vector<std::size_t> unlit;
  const auto take = [&unlit](std::size_t i) {
    unlit.push_back(i);
    return unlit.size() <= kManyPoints;
  };
  const bool areFew =
      (trace_.isStable || between.last - between.first < kManyPoints) &&
      RunSearch(trace_, along).allAbove(std::min(spanned_->lit.high, next.high), between, take) &&
      RunSearch(trace_, -along).allAbove(-std::max(spanned_->lit.low, next.low), between, take);
  if (!areFew) {
    writeLeft();
    return;
  }
  std::sort(unlit.begin(), unlit.end());
  writeAround(unlit, between);
  spanned_.reset();
}

/// Leads out of the last run, through the passage.
void PathWriter::writeLeft() {
  if (spanned_) {
    write(spanned_->run.points.last);
    if (spanned_->passage) {
      writeWhole(*spanned_->passage);
    }
    spanned_.reset();
  }
}

void PathWriter::writeWhole(const CellRun& run) {
  if (run.isOutside()) {
    write(run.points.first);
    write(run.points.last);
    return;
  }
  std::vector<std::size_t>& points = path_.points;
  if (!isOpen_) {
    path_.starts.push_back(points.size());
    isOpen_ = true;
  }
  outlineRun(trace_, grid_, run, points);
}

void PathWriter::write(std::size_t i) {
  if (!isOpen_ || path_.points.back() != i) {
    path_.write(i, isOpen_);
  }
  isOpen_ = true;
}

}  // namespace zyn
