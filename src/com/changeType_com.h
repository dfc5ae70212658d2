#pragma once

#include <windows.h>
// After windows.h:
#include <oleauto.h>

namespace zyn {

/// VariantChangeTypeEx, which takes an object for the value of its default property, except that
/// an object whose value is an object again, and so on for ever, does not fit. Both may be the
/// same.
HRESULT changeType(VARIANT& target, VARIANT& source, VARTYPE type, LCID locale);

}  // namespace zyn
