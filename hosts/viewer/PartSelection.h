#pragma once

#include <set>
#include <span>

namespace zyn::viewer {

/// The parts that are selected, by number.
class PartSelection {
 public:
  /// What a pick does with the parts it found: become the selection (nothing found empties it), or
  /// with Control each one in or out.
  void pick(std::span<const int> found, bool toggle);

  void clear() { parts_.clear(); }
  bool contains(int part) const { return parts_.contains(part); }
  const std::set<int>& parts() const { return parts_; }

 private:
  std::set<int> parts_;
};

}  // namespace zyn::viewer
