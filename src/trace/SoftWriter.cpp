#include "trace/SoftWriter.h"

#include <algorithm>
#include <cmath>

#include "trace/RunSearch.h"

namespace zyn {

namespace {

/// A run of no more points is drawn as it is.
constexpr std::size_t kFew = 8;

/// Pixels by which a line may miss a point.
constexpr double kMiss = 0.05;

/// Pixels by which a run may reach beyond its ends and still be drawn as lines.
constexpr double kBeyond = 0.5;

/// The part of its length by which a steep run may do so: it lies as much of a pixel beside the
/// line between its ends.
constexpr double kBeside = 0.25;

void stretch(PixelSpan& span, double height) {
  span.low = std::min(span.low, height);
  span.high = std::max(span.high, height);
}

double cross(const PlanePoint& a, const PlanePoint& b) { return a.x * b.y - a.y * b.x; }

}  // namespace

void SoftWriter::Cone::start(const PlanePoint& from, const PlanePoint& to) {
  from_ = from;
  const PlanePoint way = to - from;
  distance_ = lengthOf(way);
  const PlanePoint aside = (kMiss / distance_) * PlanePoint{-way.y, way.x};
  right_ = way - aside;
  left_ = way + aside;
}

bool SoftWriter::Cone::holds(const PlanePoint& to) const {
  const PlanePoint way = to - from_;
  return lengthOf(way) >= distance_ && cross(right_, way) >= 0 && cross(way, left_) >= 0;
}

void SoftWriter::Cone::narrow(const PlanePoint& to) {
  Cone next;
  next.start(from_, to);
  distance_ = next.distance_;
  if (cross(right_, next.right_) > 0) {
    right_ = next.right_;
  }
  if (cross(next.left_, left_) > 0) {
    left_ = next.left_;
  }
}

void SoftWriter::beginLine() {
  isOpen_ = false;
  hasSpan_ = false;
}

void SoftWriter::add(const CellRun& run) {
  const auto [first, last] = run.points;
  const bool isFew = last - first < kFew;
  if (isFew && !run.isOutside()) {
    for (std::size_t i = first; i <= last; ++i) {
      follow(i);
    }
    return;
  }
  if (run.isOutside()) {
    follow(first);
    follow(last);
    return;
  }
  // What boxes tell holds the next run's first point too; it serves where it decides nothing.
  if (beyondEnds(run, run.along().pixels) <= kMiss) {
    followEnds(run);
    return;
  }
  addLong(run);
}

void SoftWriter::followEnds(const CellRun& run) {
  leaveSpanTo(run);
  follow(run.points.first);
  follow(run.points.last);
}

void SoftWriter::addLong(const CellRun& run) {
  const Range reached = reachOf(run);
  const double beyond = beyondEnds(run, reached);
  if (beyond <= kMiss) {
    followEnds(run);
    return;
  }
  const bool isSteep = beyond <= kBeside * reached.size();
  if (beyond > kBeyond && !isSteep) {
    addSpan(run, reached);
    return;
  }
  leaveSpanTo(run);
  if (!isReached(run, reached)) {
    follow(run.points.first);
  }
  if (beyond <= kBeyond) {
    const AffineForm& along = run.along(trace_.mapping);
    const std::size_t high = RunSearch(trace_, along).highest(run.points);
    const AffineForm down = -along;
    const std::size_t low = RunSearch(trace_, down).highest(run.points);
    follow(std::min(low, high));
    follow(std::max(low, high));
  }
  follow(run.points.last);
}

/// Whether the line has come so near to the first point that it may go on from where it is: as near
/// as the points of the run lie to the line anyway, or to what it shows of a peak.
bool SoftWriter::isReached(const CellRun& run, const Range& reached) const {
  if (!isOpen_ || path_.points.back() + 1 != run.points.first) {
    return false;
  }
  const auto heightOf = [&](std::size_t i) { return trace_.at(run.along(trace_.mapping), i); };
  const double here = heightOf(path_.points.back());
  const double first = heightOf(run.points.first);
  const double away = std::fabs(first - here);
  if (away <= kBeyond) {
    return true;
  }
  const double come = hasLine() ? here - heightOf(path_.points[path_.points.size() - 2]) : 0;
  return away <= kBeside * reached.size() && come * (heightOf(run.points.last) - first) > 0;
}

/// What the points of a run cover along its column (or row). The boxes tell it but where they owe
/// an end to the next run's first point, or to both coordinates at once.
Range SoftWriter::reachOf(const CellRun& run) const {
  const AffineForm& along = run.along(trace_.mapping);
  const RunExtent& known = run.along();
  const bool isAligned = along.x == 0 || along.y == 0;
  const auto isOwn = [&run, isAligned](const IndexRange& points) {
    return isAligned && points.last <= run.points.last;
  };
  const auto valueAt = [this, &along](std::size_t i) { return trace_.at(along, i); };
  const AffineForm down = -along;
  return {
      isOwn(known.lowest) ? known.pixels.low : valueAt(RunSearch(trace_, down).highest(run.points)),
      isOwn(known.highest) ? known.pixels.high
                           : valueAt(RunSearch(trace_, along).highest(run.points))};
}

/// How far a run reaches beyond its ends.
double SoftWriter::beyondEnds(const CellRun& run, const Range& reached) const {
  const AffineForm& along = run.along(trace_.mapping);
  const double first = trace_.at(along, run.points.first);
  const double last = trace_.at(along, run.points.last);
  return std::max(reached.high - std::max(first, last), std::min(first, last) - reached.low);
}

/// Whether the last span lies in the column (or row) beside this run's.
bool SoftWriter::isBeside(const CellRun& run) const {
  return hasSpan_ && spanned_.isInColumn == run.isInColumn &&
         std::fabs(spanned_.lane().middle - run.lane().middle) == 1;
}

/// Whether the trace goes from a point straight to the beginning of the run: all that is between
/// lies in the column (or row) of either.
bool SoftWriter::isClose(std::size_t before, const CellRun& run) const {
  const auto across = [&](std::size_t i) { return trace_.at(run.across(trace_.mapping), i); };
  return before + 1 == run.points.first &&
         std::fabs(across(run.points.first) - across(before)) <= kBeyond;
}

/// Spans beside each other meet where the line between them crosses from one to the other. A line
/// that ends close to a span is reached by it.
void SoftWriter::addSpan(const CellRun& run, const Range& reached) {
  PixelSpan span{run.isInColumn, run.lane().middle, reached.low, reached.high, run.points.first};
  if (isBeside(run)) {
    const AffineForm& along = run.along(trace_.mapping);
    const double meeting =
        (trace_.at(along, spanned_.points.last) + trace_.at(along, run.points.first)) / 2;
    stretch(path_.spans.back(), meeting);
    stretch(span, meeting);
  } else if (hasLine() && isClose(path_.points.back(), run)) {
    stretch(span, trace_.at(run.along(trace_.mapping), path_.points.back()));
  } else if (isOpen_ || hasSpan_) {
    follow(run.points.first);
  }
  path_.spans.push_back(span);
  isOpen_ = false;
  hasSpan_ = true;
  spanned_ = run;
}

/// The line of the run, which is more than a point, begins where the span reaches.
void SoftWriter::leaveSpanTo(const CellRun& run) {
  if (hasSpan_ && isClose(spanned_.points.last, run)) {
    hasSpan_ = false;
    stretch(path_.spans.back(), trace_.at(run.along(trace_.mapping), run.points.first));
  }
}

void SoftWriter::leaveSpan() {
  if (hasSpan_) {
    hasSpan_ = false;
    follow(spanned_.points.last);
  }
}

void SoftWriter::follow(std::size_t i) {
  leaveSpan();
  if (isOpen_ && path_.points.back() == i) {
    return;
  }
  const PlanePoint to = placeOf(i);
  if (!isOpen_) {
    path_.write(i, false);
    isOpen_ = true;
    return;
  }
  if (hasLine() && cone_.holds(to)) {
    path_.points.back() = i;
    cone_.narrow(to);
    return;
  }
  cone_.start(placeOf(path_.points.back()), to);
  path_.write(i, true);
}

}  // namespace zyn
