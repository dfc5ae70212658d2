#include "com/changeType_com.h"

#include <wrl/client.h>

#include "com/OwnedVariant_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

/// Objects that stand for one another.
constexpr int kMostObjects = 8;

bool isNullReference(const VARIANT& value) { return V_ISBYREF(&value) && !V_BYREF(&value); }

IDispatch* objectIn(const VARIANT& value) {
  if (isNullReference(value)) {
    return nullptr;
  }
  switch (V_VT(&value)) {
    case VT_DISPATCH:
      return V_DISPATCH(&value);
    case VT_BYREF | VT_DISPATCH:
      return *V_DISPATCHREF(&value);
    case VT_BYREF | VT_VARIANT:
      return V_VT(V_VARIANTREF(&value)) == VT_DISPATCH ? V_DISPATCH(V_VARIANTREF(&value)) : nullptr;
    default:
      return nullptr;
  }
}

HRESULT readDefaultProperty(IDispatch* object, LCID locale, VARIANT* value) {
  DISPPARAMS none = {};
  return object->Invoke(DISPID_VALUE, IID_NULL, locale, DISPATCH_PROPERTYGET, &none, value, nullptr,
                        nullptr);
}

HRESULT changeValue(VARIANT& target, VARIANT& source, VARTYPE type, LCID locale) {
  return isNullReference(source) ? DISP_E_TYPEMISMATCH
                                 : VariantChangeTypeEx(&target, &source, locale, 0, type);
}

/// The value that `object` stands for; one without a value does not fit.
HRESULT changeObject(VARIANT& target, ComPtr<IDispatch> object, VARTYPE type, LCID locale) {
  for (int left = kMostObjects; left > 0; --left) {
    OwnedVariant value;
    if (FAILED(readDefaultProperty(object.Get(), locale, value.get()))) {
      break;
    }
    object = objectIn(*value.get());
    if (!object) {
      return changeValue(target, *value.get(), type, locale);
    }
  }
  return DISP_E_TYPEMISMATCH;
}

}  // namespace

HRESULT changeType(VARIANT& target, VARIANT& source, VARTYPE type, LCID locale) {
  const bool isForObject = type == VT_DISPATCH || type == VT_UNKNOWN;
  IDispatch* const object = isForObject ? nullptr : objectIn(source);
  return object ? changeObject(target, object, type, locale)
                : changeValue(target, source, type, locale);
}

}  // namespace zyn
