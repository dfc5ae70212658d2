#pragma once

#include <cmath>
#include <functional>
#include <string>
#include <vector>

namespace zyn {

/// An axis of a graph in its window: its range in model units, and the size of a pixel.
struct FrameAxis {
  double min = 0.0;
  double max = 0.0;
  double unitsPerPixel = 0.0;  ///< below 0 where the axis is mirrored

  /// Pixels from the start of the axis.
  double position(double value) const { return (value - min) / unitsPerPixel; }

  double length() const { return position(max); }

  /// How many pixels there are along it; 0 where that has no sense.
  double pixels() const { return std::isfinite(length()) ? std::abs(length()) : 0.0; }
};

/// A mark on an axis.
struct Graduation {
  double position = 0.0;   ///< pixels from the start of the axis
  double factor = 0.0;     ///< which multiple of its step it is
  std::string label{};     ///< empty: none
  std::string exponent{};  ///< raised behind the label
};

/// The marks of an axis, each kind in order and never more than there are pixels.
struct Graduations {
  std::vector<Graduation> small;
  std::vector<Graduation> big;
};

/// The multiples of two steps, from the start of the axis (inclusive) to its end (exclusive); the
/// big ones are labelled. A step that cannot be followed gives none.
Graduations linearGraduations(const FrameAxis& axis, double bigStep, double smallStep);

/// For an axis in decades, both ends inclusive: powers of ten as big graduations, their multiples
/// by 2 to 9 as small ones, as far as there is room. The powers are labelled as such; where less
/// than two of them lie on the axis, all graduations are labelled with their values.
Graduations decadeGraduations(const FrameAxis& axis);

/// Length of a graduation's label along the axis, in pixels.
using LabelExtent = std::function<double(const Graduation&)>;

/// Takes labels away until those that stay are `gap` pixels apart; the graduations stay. Round
/// multiples keep theirs.
void thinLabels(Graduations& graduations, const LabelExtent& extent, double gap);

}  // namespace zyn
