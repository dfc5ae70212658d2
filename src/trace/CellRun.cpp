#include "trace/CellRun.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "trace/RunSearch.h"

namespace zyn {

namespace {

/// A run of no more points is drawn as it is.
constexpr std::size_t kFew = 32;

/// On an edge between columns (or rows), where points decide one by one which of the two a thin
/// line lights, so many.
constexpr std::size_t kFewOnEdge = 4096;

/// Lines shorter than this, in pixels, hardly ever light one.
constexpr double kShort = 1.0 / 32;

class Outline {
 public:
  Outline(const TraceInWindow& trace, const PixelGrid& grid, const CellRun& run,
          std::vector<std::size_t>& chosen)
      : trace_(trace), grid_(grid), run_(run), tail_(tailOf(run.points)), chosen_(chosen) {}

  void choose() {
    add(run_.points.first);
    if (run_.isInColumn) {
      addEnds(trace_.mapping.y, trace_.mapping.x, run_.column.middle);
    }
    if (run_.isInRow) {
      addEnds(trace_.mapping.x, trace_.mapping.y, run_.row.middle);
    }
    if (!run_.isFlat(grid_)) {
      addWithLines(RunSearch(trace_, -trace_.mapping.depth).highest(run_.points));
    }
    add(run_.points.last);
    const auto end = keys_.begin() + static_cast<std::ptrdiff_t>(count_);
    std::sort(keys_.begin(), end);
    connect(keys_.begin(), std::unique(keys_.begin(), end));
  }

 private:
  /// The ends of what the run covers along a column (or row).
  void addEnds(const AffineForm& along, const AffineForm& across, double middle) {
    addEnd(along, along);
    addEnd(-along, along);
    addEnd(DiamondReach{along, across, middle, !grid_.isShifted}, along);
    addEnd(DiamondReach{-along, across, middle, !grid_.isShifted}, along);
  }

  /// The end along a column (or row): a point with its two lines, which draw it; no others reach
  /// it. Where these may not light its pixel, those before and after it that come next.
  template <class Form>
  void addEnd(const Form& form, const AffineForm& along) {
    const auto [first, last] = run_.points;
    RunSearch search(trace_, form);
    const std::size_t highest = search.highest(run_.points);
    addWithLines(highest);
    if (highest < tail_ && !isInMiddle(trace_.at(along, highest))) {
      return;
    }
    if (const std::size_t end = std::min(highest, tail_); end > first) {
      addWithLines(search.highest({first, end - 1}));
    }
    if (highest < last) {
      addWithLines(search.highest({highest + 1, last}));
    }
  }

  /// Where the trace does not leave a pixel's diamond any more before it ends: it does not light it
  /// there.
  std::size_t tailOf(const IndexRange& points) const {
    const auto [first, last] = points;
    if (last + 1 < trace_.points.end() && !trace_.points.isGap(last + 1)) {
      return last + 1;
    }
    const double x = std::floor(trace_.windowX(last)) + 0.5;
    const double y = std::floor(trace_.windowY(last)) + 0.5;
    std::size_t tail = last + 1;
    while (tail > first &&
           std::fabs(trace_.windowX(tail - 1) - x) + std::fabs(trace_.windowY(tail - 1) - y) <
               0.5) {
      --tail;
    }
    return tail;
  }

  void addWithLines(std::size_t i) {
    add(std::max(i, run_.points.first + 1) - 1);
    add(i);
    add(std::min(i + 1, run_.points.last));
  }

  void add(std::size_t i) { keys_[count_++] = i; }

  template <class Iterator>
  void connect(Iterator key, Iterator end) {
    for (; key + 1 != end; ++key) {
      chosen_.push_back(*key);
      if (grid_.cellsPerPixel > 1 && isDirect(*key, *(key + 1))) {
        followClosely(*key, *(key + 1));
      } else {
        follow(*key, *(key + 1));
      }
    }
    chosen_.push_back(*key);
  }

