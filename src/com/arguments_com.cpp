#include "com/arguments_com.h"

#include <array>
#include <charconv>
#include <cmath>

namespace zyn {

std::wstring textOf(double number) {
  if (std::isnan(number)) {
    return L"nan";  // its sign says nothing
  }
  std::array<char, 32> text{};
  const auto end = std::to_chars(text.begin(), text.end(), number).ptr;
  return {text.begin(), end};
}

std::wstring fileName(const wchar_t* name, BSTR value) {
  std::wstring file(value ? value : L"", SysStringLen(value));
  if (file.find(L'\0') != std::wstring::npos) {
    throw badArgument(name, L"the name holds a null character");
  }
  return file;
}

double finite(const wchar_t* name, double value) {
  if (!std::isfinite(value)) {
    throw badArgument(name, textOf(value) + L" is no finite number");
  }
  return value;
}

double inRange(const wchar_t* name, double value, double least, double most) {
  if (!(value >= least && value <= most)) {
    throw badArgument(
        name, textOf(value) + L" is not between " + textOf(least) + L" and " + textOf(most));
  }
  return value;
}

LONG inRange(const wchar_t* name, LONG value, LONG least, LONG most) {
  if (value < least || value > most) {
    throw badArgument(name, std::to_wstring(value) + L" is not between " + std::to_wstring(least) +
                                L" and " + std::to_wstring(most));
  }
  return value;
}

double positive(const wchar_t* name, double value) {
  if (!(finite(name, value) > 0)) {
    throw badArgument(name, textOf(value) + L" is not above 0");
  }
  return value;
}

}  // namespace zyn
