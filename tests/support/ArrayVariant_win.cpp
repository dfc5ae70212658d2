#include "support/ArrayVariant_win.h"

namespace zyn::test {
namespace {

_variant_t ownArray(VARTYPE elementType, SAFEARRAY* array) {
  VARIANT value;
  VariantInit(&value);
  value.vt = static_cast<VARTYPE>(VT_ARRAY | elementType);
  value.parray = array;
  return _variant_t(value, false);
}

void putNumber(VARTYPE type, double value, void* slot) {
  switch (type) {
    case VT_R8:
      *static_cast<double*>(slot) = value;
      break;
    case VT_R4:
      *static_cast<float*>(slot) = static_cast<float>(value);
      break;
    case VT_I4:
      *static_cast<LONG*>(slot) = static_cast<LONG>(value);
      break;
    case VT_I2:
      *static_cast<SHORT*>(slot) = static_cast<SHORT>(value);
      break;
    case VT_UI1:
      *static_cast<BYTE*>(slot) = static_cast<BYTE>(value);
      break;
    default:
      throw std::invalid_argument("numberArray: no such element type");
  }
}

}  // namespace

_variant_t numberArray(VARTYPE type, const std::vector<double>& values) {
  SAFEARRAY* array = SafeArrayCreateVector(type, 0, static_cast<ULONG>(values.size()));
  for (LONG i = 0; i < static_cast<LONG>(values.size()); ++i) {
    void* slot = nullptr;
    require(SafeArrayPtrOfIndex(array, &i, &slot), "SafeArrayPtrOfIndex");
    putNumber(type, values[static_cast<size_t>(i)], slot);
  }
  return ownArray(type, array);
}

_variant_t doubleArray(const std::vector<double>& values) { return numberArray(VT_R8, values); }

_variant_t variantArray(const std::vector<_variant_t>& values) {
  SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(values.size()));
  for (LONG i = 0; i < static_cast<LONG>(values.size()); ++i) {
    VARIANT element = values[static_cast<size_t>(i)];
    require(SafeArrayPutElement(array, &i, &element), "SafeArrayPutElement");
  }
  return ownArray(VT_VARIANT, array);
}

_variant_t doubleTable(ULONG rows, ULONG columns) {
  SAFEARRAYBOUND bounds[] = {{rows, 0}, {columns, 0}};
  return ownArray(VT_R8, SafeArrayCreate(VT_R8, 2, bounds));
}

_variant_t nullArray(VARTYPE elementType) { return ownArray(elementType, nullptr); }

_variant_t arrayReference(_variant_t& array) {
  VARIANT value;
  VariantInit(&value);
  value.vt = static_cast<VARTYPE>(V_VT(&array) | VT_BYREF);
  value.pparray = &V_ARRAY(&array);
  return _variant_t(value, false);
}

_variant_t variantReference(VARIANT* variant) {
  VARIANT value;
  VariantInit(&value);
  value.vt = VT_VARIANT | VT_BYREF;
  value.pvarVal = variant;
  return _variant_t(value, false);
}

std::vector<double> doublesIn(const VARIANT& value) {
  if (value.vt != (VT_ARRAY | VT_R8) || !value.parray) {
    throw std::runtime_error("not an array of doubles: type " + std::to_string(value.vt));
  }
  LONG first = -1;
  LONG last = -1;
  if (SafeArrayGetDim(value.parray) != 1) throw std::runtime_error("not one dimension");
  require(SafeArrayGetLBound(value.parray, 1, &first), "SafeArrayGetLBound");
  require(SafeArrayGetUBound(value.parray, 1, &last), "SafeArrayGetUBound");
  if (first != 0) throw std::runtime_error("lower bound is not 0");
  double* data = nullptr;
  require(SafeArrayAccessData(value.parray, reinterpret_cast<void**>(&data)),
          "SafeArrayAccessData");
  std::vector<double> values(data, data + last + 1);
  SafeArrayUnaccessData(value.parray);
  return values;
}

}  // namespace zyn::test
