#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>

#include <cstdint>
#include <vector>

#include "core/NumericArray.h"

namespace zyn {

/// Reads an argument that holds numbers: an array of doubles, or of VARIANTs of type R8, I4 or I2,
/// with one dimension. All elements are read, from the first in memory on, whatever the array's
/// lower bound is. Never changes the argument, never reads outside its arrays.
NumericArray readNumericArray(const VARIANT& argument);

/// The same, and arrays of scripts: objects with `length` and elements by number. May run code of
/// the script.
NumericArray readNumbers(const VARIANT& argument);

/// Answers a property get or an out argument with an array of doubles, lower bound 0. E_POINTER
/// without a place.
HRESULT giveNumbers(VARIANT* place, const std::vector<double>& numbers);

/// The same with an array of 32-bit integers.
HRESULT giveIntegers(VARIANT* place, const std::vector<std::int32_t>& integers);

}  // namespace zyn
