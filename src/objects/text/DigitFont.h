#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace zyn {

/// A number as labels show it, with up to ten digits ("%.10g") and a point whatever the locale;
/// "inf", "-inf" or "nan" where it is none.
std::string numberText(double value);

/// Eight small hand-drawn fonts of what numbers are written with. Size 1 is 4 pixels high, each
/// further size one pixel more. Measures are in pixels.
inline constexpr int kDigitSizes = 8;
inline constexpr int kLargestDigitHeight = 11;

constexpr int digitHeight(int size) { return size + 3; }

struct DigitGlyph {
  int width;    ///< of the black box, which starts at the raster position
  int advance;  ///< to the next glyph
  std::array<std::uint8_t, kLargestDigitHeight> rows;  ///< from the bottom, highest bit leftmost
};

/// The glyph of a character of a number: a digit, a decimal point (".", "," or ":"), "-", "+" or
/// "e" ("E"). Any other character is a gap of a digit's width. `size`: 1 to 8.
const DigitGlyph& digitGlyph(char character, int size);

/// Width of a number: the black box of the first glyph and the advance of each later one.
int digitTextWidth(std::string_view number, int size);

}  // namespace zyn
