#include "objects/text/NumberText.h"

#include <charconv>
#include <cmath>

namespace zyn {

std::string numberText(double value) {
  if (std::isnan(value)) {
    return "nan";  // also a negative one
  }
  constexpr int kDigits = 10;
  char buffer[80];
  const auto written =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, kDigits);
  return {buffer, written.ptr};
}

}  // namespace zyn
