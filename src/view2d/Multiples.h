#pragma once

namespace zyn {

/// Consecutive multiples of a step.
class Multiples {
 public:
  /// None.
  Multiples() = default;

  /// The multiples from `min` (inclusive) to `max` (exclusive), where a multiple that misses a
  /// bound by its own rounding counts as equal to it. None for a step that is not above 0, for one
  /// so small against the bounds that adding it changes nothing or that there would be more than
  /// `most`, and for bounds that are not finite.
  static Multiples between(double min, double max, double step, double most);

  int count() const { return count_; }

  /// The step's factor of one of them, a whole number.
  double factor(int index) const { return first_ + index; }
  double value(int index) const { return factor(index) * step_; }

 private:
  double step_ = 0.0;
  double first_ = 0.0;
  int count_ = 0;
};

}  // namespace zyn
