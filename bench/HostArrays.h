#pragma once

#include <cstring>
#include <vector>

#include "support/HostSession_win.h"

namespace zyn::bench {

/// Numbers as hosts hand them over, filled as fast as memory goes.
template <class Number>
_variant_t arrayOf(VARTYPE type, const std::vector<Number>& numbers) {
  SAFEARRAY* const array = SafeArrayCreateVector(type, 0, static_cast<ULONG>(numbers.size()));
  void* data = nullptr;
  test::require(SafeArrayAccessData(array, &data), "SafeArrayAccessData");
  std::memcpy(data, numbers.data(), numbers.size() * sizeof(Number));
  SafeArrayUnaccessData(array);
  _variant_t value;
  V_VT(&value) = static_cast<VARTYPE>(VT_ARRAY | type);
  V_ARRAY(&value) = array;
  return value;
}

}  // namespace zyn::bench
