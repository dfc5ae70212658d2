#pragma once

#include <cstddef>

#include "graph/BlockSummaries.h"
#include "trace/PointSequence.h"

namespace zyn {

/// Of the finite y of a series. Without any, all but the count is not a number; the deviation also
/// of a single one.
struct SeriesStatistics {
  std::size_t count = 0;
  double min = 0.0;
  double max = 0.0;
  double mean = 0.0;
  double deviation = 0.0;  ///< standard deviation of a sample
};

/// Keeps the statistics of a series up to date, in time proportional to what comes, whatever the
/// size of the values: sums are of differences from means.
class StatisticsKeeper {
 public:
  SeriesStatistics of(const PointSequence& points);

 private:
  struct Moments {
    std::size_t count = 0;
    double min = 0.0;
    double max = 0.0;
    long double mean = 0.0L;  ///< wider: squares of what doubles hold neither overflow nor vanish
    long double squares = 0.0L;  ///< of the differences from the mean

    void merge(const Moments& next);
  };

  static Moments momentsOf(const PointSequence& points, std::size_t from, std::size_t to);

  BlockSummaries<Moments> blocks_;
};

/// Keeps the smallest distance between neighbours on the x axis, in time proportional to what comes
/// as long as x rises or falls throughout; where it does not, neighbours are found by sorting.
/// Points without a y that can be shown count too.
class GapKeeper {
 public:
  /// 0 where there are no two different x.
  double of(const PointSequence& points);

 private:
  struct Gaps {
    bool isEmpty = true;
    double first = 0.0;
    double last = 0.0;
    double smallest = 0.0;  ///< between points that follow one another; 0 where all are alike
    bool rises = true;
    bool falls = true;

    void take(double x);
    void merge(const Gaps& next);
  };

  static Gaps gapsOf(const PointSequence& points, std::size_t from, std::size_t to);

  BlockSummaries<Gaps> blocks_;
};

}  // namespace zyn
