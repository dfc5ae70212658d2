#pragma once

#include <cstddef>

#include "core/Progress.h"

namespace zyn {

/// Passes progress on at most a hundred times, however often it is told how far the work is.
class ProgressMeter {
 public:
  ProgressMeter(const Progress& progress, std::size_t total)
      : progress_(progress), total_(total), step_(total / 100 + 1), next_(step_) {}

  /// Throws Aborted where the work is to stop.
  void reached(std::size_t done) {
    if (done >= next_) {
      tell(done);
    }
  }

 private:
  void tell(std::size_t done) {
    next_ = done + step_;
    if (progress_ && !progress_(static_cast<double>(done) / static_cast<double>(total_))) {
      throw Aborted();
    }
  }

  const Progress& progress_;
  std::size_t total_;
  std::size_t step_;
  std::size_t next_;
};

}  // namespace zyn
