#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>

#include "core/GlMatrix.h"

namespace zyn {

/// A matrix as hosts give it: 16 numbers column after column, or 4 by 4 by (row, column). Throws
/// badArgument for `name` where it is not finite, has no inverse, or its last row is not 0 0 0 1.
GlMatrix readPlace(const wchar_t* name, const VARIANT& matrix);

/// The matrix of the orthonormal frame that a host gives by three numbers each. Throws badArgument
/// where they are not finite, or the axes are 0 or parallel.
GlMatrix readFrame(const VARIANT& origin, const VARIANT& x, const VARIANT& y);

}  // namespace zyn
