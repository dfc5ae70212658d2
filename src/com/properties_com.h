#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>

#include <type_traits>

namespace zyn {

/// Answers a property get: E_POINTER without a place for the value.
template <class T>
HRESULT give(T* place, std::type_identity_t<T> value) {
  if (!place) {
    return E_POINTER;
  }
  *place = value;
  return S_OK;
}

inline HRESULT giveFlag(VARIANT_BOOL* place, bool value) {
  return give(place, value ? VARIANT_TRUE : VARIANT_FALSE);
}

/// The flags of the published interfaces are set by VARIANT_TRUE alone; any other value clears
/// them.
inline bool isExactlyTrue(VARIANT_BOOL value) { return value == VARIANT_TRUE; }

/// Those of further interfaces are set by any value but 0.
inline bool isOn(VARIANT_BOOL value) { return value != VARIANT_FALSE; }

}  // namespace zyn
