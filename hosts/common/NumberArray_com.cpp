#include "common/NumberArray_com.h"

#include <algorithm>
#include <new>

namespace zyn::host {

namespace {

template <typename Number>
std::vector<Number> elements(const VARIANT& value, VARTYPE type) {
  if (value.vt != (VT_ARRAY | type) || value.parray == nullptr ||
      SafeArrayGetDim(value.parray) != 1) {
    return {};
  }
  const ULONG count = value.parray->rgsabound[0].cElements;
  void* data = nullptr;
  if (FAILED(SafeArrayAccessData(value.parray, &data))) {
    return {};
  }
  const Number* const first = static_cast<const Number*>(data);
  std::vector<Number> numbers(first, first + count);
  SafeArrayUnaccessData(value.parray);
  return numbers;
}

}  // namespace

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

std::vector<double> numbersOf(const VARIANT& value) { return elements<double>(value, VT_R8); }

std::vector<LONG> integersOf(const VARIANT& value) { return elements<LONG>(value, VT_I4); }

}  // namespace zyn::host
