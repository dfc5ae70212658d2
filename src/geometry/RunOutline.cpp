#include "geometry/RunOutline.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "geometry/ExtremePoint.h"

namespace zyn {

namespace {

/// A run of no more points is drawn as it is.
constexpr std::size_t kFew = 32;

/// Lines shorter than this, in pixels, hardly ever light one.
constexpr double kShort = 1.0 / 32;

/// How far a point reaches along a column into the diamond in the middle of its pixel: OpenGL draws
/// the pixels whose diamond a line leaves, so that the corners of a pixel do not count.
struct DiamondReach {
  AffineForm along;
  AffineForm across;
  double middle;    ///< of the column
  bool isAtMiddle;  ///< the middles of pixels lie there, not at the column's edges

  double at(double x, double y, double z) const {
    const double away = std::fabs(across.at(x, y, z) - middle);
    return isAtMiddle ? along.at(x, y, z) - away : along.at(x, y, z) + away;
  }
  double highest(const Box3& box) const {
    const double low = across.lowest(box) - middle;
    const double high = across.highest(box) - middle;
    return isAtMiddle ? along.highest(box) - std::max({low, -high, 0.0})
                      : along.highest(box) + std::max(-low, high);
  }
};

class Outline {
 public:
  Outline(const TraceInWindow& trace, const PixelGrid& grid, const CellRun& run,
          std::vector<std::size_t>& chosen)
      : trace_(trace), grid_(grid), run_(run), chosen_(chosen) {}

  void choose() {
    add(run_.first);
    if (run_.isInColumn) {
      addEnds(trace_.mapping.y, trace_.mapping.x, grid_.middle(run_.column));
    }
    if (run_.isInRow) {
      addEnds(trace_.mapping.x, trace_.mapping.y, grid_.middle(run_.row));
    }
    if (!run_.isFlat) {
      addHighest(-trace_.mapping.depth);
    }
    add(run_.last);
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
    const std::size_t i =
        ExtremeSearch<Form>(trace_.points, trace_.boxes, form).among(run_.first, run_.last);
    add(std::max(i, run_.first + 1) - 1);
    add(i);
    add(std::min(i + 1, run_.last));
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
  if (run.last - run.first < kFew) {
    for (std::size_t i = run.first; i <= run.last; ++i) {
      chosen.push_back(i);
    }
    return;
  }
  Outline(trace, grid, run, chosen).choose();
}

}  // namespace zyn
