#include "graph/NumberFormat.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <stdexcept>
#include <utility>

namespace zyn {

namespace {

constexpr std::string_view kConversions = "diuoxXeEfFgGaA";
constexpr std::string_view kSizes = "hlLqjzt";
constexpr std::size_t kMostDigits = 2;  ///< of a width or a precision
constexpr int kDefaultPrecision = 6;

[[noreturn]] void refuse(const std::string& why) { throw std::invalid_argument(why); }

bool isDigit(char character) { return character >= '0' && character <= '9'; }

char upper(char character) {
  return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A')
                                              : character;
}

/// Takes the digits at the front away.
int readNumber(std::string_view& rest, const char* what) {
  const auto count =
      static_cast<std::size_t>(std::ranges::find_if_not(rest, isDigit) - rest.begin());
  if (count > kMostDigits) {
    refuse(std::string(what) + " is above 99");
  }
  int number = 0;
  for (const char digit : rest.substr(0, count)) {
    number = 10 * number + (digit - '0');
  }
  rest.remove_prefix(count);
  return number;
}

std::string charsOf(double magnitude, std::chars_format style, int precision) {
  std::array<char, 500> text{};  // 309 digits, a point and 99 decimals
  char* const end = text.data() + text.size();
  const auto written = precision < 0 ? std::to_chars(text.data(), end, magnitude, style)
                                     : std::to_chars(text.data(), end, magnitude, style, precision);
  return {text.data(), written.ptr};
}

/// With a point, where one is asked for and none is there.
std::string withPoint(std::string digits) {
  if (digits.find('.') == std::string::npos) {
    digits.insert(std::min(digits.find_first_of("ep"), digits.size()), 1, '.');
  }
  return digits;
}

bool isZero(const std::string& digits) {
  const std::string_view significant =
      std::string_view(digits).substr(0, digits.find_first_of("ep"));
  return significant.find_first_not_of("0x.") == std::string_view::npos;
}

}  // namespace

NumberFormat::NumberFormat(std::string_view format) {
  std::string* text = &before_;
  while (!format.empty()) {
    const char character = format.front();
    format.remove_prefix(1);
    if (character != '%') {
      *text += character;
    } else if (format.starts_with('%')) {
      *text += '%';
      format.remove_prefix(1);
    } else if (conversion_ != 0) {
      refuse("it has more than one conversion (a percent sign is written %%)");
    } else {
      format = readConversion(readFlags(format));
      text = &after_;
    }
  }
  if (conversion_ == 0) {
    refuse("it has no conversion such as %g");
  }
}

std::string_view NumberFormat::readFlags(std::string_view rest) {
  for (; !rest.empty(); rest.remove_prefix(1)) {
    switch (rest.front()) {
      case '-':
        isLeft_ = true;
        break;
      case '+':
        hasPlus_ = true;
        break;
      case ' ':
        hasSpace_ = true;
        break;
      case '0':
        hasZeros_ = true;
        break;
      case '#':
        isAlternative_ = true;
        break;
      default:
        return rest;
    }
  }
  return rest;
}

std::string_view NumberFormat::readConversion(std::string_view rest) {
  width_ = readNumber(rest, "its width");
  if (rest.starts_with('.')) {
    rest.remove_prefix(1);
    precision_ = readNumber(rest, "its precision");
  }
  rest.remove_prefix(std::min(rest.find_first_not_of(kSizes), rest.size()));
  if (rest.empty()) {
    refuse("it ends within a conversion");
  }
  const char conversion = rest.front();
  if (kConversions.find(conversion) == std::string_view::npos) {
    refuse(std::string("%") + conversion + " is no conversion of a number");
  }
  isUpperCase_ = conversion == upper(conversion);
  conversion_ = isUpperCase_ ? static_cast<char>(conversion - 'A' + 'a') : conversion;
  return rest.substr(1);
}

bool NumberFormat::isInteger() const {
  return std::string_view("diuox").find(conversion_) != std::string_view::npos;
}

/// Digit by digit, since numbers may be larger than any integer type.
std::string NumberFormat::integerDigits(double magnitude) const {
  const double base = conversion_ == 'x' ? 16 : conversion_ == 'o' ? 8 : 10;
  std::string digits;
  if (base == 10) {
    digits = charsOf(magnitude, std::chars_format::fixed, 0);
  } else {
    for (double rest = magnitude; rest >= 1; rest = std::floor(rest / base)) {
      digits += "0123456789abcdef"[static_cast<std::size_t>(std::fmod(rest, base))];
    }
    std::ranges::reverse(digits);
  }
  const auto least = static_cast<std::size_t>(precision_ < 0 ? 1 : precision_);
  if (digits == "0") {
    digits.clear();
  }
  const bool isOctal = isAlternative_ && conversion_ == 'o';
  if (digits.size() < least) {
    digits.insert(0, least - digits.size(), '0');
  }
  if (isOctal && !digits.starts_with('0')) {
    digits.insert(0, 1, '0');
  }
  return digits;
}

/// %g; with zeros at its end in the alternative form.
std::string NumberFormat::generalDigits(double magnitude) const {
  const int precision = precision_ < 0 ? kDefaultPrecision : std::max(precision_, 1);
  if (!isAlternative_) {
    return charsOf(magnitude, std::chars_format::general, precision);
  }
  const std::string scientific = charsOf(magnitude, std::chars_format::scientific, precision - 1);
  const std::size_t sign = scientific.find('e') + 1;
  int exponent = 0;
  std::from_chars(scientific.data() + sign + 1, scientific.data() + scientific.size(), exponent);
  exponent = scientific[sign] == '-' ? -exponent : exponent;
  return withPoint(exponent < -4 || exponent >= precision
                       ? scientific
                       : charsOf(magnitude, std::chars_format::fixed, precision - 1 - exponent));
}

std::string NumberFormat::digitsOf(double magnitude) const {
  if (isInteger()) {
    return integerDigits(magnitude);
  }
  if (conversion_ == 'g') {
    return generalDigits(magnitude);
  }
  std::string digits;
  if (conversion_ == 'a') {
    digits = charsOf(magnitude, std::chars_format::hex, precision_);
  } else {
    const auto style =
        conversion_ == 'f' ? std::chars_format::fixed : std::chars_format::scientific;
    digits = charsOf(magnitude, style, precision_ < 0 ? kDefaultPrecision : precision_);
  }
  return isAlternative_ ? withPoint(std::move(digits)) : digits;
}

/// `sign`: what stays in front of zeros that fill the width.
std::string NumberFormat::pad(const std::string& sign, const std::string& digits,
                              bool isFinite) const {
  const std::size_t taken = sign.size() + digits.size();
  const auto width = static_cast<std::size_t>(width_);
  const std::size_t missing = width > taken ? width - taken : 0;
  if (isLeft_) {
    return sign + digits + std::string(missing, ' ');
  }
  const bool isFilled = hasZeros_ && isFinite && !(isInteger() && precision_ >= 0);
  return isFilled ? sign + std::string(missing, '0') + digits
                  : std::string(missing, ' ') + sign + digits;
}

std::string NumberFormat::text(double value) const {
  const bool isFinite = std::isfinite(value);
  const double magnitude = std::abs(isInteger() ? std::round(value) : value);
  const std::string digits = isFinite            ? digitsOf(magnitude)
                             : std::isnan(value) ? std::string("nan")
                                                 : std::string("inf");
  const bool isNegative = value < 0 && !isZero(digits);
  std::string sign = isNegative ? "-" : hasPlus_ ? "+" : hasSpace_ ? " " : "";
  if (isFinite && (conversion_ == 'a' || (conversion_ == 'x' && isAlternative_ && magnitude > 0))) {
    sign += "0x";
  }
  std::string number = pad(sign, digits, isFinite);
  if (isUpperCase_) {
    std::ranges::transform(number, number.begin(), upper);
  }
  return before_ + number + after_;
}

}  // namespace zyn
