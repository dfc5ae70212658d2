#pragma once

namespace zyn::bench {

/// How much of everything is measured. The required ratios are meant for the full sizes.
struct Sizes {
  int triangles = 100'000;
  int fewTriangles = 10'000;
  int pickedLabels = 10'000;
  int labels = 1'000;
  int points = 1'000'000;
  int fewPoints = 10'000;
  int meshTriangles = 1'000'000;
  int pathSegments = 1'000'000;
  int seriesPoints = 10'000'000;
  int rounds = 11;  ///< of which the median counts
  int streamedFrames = 3600;
  int views = 250;  ///< of each kind, at the same time

  /// A tenth of everything, to see in seconds whether the benchmarks work.
  static Sizes quick() {
    return {10'000, 1'000, 1'000, 100, 100'000, 1'000, 100'000, 100'000, 1'000'000, 3, 360, 25};
  }
};

}  // namespace zyn::bench
