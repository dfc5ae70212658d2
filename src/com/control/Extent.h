#pragma once

#include <cstdint>

namespace zyn {

/// Size of a control as containers measure it: HIMETRIC, hundredths of a millimetre.
struct Extent {
  std::int32_t width = 0;
  std::int32_t height = 0;

  friend bool operator==(const Extent&, const Extent&) = default;
};

inline constexpr int kHimetricPerInch = 2540;

/// value * numerator / denominator, rounded to the nearest, halves away from zero.
/// denominator > 0.
constexpr std::int32_t scaleRounded(std::int32_t value, int numerator, int denominator) {
  const std::int64_t product = std::int64_t{value} * numerator;
  const std::int64_t half = denominator / 2;
  const std::int64_t scaled = (product < 0 ? product - half : product + half) / denominator;
  if (scaled > INT32_MAX) {
    return INT32_MAX;
  }
  if (scaled < INT32_MIN) {
    return INT32_MIN;
  }
  return static_cast<std::int32_t>(scaled);
}

/// Lengths in pixels at `dpi` dots per inch. At up to 2540 dpi a number of pixels comes back
/// unchanged from HIMETRIC.
constexpr std::int32_t pixelsFromHimetric(std::int32_t length, int dpi) {
  return scaleRounded(length, dpi, kHimetricPerInch);
}
constexpr std::int32_t himetricFromPixels(std::int32_t pixels, int dpi) {
  return scaleRounded(pixels, kHimetricPerInch, dpi);
}

}  // namespace zyn
