#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

namespace zyn {

/// The whole part of `value` as a 32-bit integer, held at the ends of the range; 0 for what is not
/// a number.
inline std::int32_t saturatedInteger(double value) {
  constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
  constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
  if (std::isnan(value)) {
    return 0;
  }
  if (value <= kMin) {
    return kMin;
  }
  return value >= kMax ? kMax : static_cast<std::int32_t>(value);
}

/// `value` in single precision; infinite where it is too large for that.
inline float saturatedFloat(double value) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  if (std::abs(value) > std::numeric_limits<float>::max()) {
    return value > 0 ? kInfinity : -kInfinity;
  }
  return static_cast<float>(value);
}

}  // namespace zyn
