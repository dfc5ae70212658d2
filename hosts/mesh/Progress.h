#pragma once

#include <cstddef>
#include <functional>

namespace zyn::mesh {

/// Called from time to time with the bytes read so far and those there are; may be empty.
using Progress = std::function<void(std::size_t done, std::size_t total)>;

/// Passes progress on at most about a hundred times, however often it is told.
class ProgressMeter {
 public:
  ProgressMeter(const Progress& progress, std::size_t total)
      : progress_(progress), total_(total), next_(step()) {}

  void reached(std::size_t done) {
    if (done < next_) {
      return;
    }
    next_ = done + step();
    if (progress_) {
      progress_(done, total_);
    }
  }

 private:
  std::size_t step() const { return total_ / 100 + 1; }

  const Progress& progress_;
  std::size_t total_;
  std::size_t next_;
};

}  // namespace zyn::mesh
