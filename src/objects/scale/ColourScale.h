#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace zyn {

/// The colours of a scale from its low end to its high one: those of a palette in the order of its
/// numbers, or a host's own.
class ColourPalette {
 public:
  enum Kind : std::int32_t { kViridis, kPlasma, kTurbo, kGrey, kCoolWarm, kOwn };
  using Colour = std::array<double, 3>;  ///< red, green, blue, 0 to 1

  explicit ColourPalette(Kind kind = kViridis) : kind_(kind) {}
  /// Two colours or more, equally spaced.
  explicit ColourPalette(std::vector<Colour> own) : kind_(kOwn), own_(std::move(own)) {}

  bool operator==(const ColourPalette&) const = default;

  Kind kind() const { return kind_; }
  static bool isKind(std::int32_t number) { return number >= kViridis && number <= kOwn; }

  /// `place`: 0 low end to 1 high end, and not beyond.
  Colour at(double place) const;

 private:
  Kind kind_;
  std::vector<Colour> own_;
};

/// What values have in common that a scale is to span.
struct ValueExtent {
  /// The least and the greatest that are finite, and the least of those above 0.
  std::optional<double> least{};
  std::optional<double> greatest{};
  std::optional<double> leastPositive{};

  void include(double value);
  void include(const ValueExtent& other);
};

/// The ends of a scale; the first may be above the second.
struct ScaleRange {
  double first = 0.0;
  double last = 1.0;

  bool operator==(const ScaleRange&) const = default;
};

/// The range that spans all values which such a scale can show.
ScaleRange rangeOf(const ValueExtent& values, bool isLogarithmic);

/// How values become colours.
struct ColourScale {
  using Colour = std::array<double, 4>;  ///< red, green, blue, alpha, 0 to 1
  static constexpr std::int32_t kMostBands = 256;

  ColourPalette palette{};
  ScaleRange range{};
  std::int32_t bands = 0;  ///< of one colour each; 0: continuous
  bool isLogarithmic = false;
  Colour absent{0.5, 0.5, 0.5, 1.0};  ///< of what it cannot show

  bool operator==(const ColourScale&) const = default;

  /// Where a value lies: 0 at the first end, 1 at the last, below and above beyond them; none where
  /// the scale cannot show it: what is not a number, and what has no logarithm.
  std::optional<double> placeOf(double value) const;

  /// The value at a place; none on a logarithmic scale whose ends have no logarithms.
  std::optional<double> valueAt(double place) const;

  Colour colourOf(double value) const;
  ColourPalette::Colour colourAtPlace(double place) const;
};

/// The scale as a texture, for surfaces whose corners have values: their texture coordinates are
/// interpolated, so that what lies between two values has the colour of a value between them.
/// Beyond its edges the colours there go on (ScaleTexture).
///
/// On a logarithmic scale, too, it is the value that is interpolated. Its rows go from 0 up to the
/// greatest value of the scale, to a quarter of it, and so on: a face uses the lowest row that
/// holds its values, in which even small ones are told apart.
class ScaleTexels {
 public:
  using Coordinate = std::array<float, 2>;
  static constexpr std::int32_t kColumns = 1024;

  explicit ScaleTexels(const ColourScale& scale);

  std::int32_t rows() const { return rows_; }
  const std::vector<std::uint8_t>& rgba() const { return rgba_; }  ///< row after row
  /// Whether there are colours between the texels.
  bool isSmooth() const { return scale_.bands == 0; }

  /// The row for a face of which this is the greatest value.
  std::int32_t rowFor(double greatest) const;

  /// Where a value that the scale can show lies in a row.
  Coordinate coordinateOf(double value, std::int32_t row) const;

 private:
  bool hasRows() const { return top_ > 0; }
  double topOf(std::int32_t row) const;
  double across(double value, std::int32_t row) const;
  ColourPalette::Colour colourAt(std::int32_t row, std::int32_t column) const;

  ColourScale scale_;
  double top_ = 0;  ///< the greatest value of a logarithmic scale
  std::int32_t rows_ = 1;
  std::vector<std::uint8_t> rgba_;
};

}  // namespace zyn
