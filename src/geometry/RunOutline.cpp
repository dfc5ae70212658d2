#include "geometry/RunOutline.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "geometry/DiamondReach.h"
#include "geometry/ExtremePoint.h"

namespace zyn {

namespace {

/// A run of no more points is drawn as it is.
constexpr std::size_t kFew = 32;

/// Lines shorter than this, in pixels, hardly ever light one.
constexpr double kShort = 1.0 / 32;

class Outline {
 public:
  Outline(const TraceInWindow& trace, const PixelGrid& grid, const CellRun& run,
          std::vector<std::size_t>& chosen)
      : trace_(trace), grid_(grid), run_(run), chosen_(chosen) {}

  void choose() {
    add(run_.points.first);
    if (run_.isInColumn) {
      addEnds(trace_.mapping.y, trace_.mapping.x, run_.column.middle);
    }
    if (run_.isInRow) {
      addEnds(trace_.mapping.x, trace_.mapping.y, run_.row.middle);
    }
    if (!run_.isFlat(grid_)) {
      addHighest(-trace_.mapping.depth);
    }
    add(run_.points.last);
    const auto end = keys_.begin() + static_cast<std::ptrdiff_t>(count_);
    std::sort(keys_.begin(), end);
    connect(keys_.begin(), std::unique(keys_.begin(), end));
  }

 private:
  /// The ends of what the run covers along a column (or row).
  void addEnds(const AffineForm& along, const AffineForm& across, double middle) {
    addHighest(along);
    addHighest(-along);
    addHighest(DiamondReach{along, across, middle, !grid_.isShifted});
    addHighest(DiamondReach{-along, across, middle, !grid_.isShifted});
  }

  /// A point with its two lines: the trace's own lines draw its end, no others reach it.
  template <class Form>
  void addHighest(const Form& form) {
    const auto [first, last] = run_.points;
    const std::size_t i = ExtremeSearch<Form>(trace_.points, trace_.boxes, form).among(first, last);
    add(std::max(i, first + 1) - 1);
    add(i);
    add(std::min(i + 1, last));
  }

  void add(std::size_t i) { keys_[count_++] = i; }

  template <class Iterator>
  void connect(Iterator key, Iterator end) {
    for (; key + 1 != end; ++key) {
      chosen_.push_back(*key);
      follow(*key, *(key + 1));
    }
    chosen_.push_back(*key);
  }

  /// Adds points between `from` and `to` until the lines are as steep as those of the trace, or
  /// short: OpenGL widens steep lines along x and others along y.
  void follow(std::size_t from, std::size_t to) {
    if (to - from < 2 || isLikeTrace(from, to)) {
      return;
    }
    const std::size_t middle = from + (to - from) / 2;
    follow(from, middle);
    chosen_.push_back(middle);
    if (middle + 1 < to) {
      chosen_.push_back(middle + 1);
      follow(middle + 1, to);
    }
  }

  bool isLikeTrace(std::size_t from, std::size_t to) const {
    const Step step = stepBetween(from, to);
    return std::max(step.x, step.y) < kShort ||
           step.isSteep() == stepBetween(from, from + 1).isSteep() ||
           step.isSteep() == stepBetween(to - 1, to).isSteep();
  }

  struct Step {
    double x;
    double y;
    bool isSteep() const { return y > x; }
  };

  Step stepBetween(std::size_t from, std::size_t to) const {
    return {std::fabs(trace_.windowX(to) - trace_.windowX(from)),
            std::fabs(trace_.windowY(to) - trace_.windowY(from))};
  }

  /// The ends of the run, and at most nine points with their neighbours.
  static constexpr std::size_t kMostKeys = 2 + 9 * 3;

  const TraceInWindow& trace_;
  const PixelGrid& grid_;
  const CellRun& run_;
  std::vector<std::size_t>& chosen_;
  std::array<std::size_t, kMostKeys> keys_{};
  std::size_t count_ = 0;
};

}  // namespace

void outlineRun(const TraceInWindow& trace, const PixelGrid& grid, const CellRun& run,
                std::vector<std::size_t>& chosen) {
  const auto [first, last] = run.points;
  if (last - first < kFew) {
    for (std::size_t i = first; i <= last; ++i) {
      chosen.push_back(i);
    }
    return;
  }
  Outline(trace, grid, run, chosen).choose();
}

}  // namespace zyn
