#pragma once

#include <windows.h>
// After windows.h:
#include <oleauto.h>

#include <cmath>
#include <string>

#include "platform/Failure_win.h"

namespace zyn {

/// How the members of further interfaces refuse an argument: E_INVALIDARG, with a text that names
/// it and says what was wrong.
inline Failure badArgument(const std::wstring& name, const std::wstring& what) {
  return {E_INVALIDARG, name + L": " + what};
}

/// The shortest text that reads as the same number.
std::wstring textOf(double number);

/// The name of a file as the system takes it: without null characters.
std::wstring fileName(const wchar_t* name, BSTR value);

/// The value, which is to be neither infinite nor not a number.
double finite(const wchar_t* name, double value);

/// The value, which is to lie between `least` and `most`, both included.
double inRange(const wchar_t* name, double value, double least, double most);
LONG inRange(const wchar_t* name, LONG value, LONG least, LONG most);

/// The value, which is to be finite and above 0.
double positive(const wchar_t* name, double value);

}  // namespace zyn
