#include "com/ArgumentSlot_com.h"

#include <oleauto.h>

#include <cstring>
#include <utility>

#include "com/changeType_com.h"

namespace zyn {

namespace {

constexpr int kReferenceLevels = 4;

bool isReferenceTo(const VARIANT& value, VARTYPE type) { return V_VT(&value) == (VT_BYREF | type); }

bool isNullReference(const VARIANT& value) { return V_ISBYREF(&value) && !V_BYREF(&value); }

bool isOmitted(const VARIANT& value) {
  return V_VT(&value) == VT_ERROR && V_ERROR(&value) == DISP_E_PARAMNOTFOUND;
}

/// The VARIANT behind references to VARIANTs; null when they lead nowhere.
VARIANT* follow(VARIANT& argument) {
  VARIANT* value = &argument;
  for (int level = 0; level < kReferenceLevels; ++level) {
    if (isNullReference(*value)) {
      return nullptr;
    }
    if (!isReferenceTo(*value, VT_VARIANT)) {
      return value;
    }
    value = V_VARIANTREF(value);
  }
  return nullptr;
}

/// Size of a variable of that type; 0 for types that cannot be written to.
std::size_t sizeOf(VARTYPE type) {
  if ((type & VT_ARRAY) != 0) {
    return sizeof(SAFEARRAY*);
  }
  switch (type) {
    case VT_I1:
    case VT_UI1:
      return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
      return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
      return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
    case VT_BSTR:
    case VT_UNKNOWN:
    case VT_DISPATCH:
      return 8;
    default:
      return 0;
  }
}

bool canBeWrittenTo(const VARIANT& argument) {
  return !V_ISBYREF(&argument) || sizeOf(V_VT(&argument) & ~VT_BYREF) != 0;
}

bool isObject(VARTYPE type) { return type == VT_DISPATCH || type == VT_UNKNOWN; }

}  // namespace

ArgumentSlot::ArgumentSlot() noexcept {
  VariantInit(&value_);
  VariantInit(&reference_);
}

ArgumentSlot::~ArgumentSlot() {
  if (ownsValue_) {
    VariantClear(&value_);
  }
}

HRESULT ArgumentSlot::take(const Parameter& parameter, VARIANTARG& argument, LCID locale) {
  argument_ = follow(argument);
  if (!argument_ || (parameter.isOutput && !canBeWrittenTo(*argument_))) {
    return DISP_E_TYPEMISMATCH;
  }
  if (isOmitted(*argument_) && !parameter.isOptional) {
    return DISP_E_PARAMNOTOPTIONAL;
  }
  argumentIsVariable_ = argument_ != &argument;
  makePlace(parameter);
  return parameter.isInput ? takeValue(locale) : S_OK;
}

void ArgumentSlot::makePlace(const Parameter& parameter) {
  parameter_ = &parameter;
  if (parameter.type != VT_VARIANT) {
    V_VT(&value_) = parameter.type;
    V_I8(&value_) = 0;
  }
  if (parameter.byReference) {
    const bool isVariant = parameter.type == VT_VARIANT;
    V_VT(&reference_) = static_cast<VARTYPE>(VT_BYREF | parameter.type);
    V_BYREF(&reference_) = isVariant ? static_cast<void*>(&value_) : &V_I8(&value_);
    callValue_ = &reference_;
  }
}

HRESULT ArgumentSlot::takeValue(LCID locale) {
  const VARTYPE type = parameter_->type;
  if (isObject(type)) {
    return takeObject();
  }
  if (type == VT_VARIANT && parameter_->isOutput) {
    return VariantCopyInd(&value_, argument_);
  }
  if (type == VT_VARIANT || (V_VT(argument_) == type && !parameter_->isOutput)) {
    borrow(*argument_);
    return S_OK;
  }
  return changeType(value_, *argument_, type, locale);
}

/// Takes the value as it is, without a copy of what it leads to, but never as a reference: what
/// scripts pass as one, they mean as the value.
void ArgumentSlot::borrow(const VARIANT& value) {
  value_ = value;
  ownsValue_ = false;
  const VARTYPE type = V_VT(&value) & ~VT_BYREF;
  if (V_ISBYREF(&value) && sizeOf(type) != 0) {
    V_VT(&value_) = type;
    std::memcpy(&V_I8(&value_), V_BYREF(&value), sizeOf(type));
  }
}

/// Null is no object: scripts that have no typed null pass it so.
HRESULT ArgumentSlot::takeObject() {
  const VARTYPE given = V_VT(argument_) & ~VT_BYREF;
  if (given == VT_NULL) {
    return S_OK;
  }
  if (!isObject(given)) {
    return DISP_E_TYPEMISMATCH;
  }
  IUnknown* const object = V_ISBYREF(argument_) ? *V_UNKNOWNREF(argument_) : V_UNKNOWN(argument_);
  if (!object) {
    return S_OK;
  }
  const bool fits = given == VT_DISPATCH && parameter_->interfaceId == IID_IDispatch;
  if (fits && !parameter_->isOutput) {
    V_UNKNOWN(&value_) = object;
    ownsValue_ = false;
    return S_OK;
  }
  void** const place = reinterpret_cast<void**>(&V_UNKNOWN(&value_));
  return FAILED(object->QueryInterface(parameter_->interfaceId, place)) ? DISP_E_TYPEMISMATCH
                                                                        : S_OK;
}

HRESULT ArgumentSlot::giveBack(LCID locale) {
  if (!parameter_->isOutput) {
    return S_OK;
  }
  if (V_ISBYREF(argument_)) {
    return giveTyped(locale);
  }
  if (argumentIsVariable_) {
    VARIANT former = *argument_;
    moveTo(*argument_);
    VariantClear(&former);
  }
  return S_OK;
}

HRESULT ArgumentSlot::giveTyped(LCID locale) {
  const VARTYPE type = V_VT(argument_) & ~VT_BYREF;
  if (V_VT(&value_) != type) {
    const HRESULT converted = changeType(value_, value_, type, locale);
    if (FAILED(converted)) {
      return converted;
    }
  }
  VARIANT former;
  VariantInit(&former);
  V_VT(&former) = type;
  std::memcpy(&V_I8(&former), V_BYREF(argument_), sizeOf(type));
  std::memcpy(V_BYREF(argument_), &V_I8(&value_), sizeOf(type));
  V_VT(&value_) = VT_EMPTY;
  return VariantClear(&former);
}

void ArgumentSlot::moveTo(VARIANT& target) noexcept {
  target = value_;
  VariantInit(&value_);
}

}  // namespace zyn
