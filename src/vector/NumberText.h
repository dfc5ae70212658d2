#pragma once

#include <charconv>
#include <cmath>
#include <string>
#include <system_error>

namespace zyn {

/// Appends a number of moderate size to a file's text: '.' for decimals, at most `decimals` (0 to
/// 9) of them and none that says nothing, never -0.
inline void appendNumber(std::string& text, double value, int decimals = 2) {
  char digits[64];
  auto end =
      std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, decimals);
  if (end.ec != std::errc()) {
    text += '0';
    return;
  }
  if (decimals > 0) {
    while (end.ptr[-1] == '0') {
      --end.ptr;
    }
    end.ptr -= end.ptr[-1] == '.' ? 1 : 0;
  }
  const bool isNothing = end.ptr - digits == 2 && digits[0] == '-' && digits[1] == '0';
  text.append(isNothing ? digits + 1 : digits, end.ptr);
}

}  // namespace zyn
