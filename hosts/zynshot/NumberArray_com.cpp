#include "zynshot/NumberArray_com.h"

#include <algorithm>
#include <new>

namespace zyn::shot {

_variant_t numberArray(std::span<const double> numbers) {
  SAFEARRAY* const array = SafeArrayCreateVector(VT_R8, 0, static_cast<ULONG>(numbers.size()));
  if (array == nullptr) {
    throw std::bad_alloc();
  }
  _variant_t value;
  value.vt = VT_ARRAY | VT_R8;
  value.parray = array;
  void* data = nullptr;
  if (FAILED(SafeArrayAccessData(array, &data))) {
    throw std::bad_alloc();
  }
  std::copy(numbers.begin(), numbers.end(), static_cast<double*>(data));
  SafeArrayUnaccessData(array);
  return value;
}

}  // namespace zyn::shot
