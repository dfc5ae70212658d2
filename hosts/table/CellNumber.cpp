#include "table/CellNumber.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

#include "common/Words.h"

namespace zyn::table {

namespace {

bool isGap(std::string_view cell) {
  return cell.empty() || host::equalsIgnoringCase(cell, "nan") ||
         host::equalsIgnoringCase(cell, "na") || host::equalsIgnoringCase(cell, "n/a");
}

/// Reads numbers with a decimal point. Those too near to 0 for a double are 0.
std::optional<double> pointNumber(std::string_view digits) {
  double value = 0.0;
  const char* const end = digits.data() + digits.size();
  const std::from_chars_result result = std::from_chars(digits.data(), end, value);
  if (result.ptr != end || result.ec == std::errc::invalid_argument) {
    return std::nullopt;
  }
  if (result.ec == std::errc::result_out_of_range) {
    value = std::strtod(std::string(digits).c_str(), nullptr);
  }
  return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

}  // namespace

std::optional<double> cellNumber(std::string_view cell, char decimalSign) {
  if (isGap(cell)) {
    return std::numeric_limits<double>::quiet_NaN();
  }
  const std::string_view digits =
      cell.starts_with('+') && !cell.starts_with("+-") ? cell.substr(1) : cell;
  if (decimalSign == '.') {
    return pointNumber(digits);
  }
  if (digits.find('.') != std::string_view::npos) {
    return std::nullopt;
  }
  std::string withPoint(digits);
  std::replace(withPoint.begin(), withPoint.end(), ',', '.');
  return pointNumber(withPoint);
}

}  // namespace zyn::table
