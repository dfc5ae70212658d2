#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace zyn {

/// An array that grows at its end and loses its oldest elements, each by a number that it keeps:
/// the first one that ever was has number 0. Nothing that stays is moved when elements go: they
/// lie in two arrays, of which the older only shrinks. Where as many go as come, nothing is
/// allocated any more, and the memory is that of twice the elements.
template <class T>
class SlidingVector {
 public:
  SlidingVector() = default;
  explicit SlidingVector(std::vector<T> elements)
      : older_(std::move(elements)), split_(older_.size()) {}

  /// Without elements, of which the first will have this number.
  explicit SlidingVector(std::size_t first) : start_(first), split_(first), first_(first) {}

  std::size_t first() const { return first_; }
  std::size_t end() const { return split_ + newer_.size(); }  ///< behind the newest one
  std::size_t size() const { return end() - first_; }

  const T& operator[](std::size_t i) const {
    return i < split_ ? older_[i - start_] : newer_[i - split_];
  }
  T& operator[](std::size_t i) { return i < split_ ? older_[i - start_] : newer_[i - split_]; }

  /// Makes room for so many more: to append them does not fail then. Those that were there at first
  /// stay where they are.
  void reserve(std::size_t count) {
    if (newer_.size() + count <= newer_.capacity()) {
      return;
    }
    if (older_.empty()) {
      makeOlder();
    }
    newer_.reserve(std::max(newer_.size() + count, 2 * newer_.capacity()));
  }

  void push_back(const T& element) { newer_.push_back(element); }

  template <class Iterator>
  void append(Iterator from, Iterator to) {
    newer_.insert(newer_.end(), from, to);
  }

  /// Lets those before `first` go; it is no more than `end`.
  void dropBefore(std::size_t first) {
    if (first > first_ && first >= split_) {
      makeOlder();
    }
    first_ = first;
  }

 private:
  void makeOlder() {
    older_.swap(newer_);
    newer_.clear();
    start_ = split_;
    split_ = start_ + older_.size();
  }

  std::vector<T> older_;  ///< from `start_` to `split_`
  std::vector<T> newer_;  ///< from there
  std::size_t start_ = 0;
  std::size_t split_ = 0;
  std::size_t first_ = 0;
};

}  // namespace zyn
