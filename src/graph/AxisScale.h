#pragma once

namespace zyn {

enum class AxisKind { kLinear, kLog10, kDate };

/// A range of values: an axis from end to end.
struct ValueRange {
  double min = 0.0;
  double max = 1.0;

  bool operator==(const ValueRange&) const = default;
};

/// Which pixel shows which value of an axis. Exact at both ends, monotone, and finite whatever the
/// range: from the smallest numbers to the whole of them. A date is a number of days since
/// 1899-12-30.
struct AxisScale {
  AxisKind kind = AxisKind::kLinear;
  double min = 0.0;
  double max = 1.0;
  bool isInverted = false;
  double pixelFrom = 0.0;  ///< of `min`, or of `max` where the axis is inverted
  double pixelTo = 1.0;  ///< of the other end; below `pixelFrom` where pixels are counted downwards

  /// Whether the axis can show a range: finite ends, in order, with logarithms where it needs them.
  bool isValid() const;

  /// Whether it can show a value, in its range or beyond it.
  bool canShow(double value) const;

  /// Only of values that it can show.
  double pixelOf(double value) const;
  double valueOf(double pixel) const;

  /// Pixels from end to end.
  double length() const;

  /// What a drawing multiplies by pixels: the value, or its decades on a logarithmic axis.
  double coordinateOf(double value) const;

 private:
  double partOf(double value) const;
  double valueAt(double part) const;
  bool isWithinAnOctave() const;
};

}  // namespace zyn
