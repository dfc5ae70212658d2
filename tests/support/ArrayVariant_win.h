#pragma once

#include <initializer_list>
#include <vector>

#include "support/HostSession_win.h"

namespace zyn::test {

/// A one-dimensional array of numbers of type VT_R8, VT_R4, VT_I4, VT_I2 or VT_UI1.
_variant_t numberArray(VARTYPE type, const std::vector<double>& values);

/// A one-dimensional array of doubles.
_variant_t doubleArray(const std::vector<double>& values);

/// A one-dimensional array of VARIANTs.
_variant_t variantArray(const std::vector<_variant_t>& values);

/// An array of doubles with two dimensions, rows x columns, all zero.
_variant_t doubleTable(ULONG rows, ULONG columns);

/// An array type without an array behind it.
_variant_t nullArray(VARTYPE elementType);

/// The same array by reference (VT_BYREF on the array); the argument must outlive the result.
_variant_t arrayReference(_variant_t& array);

/// A reference to the VARIANT (VT_VARIANT | VT_BYREF), null allowed; it must outlive the result.
_variant_t variantReference(VARIANT* variant);

/// The elements of an array of doubles with one dimension and lower bound 0; throws for any other
/// form.
std::vector<double> doublesIn(const VARIANT& value);

}  // namespace zyn::test