  /// Whether the trace hardly turns back between two points, so that its lines do not add up to
  /// something that a few of them show as well.
  bool isDirect(std::size_t from, std::size_t to) const {
    constexpr double kDetour = 1.5;
    const double most = kDetour * stepBetween(from, to).size();
    double length = 0;
    for (std::size_t i = from; i < to && length <= most; ++i) {
      length += stepBetween(i, i + 1).size();
    }
    return length <= most;
  }

  /// Adds the points between `from` and `to`: smooth lines are darker the longer they are.
  void followClosely(std::size_t from, std::size_t to) {
    for (std::size_t i = from + 1; i < to; ++i) {
      if (stepBetween(chosen_.back(), i).size() >= kShort) {
        chosen_.push_back(i);
      }
    }
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
    return step.size() < kShort || step.isLike(stepBetween(from, from + 1)) ||
           step.isLike(stepBetween(to - 1, to));
  }

  struct Step {
    double x;
    double y;
    double size() const { return std::max(x, y); }
    bool isSteep() const { return y > x; }
    /// Between points that repeat each other nothing is drawn.
    bool isLike(const Step& other) const {
      return other.size() > 0 && isSteep() == other.isSteep();
    }
  };

  Step stepBetween(std::size_t from, std::size_t to) const {
    return {std::fabs(trace_.windowX(to) - trace_.windowX(from)),
            std::fabs(trace_.windowY(to) - trace_.windowY(from))};
  }

  /// The ends of the run, and at most nine points, with the two that come next, each with its
  /// neighbours.
  static constexpr std::size_t kMostKeys = 2 + 9 * 3 * 3;

  const TraceInWindow& trace_;
  const PixelGrid& grid_;
  const CellRun& run_;
  const std::size_t tail_;
  std::vector<std::size_t>& chosen_;
  std::array<std::size_t, kMostKeys> keys_{};
  std::size_t count_ = 0;
};

/// All points of the run but those that lie on a straight line along the edge.
void followEdge(const TraceInWindow& trace, const CellRun& run, std::vector<std::size_t>& chosen) {
  const bool isUpright = run.isInColumn && run.column.isEdge;
  const AffineForm& along = isUpright ? trace.mapping.y : trace.mapping.x;
  const AffineForm& across = isUpright ? trace.mapping.x : trace.mapping.y;
  const auto isBetween = [&](std::size_t i) {
    const double before = trace.at(along, i) - trace.at(along, i - 1);
    const double after = trace.at(along, i + 1) - trace.at(along, i);
    return trace.at(across, i - 1) == trace.at(across, i) &&
           trace.at(across, i) == trace.at(across, i + 1) && before * after >= 0;
  };
  const auto [first, last] = run.points;
  for (std::size_t i = first; i <= last; ++i) {
    if (i == first || i == last || !isBetween(i)) {
      chosen.push_back(i);
    }
  }
}

/// The ends of the run, and of what it covers along its column (or row).
void addPeaks(const TraceInWindow& trace, const CellRun& run, std::vector<std::size_t>& chosen) {
  const auto [first, last] = run.points;
  chosen.push_back(first);
  if (!(run.isInColumn && run.isInRow)) {
    const AffineForm& along = run.along(trace.mapping);
    const AffineForm down = -along;
    const std::size_t high = RunSearch(trace, along).highest(run.points);
    const std::size_t low = RunSearch(trace, down).highest(run.points);
    for (const std::size_t peak : {std::min(low, high), std::max(low, high)}) {
      if (peak > chosen.back() && peak < last) {
        chosen.push_back(peak);
      }
    }
  }
  chosen.push_back(last);
}

}  // namespace

void outlineRun(const TraceInWindow& trace, const PixelGrid& grid, const CellRun& run,
                std::vector<std::size_t>& chosen) {
  const auto [first, last] = run.points;
  if (grid.isThin && run.isOnEdge() && last - first < kFewOnEdge) {
    followEdge(trace, run, chosen);
    return;
  }
  if (last - first < kFew) {
    for (std::size_t i = first; i <= last; ++i) {
      chosen.push_back(i);
    }
    return;
  }
  if (grid.isMagnified) {
    addPeaks(trace, run, chosen);
    return;
  }
  Outline(trace, grid, run, chosen).choose();
}

}  // namespace zyn
