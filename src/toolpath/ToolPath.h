#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include "core/Box3.h"
#include "toolpath/PathArc.h"
#include "toolpath/PathSink.h"

namespace zyn {

/// Points that follow one another, what leads from each to the next, and how long that takes.
/// Segment i leads from point i to i + 1. Every change is made as a whole or, where memory runs
/// out, not at all.
class ToolPath {
 public:
  static constexpr double kFeedSpeed = 1000;  ///< units a minute
  static constexpr double kRapidSpeed = 5000;

  /// What segments have besides their points: a value each, or none at all for the default of all.
  struct Columns {
    std::vector<std::int32_t> types{};
    std::vector<double> speeds{};  ///< units a minute; 0 for the path's own
    std::vector<std::int32_t> lines{};
  };
  /// The segments from `first` on that an arc was cut into, at equal parts of its turn.
  struct ArcSpan {
    std::size_t first;
    std::size_t count;
    PathArc arc;
  };
  /// The tool waits at a point.
  struct Dwell {
    std::size_t point;
    double seconds;
  };

  ToolPath() = default;
  /// `arcs` and `dwells` in the order of their segments and points; x, y, z of each point.
  ToolPath(std::vector<double> points, Columns columns, std::vector<ArcSpan> arcs,
           std::vector<Dwell> dwells)
      : points_(std::move(points)),
        columns_(std::move(columns)),
        arcs_(std::move(arcs)),
        dwells_(std::move(dwells)) {}

  std::size_t pointCount() const { return points_.size() / 3; }
  std::size_t segmentCount() const { return points_.empty() ? 0 : pointCount() - 1; }
  const std::vector<double>& points() const { return points_; }
  PathPoint pointAt(std::size_t point) const {
    return {points_[3 * point], points_[3 * point + 1], points_[3 * point + 2]};
  }
  std::int32_t typeOf(std::size_t segment) const {
    return columns_.types.empty() ? segment_type::kFeed : columns_.types[segment];
  }
  std::int32_t lineOf(std::size_t segment) const {
    return columns_.lines.empty() ? 0 : columns_.lines[segment];
  }
  /// As it was set.
  double ownSpeedOf(std::size_t segment) const {
    return columns_.speeds.empty() ? 0 : columns_.speeds[segment];
  }
  /// As it is moved along.
  double speedOf(std::size_t segment) const {
    if (typeOf(segment) == segment_type::kRapid) {
      return rapidSpeed_;
    }
    const double own = ownSpeedOf(segment);
    return own > 0 ? own : feedSpeed_;
  }
  double feedSpeed() const { return feedSpeed_; }
  double rapidSpeed() const { return rapidSpeed_; }

  void setTypes(std::vector<std::int32_t> types);
  void setSpeeds(std::vector<double> speeds);
  void setLines(std::vector<std::int32_t> lines) { columns_.lines = std::move(lines); }
  void setFeedSpeed(double speed);
  void setRapidSpeed(double speed);

  /// The last segment's values go on where a column is left out.
  void append(const std::vector<double>& points,
              const std::optional<std::vector<std::int32_t>>& types,
              const std::optional<std::vector<double>>& speeds,
              const std::optional<std::vector<std::int32_t>>& lines);

  /// Lengths and times will need no more memory while no more than `added` points are appended.
  void makeRoomToMeasure(std::size_t added);

  /// None without points.
  const std::optional<Box3>& bounds() const;

  /// The way to a point.
  double lengthAt(std::size_t point) const;
  double segmentLength(std::size_t segment) const {
    return lengthAt(segment + 1) - lengthAt(segment);
  }
  double length() const { return points_.empty() ? 0 : lengthAt(pointCount() - 1); }

  /// When a point is left; of the last one, when everything is done.
  double timeAt(std::size_t point) const;
  /// How long a segment takes, in seconds.
  double durationOf(std::size_t segment) const {
    return finite(segmentLength(segment) * kSeconds / speedOf(segment));
  }
  double duration() const { return points_.empty() ? 0 : timeAt(pointCount() - 1); }

  /// The last segment that begins at such a length or before; there is one.
  std::size_t segmentAtLength(double length) const;
  /// The last one that begins at such a time or before; none before the first.
  std::optional<std::size_t> segmentAtTime(double time) const;

  /// Where the tool is after a share of a segment's length, 0 to 1.
  PathPoint placeIn(std::size_t segment, double share) const;

 private:
  static constexpr double kSeconds = 60;  ///< a minute

  /// For what overflows the largest number, with which can be calculated.
  static double finite(double number) {
    constexpr double kMost = std::numeric_limits<double>::max();
    return number <= kMost ? number : kMost;
  }

  /// The values for `count` segments to which `added` come, of which all have `last` if none are
  /// given. Has made room in `column` when it returns.
  template <class T>
  static std::vector<T> extension(std::vector<T>& column,
                                  const std::optional<std::vector<T>>& given, std::size_t count,
                                  std::size_t added, T standard);
  const ArcSpan* arcOf(std::size_t segment) const;
  void measureLengths() const;
  void measureTimes() const;

  std::vector<double> points_;
  Columns columns_;
  std::vector<ArcSpan> arcs_;
  std::vector<Dwell> dwells_;
  double feedSpeed_ = kFeedSpeed;
  double rapidSpeed_ = kRapidSpeed;

  mutable std::optional<Box3> bounds_;
  mutable std::vector<double> lengths_;  ///< of as many points as have been measured
  mutable std::vector<double> times_;
};

}  // namespace zyn
