#include "graph/Decimal.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <string_view>

namespace zyn {

namespace {

/// Powers of ten that doubles hold exactly.
constexpr std::array<double, 23> kPowers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                            1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                            1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
/// Whole numbers up to this are doubles.
constexpr std::int64_t kMostExact = std::int64_t{1} << 53U;

}  // namespace

double Decimal::value() const {
  if (digits == 0) {
    return 0;
  }
  const auto power = static_cast<std::size_t>(std::abs(exponent));
  if (power < kPowers.size() && digits >= -kMostExact && digits <= kMostExact) {
    // Rounded once, and so to the nearest.
    const auto whole = static_cast<double>(digits);
    return exponent < 0 ? whole / kPowers.at(power) : whole * kPowers.at(power);
  }
  const std::string written = std::to_string(digits) + 'e' + std::to_string(exponent);
  double nearest = 0;
  const auto read = std::from_chars(written.data(), written.data() + written.size(), nearest);
  if (read.ec == std::errc::result_out_of_range) {
    const double infinity = std::numeric_limits<double>::infinity();
    return magnitude() < 0 ? 0 : digits < 0 ? -infinity : infinity;
  }
  return nearest;
}

int Decimal::magnitude() const {
  int power = exponent;
  for (std::int64_t rest = digits / 10; rest != 0; rest /= 10) {
    ++power;
  }
  return digits == 0 ? 0 : power;
}

std::string Decimal::text(int decimals) const {
  std::string written = std::to_string(digits);
  const bool isNegative = digits < 0;
  if (isNegative) {
    written.erase(0, 1);
  }
  if (exponent + decimals > 0 && digits != 0) {
    written.append(static_cast<std::size_t>(exponent + decimals), '0');
  }
  if (decimals > 0) {
    const auto behind = static_cast<std::size_t>(decimals);
    if (written.size() <= behind) {
      written.insert(0, behind + 1 - written.size(), '0');
    }
    written.insert(written.size() - behind, 1, '.');
  }
  return isNegative ? '-' + written : written;
}

Decimal Decimal::stripped() const {
  Decimal shortest = *this;
  while (shortest.digits != 0 && shortest.digits % 10 == 0) {
    shortest.digits /= 10;
    ++shortest.exponent;
  }
  return shortest;
}

std::string superscript(int number) {
  static constexpr std::array<std::string_view, 10> kDigits{"⁰", "¹", "²", "³", "⁴",
                                                            "⁵", "⁶", "⁷", "⁸", "⁹"};
  std::string raised = number < 0 ? "⁻" : "";
  for (const char digit : std::to_string(std::abs(number))) {
    raised += kDigits.at(static_cast<std::size_t>(digit - '0'));
  }
  return raised;
}

}  // namespace zyn
