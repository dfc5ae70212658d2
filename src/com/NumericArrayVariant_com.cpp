#include "com/NumericArrayVariant_com.h"

#include <oleauto.h>
#include <wrl/client.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <span>
#include <string>

#include "com/OwnedVariant_com.h"
#include "com/ScriptObject_com.h"

namespace zyn {

namespace {

/// Locks an array while its memory is looked at.
class ArrayAccess {
 public:
  explicit ArrayAccess(SAFEARRAY& array) : array_(array) {
    locked_ = SUCCEEDED(SafeArrayAccessData(&array_, &data_));
  }
  ArrayAccess(const ArrayAccess&) = delete;
  ArrayAccess& operator=(const ArrayAccess&) = delete;
  ~ArrayAccess() {
    if (locked_) {
      SafeArrayUnaccessData(&array_);
    }
  }

  /// The elements of an array with one dimension; none when they are of another size than T.
  template <class T>
  std::span<T> elements() const {
    if (!locked_ || !data_ || array_.cDims != 1 || array_.cbElements != sizeof(T)) {
      return {};
    }
    return {static_cast<T*>(data_), array_.rgsabound[0].cElements};
  }

 private:
  SAFEARRAY& array_;
  void* data_ = nullptr;
  bool locked_ = false;
};

NumericElement elementOf(const VARIANT& value) {
  switch (V_VT(&value)) {
    case VT_R8:
      return V_R8(&value);
    case VT_I4:
      return std::int32_t{V_I4(&value)};
    case VT_I2:
      return std::int16_t{V_I2(&value)};
    default:
      return std::monostate();
  }
}

NumericArray readDoubleArray(SAFEARRAY* array) {
  if (!array) {
    return {};
  }
  const ArrayAccess access(*array);
  return readDoubles(array->cDims, access.elements<const double>());
}

NumericArray readVariantArray(SAFEARRAY* array) {
  if (!array) {
    return {};
  }
  const ArrayAccess access(*array);
  std::vector<NumericElement> elements;
  std::ranges::transform(access.elements<const VARIANT>(), std::back_inserter(elements), elementOf);
  return readElements(array->cDims, elements);
}

NumericArray readForm(NumericForm form, const VARIANT& argument) {
  switch (form) {
    case NumericForm::kDoubles:
      return readDoubleArray(V_ARRAY(&argument));
    case NumericForm::kDoublesByReference:
      return V_ARRAYREF(&argument) ? readDoubleArray(*V_ARRAYREF(&argument)) : NumericArray();
    case NumericForm::kVariants:
      return readVariantArray(V_ARRAY(&argument));
    case NumericForm::kVariantByReference:
      if (const VARIANT* const referenced = V_VARIANTREF(&argument)) {
        return readForm(referencedNumericForm(V_VT(referenced)), *referenced);
      }
      break;
    case NumericForm::kNone:
      break;
  }
  return {};
}

/// The object that an argument is, or null.
IDispatch* objectIn(const VARIANT& argument) {
  const bool isReferenced = V_VT(&argument) == (VT_BYREF | VT_VARIANT) && V_VARIANTREF(&argument);
  const VARIANT& value = isReferenced ? *V_VARIANTREF(&argument) : argument;
  return V_VT(&value) == VT_DISPATCH ? V_DISPATCH(&value) : nullptr;
}

NumericArray readScriptArray(IDispatch& array) {
  const Microsoft::WRL::ComPtr<IDispatch> alive(&array);
  const std::optional<LONG> length = scriptLength(array);
  if (!length) {
    return {};
  }
  std::vector<NumericElement> elements;
  for (LONG i = 0; i < *length; ++i) {
    OwnedVariant element;
    if (FAILED(readProperty(array, std::to_wstring(i), element))) {
      return {};
    }
    elements.push_back(elementOf(*element.get()));
  }
  return readElements(1, elements);
}

/// False if the array's memory cannot be had.
template <class T>
bool fill(SAFEARRAY& array, const std::vector<T>& values) {
  const ArrayAccess access(array);
  const std::span<T> elements = access.elements<T>();
  if (elements.size() != values.size()) {
    return false;
  }
  std::ranges::copy(values, elements.begin());
  return true;
}

/// Makes a vector of `type`, whose elements are T, and hands it over.
template <class T>
HRESULT giveVector(VARIANT* place, VARTYPE type, const std::vector<T>& values) {
  if (!place) {
    return E_POINTER;
  }
  VariantInit(place);
  SAFEARRAY* const array = SafeArrayCreateVector(type, 0, static_cast<ULONG>(values.size()));
  if (!array) {
    return E_OUTOFMEMORY;
  }
  if (!fill(*array, values)) {
    SafeArrayDestroy(array);
    return E_OUTOFMEMORY;
  }
  V_VT(place) = static_cast<VARTYPE>(VT_ARRAY | type);
  V_ARRAY(place) = array;
  return S_OK;
}

}  // namespace

NumericArray readNumericArray(const VARIANT& argument) {
  return readForm(numericForm(V_VT(&argument)), argument);
}

NumericArray readNumbers(const VARIANT& argument) {
  IDispatch* const object = objectIn(argument);
  return object ? readScriptArray(*object) : readNumericArray(argument);
}

HRESULT giveNumbers(VARIANT* place, const std::vector<double>& numbers) {
  return giveVector(place, VT_R8, numbers);
}

HRESULT giveIntegers(VARIANT* place, const std::vector<std::int32_t>& integers) {
  return giveVector(place, VT_I4, integers);
}

}  // namespace zyn
