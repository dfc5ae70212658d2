#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "core/AxisLogs.h"
#include "core/Box3.h"
#include "graph/BlockSummaries.h"
#include "graph/SeriesStatistics.h"
#include "trace/PointSequence.h"

namespace zyn {

/// By how much a value may be wrong: the lengths of an error bar's two parts.
struct ErrorRange {
  double minus = 0.0;
  double plus = 0.0;
};

/// The values of a series: points as they were set and appended, of which only the newest are kept
/// where it has a capacity, and their errors. What is derived of them is made when it is first
/// asked for and then keeps up, in time proportional to what was appended or dropped.
class SeriesData {
 public:
  /// The points in coordinates of the axes, and the boxes around them.
  struct Plotted {
    const PointSequence& points;
    const RunBoxes& boxes;
  };

  /// Replaces the points, which have no errors then; arrays of equal length.
  void setPoints(std::vector<double> x, std::vector<double> y);
  void append(std::span<const double> x, std::span<const double> y);

  /// How many points are kept at most; 0: all.
  std::size_t capacity() const { return capacity_; }
  void setCapacity(std::size_t capacity);

  /// As they were given. Each keeps its index, that of the oldest is points().first().
  const PointSequence& points() const { return points_; }

  /// One each for every point, not negative; what is not finite counts as none. Points appended
  /// later have none.
  void setErrorsX(std::span<const double> minus, std::span<const double> plus);
  void setErrorsY(std::span<const double> minus, std::span<const double> plus);
  void removeErrorsX() { setErrors(errorsX_, std::nullopt); }
  void removeErrorsY() { setErrors(errorsY_, std::nullopt); }
  bool hasErrorsX() const { return errorsX_.has_value(); }
  bool hasErrorsY() const { return errorsY_.has_value(); }
  bool hasErrors() const { return hasErrorsX() || hasErrorsY(); }
  ErrorRange errorX(std::size_t i) const { return errorsX_ ? (*errorsX_)[i] : ErrorRange{}; }
  ErrorRange errorY(std::size_t i) const { return errorsY_ ? (*errorsY_)[i] : ErrorRange{}; }

  /// On axes of these kinds. What it refers to stays until the series changes.
  Plotted plotted(const AxisLogs& logs);

  /// Another number after each change.
  std::uint64_t revision() const { return revision_; }

  /// What the points that can be shown cover of the axes, with their error bars as far as these can
  /// be shown; none without a point.
  std::optional<Box3> extent(const AxisLogs& logs);

  /// The smallest distance between different neighbours along x, whatever their y, in coordinates
  /// of the axis; 0 where there is none.
  double smallestGap(const AxisLogs& logs);

  SeriesStatistics statistics() { return statistics_.of(points_); }

 private:
  using Errors = SlidingVector<ErrorRange>;

  /// What error bars cover.
  struct Bars {
    std::optional<Box3> box;
    void merge(const Bars& next);
  };

  /// What is known of the series on axes of certain kinds.
  struct OnAxes {
    PointSequence logarithms;  ///< unless both axes are linear: the points are plotted as they are
    RunBoxes boxes;
    GapKeeper gaps;
    BlockSummaries<Bars> bars;
  };

  void changed() { ++revision_; }
  void dropBeyondCapacity();
  Errors errorsOf(std::span<const double> minus, std::span<const double> plus) const;
  void setErrors(std::optional<Errors>& errors, std::optional<Errors> values);
  OnAxes& upToDate(const AxisLogs& logs);
  void appendLogarithms(PointSequence& logarithms, const AxisLogs& logs) const;
  const PointSequence& shown(const OnAxes& known, const AxisLogs& logs) const {
    return logs.x || logs.y ? known.logarithms : points_;
  }
  Bars barsOf(const PointSequence& shown, const AxisLogs& logs, std::size_t from,
              std::size_t to) const;

  PointSequence points_;
  std::size_t capacity_ = 0;
  std::optional<Errors> errorsX_;
  std::optional<Errors> errorsY_;
  StatisticsKeeper statistics_;
  std::array<std::array<std::optional<OnAxes>, 2>, 2> onAxes_;
  std::uint64_t revision_ = 0;
};

}  // namespace zyn
