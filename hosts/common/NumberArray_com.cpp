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

template <typename Number>
_variant_t arrayOf(std::span<const Number> numbers, VARTYPE type) {
  SAFEARRAY* const array = SafeArrayCreateVector(type, 0, static_cast<ULONG>(numbers.size()));
  if (array == nullptr) {
    throw std::bad_alloc();
  }
  _variant_t value;
  value.vt = static_cast<VARTYPE>(VT_ARRAY | type);
  value.parray = array;
  void* data = nullptr;
  if (FAILED(SafeArrayAccessData(array, &data))) {
    throw std::bad_alloc();
  }
  std::copy(numbers.begin(), numbers.end(), static_cast<Number*>(data));
  SafeArrayUnaccessData(array);
  return value;
}

}  // namespace

_variant_t numberArray(std::span<const double> numbers) { return arrayOf(numbers, VT_R8); }

_variant_t integerArray(std::span<const std::int32_t> numbers) { return arrayOf(numbers, VT_I4); }

std::vector<double> numbersOf(const VARIANT& value) { return elements<double>(value, VT_R8); }

std::vector<std::int32_t> integersOf(const VARIANT& value) {
  return elements<std::int32_t>(value, VT_I4);
}

}  // namespace zyn::host
