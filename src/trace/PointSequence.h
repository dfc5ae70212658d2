#pragma once

#include <cmath>
#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "core/Box3.h"
#include "trace/SlidingVector.h"

namespace zyn {

/// The points of a trace, one array a coordinate. A point with a coordinate that is not finite is a
/// gap: it is no part of the trace, and nothing connects its neighbours. Points may be appended,
/// and the oldest dropped: each keeps the index that it has got.
class PointSequence {
 public:
#ifdef ZYN_COUNT_READS
  static inline std::size_t reads = 0;  ///< how often points were looked at: tests tell costs by it
#endif

  PointSequence() = default;

  /// Arrays of equal length; without `z` the points lie in the plane z = 0.
  PointSequence(std::vector<double> x, std::vector<double> y, std::vector<double> z = {})
      : isFlat_(z.empty()), x_(std::move(x)), y_(std::move(y)), z_(std::move(z)) {}

  /// Without points, of which the first will have this index; they lie in the plane.
  explicit PointSequence(std::size_t first) : x_(first), y_(first) {}

  /// Points in the plane, after those of a sequence without z; `x` and `y` are of equal length.
  void append(std::span<const double> x, std::span<const double> y) {
    x_.reserve(x.size());
    y_.reserve(y.size());
    x_.append(x.begin(), x.end());
    y_.append(y.begin(), y.end());
  }

  /// Drops the points before this one; those of a sequence without z.
  void dropBefore(std::size_t first) {
    x_.dropBefore(first);
    y_.dropBefore(first);
  }

  std::size_t first() const { return x_.first(); }  ///< the index of the oldest point
  std::size_t end() const { return x_.end(); }      ///< behind the newest one
  std::size_t size() const { return x_.size(); }

  double x(std::size_t i) const { return x_[i]; }
  double y(std::size_t i) const {
#ifdef ZYN_COUNT_READS
    ++reads;
#endif
    return y_[i];
  }
  double z(std::size_t i) const { return isFlat_ ? 0.0 : z_[i]; }
  Point at(std::size_t i) const { return {x(i), y(i), z(i)}; }

  bool isGap(std::size_t i) const {
    return !std::isfinite(x(i)) || !std::isfinite(y(i)) || !std::isfinite(z(i));
  }

 private:
  bool isFlat_ = true;
  SlidingVector<double> x_;
  SlidingVector<double> y_;
  SlidingVector<double> z_;
};

/// What is known of a run of consecutive points without looking at them.
struct RunBox {
  Box3 box;           ///< around the points that are no gaps; turned inside out without any
  bool whole = true;  ///< no gap among its points
  bool rises = true;  ///< no point has a smaller x than the one before; where it is whole

  bool isEmpty() const { return box.xMin > box.xMax; }
};

/// Boxes around runs of consecutive points, in levels: a run of level 0 holds kFan segments, one of
/// a further level kFan runs of the level below. Neighbours share the point between them, so that
/// every segment lies in a run. Takes time and memory in proportion to the number of points. Runs
/// have numbers as points have: run i of a level begins with point i * length(level).
class RunBoxes {
 public:
  static constexpr unsigned kFanBits = 4;
  static constexpr std::size_t kFan = std::size_t{1} << kFanBits;

  RunBoxes() = default;
  explicit RunBoxes(const PointSequence& points) { follow(points); }

  /// Takes notice of points that have been appended and dropped, in time proportional to their
  /// number; always of the same sequence.
  void follow(const PointSequence& points);

  /// 0 without points; the highest level has a single run.
  std::size_t levels() const { return levels_.size(); }
  std::size_t firstRun(std::size_t level) const { return levels_[level].first(); }
  std::size_t endRun(std::size_t level) const { return levels_[level].end(); }
  const RunBox& run(std::size_t level, std::size_t index) const { return levels_[level][index]; }

  /// The least and the greatest y from one of the known points to another, none of them a gap.
  std::pair<double, double> heights(const PointSequence& points, std::size_t first,
                                    std::size_t last) const;

  /// Around all points; empty without a point that is no gap.
  RunBox all() const;

  /// Number of segments in each run of a level but the last: its first points lie that far apart.
  static constexpr std::size_t length(std::size_t level) { return kFan << kFanBits * level; }
  /// The run of a level that holds a point: of two, the one that begins with it.
  static constexpr std::size_t runWith(std::size_t point, std::size_t level) {
    return level < kMostLevels ? point >> kFanBits * (level + 1) : 0;
  }

 private:
  static constexpr std::size_t kMostLevels = 64 / kFanBits - 1;

  struct Change;
  RunBox made(const PointSequence& points, std::size_t level, std::size_t index) const;
  void renew(const PointSequence& points, std::size_t level, const Change& change);

  std::vector<SlidingVector<RunBox>> levels_;
  std::size_t first_ = 0;  ///< of the points that are known
  std::size_t end_ = 0;
};

}  // namespace zyn
