#pragma once

#include <algorithm>
#include <cstddef>

#include "trace/SlidingVector.h"

namespace zyn {

/// Sums up something that grows at its end and loses its oldest elements. What is known of whole
/// blocks of consecutive elements is kept, so that each is looked at once, but for those at the two
/// ends. A Summary is of nothing at first and can `merge` that of the elements that follow.
template <class Summary>
class BlockSummaries {
 public:
  static constexpr std::size_t kBlock = 4096;

  /// Of the elements from `first` to `end`, which do not become less; `sumUp(from, to)` looks at
  /// elements.
  template <class SumUp>
  Summary total(std::size_t first, std::size_t end, const SumUp& sumUp) {
    const std::size_t firstBlock = (first + kBlock - 1) / kBlock;
    const std::size_t endBlock = std::max(firstBlock, end / kBlock);
    if (firstBlock > blocks_.end()) {
      blocks_ = SlidingVector<Summary>(firstBlock);
    }
    blocks_.dropBefore(firstBlock);
    for (std::size_t i = blocks_.end(); i < endBlock; ++i) {
      blocks_.push_back(sumUp(i * kBlock, (i + 1) * kBlock));
    }
    Summary sum = sumUp(first, std::min(firstBlock * kBlock, end));
    for (std::size_t i = firstBlock; i < endBlock; ++i) {
      sum.merge(blocks_[i]);
    }
    if (endBlock * kBlock < end) {
      sum.merge(sumUp(endBlock * kBlock, end));
    }
    return sum;
  }

 private:
  SlidingVector<Summary> blocks_;
};

}  // namespace zyn
