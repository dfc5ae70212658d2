#pragma once

#include <algorithm>
#include <cstddef>

#include "core/Progress.h"

namespace zyn {

/// Passes progress on, from the begin of the work on, at most a hundred times, however often it is
/// told how far the work is.
class ProgressMeter {
 public:
  /// Throws Aborted where the work is not to begin.
  ProgressMeter(const Progress& progress, std::size_t total)
      : progress_(progress), total_(total), step_(total / 98 + 1) {
    reached(0);
  }

  /// Throws Aborted where the work is to stop.
  void reached(std::size_t done) {
    if (done >= next_ && next_ <= total_) {
      tell(done);
    }
  }

 private:
  void tell(std::size_t done) {
    next_ = done < total_ ? std::min(done + step_, total_) : total_ + 1;
    const double part =
        total_ > 0 ? static_cast<double>(std::min(done, total_)) / static_cast<double>(total_) : 0;
    if (progress_ && !progress_(part)) {
      throw Aborted();
    }
  }

  const Progress& progress_;
  std::size_t total_;
  std::size_t step_;
  std::size_t next_ = 0;
};

}  // namespace zyn
