#include "zynshot/OptionValue.h"

#include <charconv>
#include <sstream>

#include "zynshot/UsageError.h"

namespace zyn::shot {

namespace {

template <typename Number>
Number parse(std::string_view text, Number least, Number most, const char* kind) {
  const std::string_view digits = text.starts_with('+') ? text.substr(1) : text;
  Number value{};
  const char* const end = digits.data() + digits.size();
  const std::from_chars_result result = std::from_chars(digits.data(), end, value);
  if (result.ec == std::errc() && result.ptr == end && value >= least && value <= most) {
    return value;
  }
  std::ostringstream message;
  message << '"' << text << "\" is not " << kind << " from " << least << " to " << most;
  throw UsageError(message.str());
}

}  // namespace

std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  for (std::size_t end = text.find(separator); end != text.npos; end = text.find(separator)) {
    parts.push_back(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  parts.push_back(text);
  return parts;
}

double parseNumber(std::string_view text, double least, double most) {
  return parse(text, least, most, "a number");
}

int parseInteger(std::string_view text, int least, int most) {
  return parse(text, least, most, "a whole number");
}

}  // namespace zyn::shot
