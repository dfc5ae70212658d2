#include "com/ObjectArray_com.h"

#include <string>

#include "com/OwnedVariant_com.h"
#include "com/ScriptObject_com.h"
#include "com/arguments_com.h"
#include "com/askFor_com.h"
#include "com/errors_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

using Objects = std::vector<ComPtr<IDispatch>>;

constexpr int kReferenceLevels = 4;

const VARIANT& dereferenced(const VARIANT& argument) {
  const VARIANT* value = &argument;
  for (int level = 0;
       level < kReferenceLevels && V_VT(value) == (VT_BYREF | VT_VARIANT) && V_VARIANTREF(value);
       ++level) {
    value = V_VARIANTREF(value);
  }
  return *value;
}

/// The object that a value holds, or null.
ComPtr<IDispatch> objectIn(const VARIANT& argument) {
  const VARIANT& value = dereferenced(argument);
  IUnknown* object = nullptr;
  switch (V_VT(&value)) {
    case VT_DISPATCH:
    case VT_UNKNOWN:
      object = V_UNKNOWN(&value);
      break;
    case VT_BYREF | VT_DISPATCH:
    case VT_BYREF | VT_UNKNOWN:
      object = V_UNKNOWNREF(&value) ? *V_UNKNOWNREF(&value) : nullptr;
      break;
    default:
      break;
  }
  return askFor<IDispatch>(object);
}

void add(const wchar_t* name, Objects& objects, const VARIANT& value) {
  auto object = objectIn(value);
  if (!object) {
    throw badArgument(name, L"element " + std::to_wstring(objects.size()) + L" is no object");
  }
  objects.push_back(std::move(object));
}

/// Whether an array holds what the VARIANT around it says: what is taken out of it is copied as the
/// array itself has it.
bool holds(const SAFEARRAY& array, VARTYPE type) {
  const int wanted = type == VT_VARIANT ? FADF_VARIANT : FADF_DISPATCH | FADF_UNKNOWN;
  return (array.fFeatures & wanted) != 0;
}

Objects objectsOf(const wchar_t* name, SAFEARRAY* array, VARTYPE type) {
  const bool holdsObjects = type == VT_DISPATCH || type == VT_UNKNOWN;
  if (!array || SafeArrayGetDim(array) != 1 || !(holdsObjects || type == VT_VARIANT) ||
      !holds(*array, type)) {
    throw badArgument(name, L"an object or an array of objects with one dimension is wanted");
  }
  LONG first = 0;
  LONG last = 0;
  throwIfFailed(SafeArrayGetLBound(array, 1, &first));
  throwIfFailed(SafeArrayGetUBound(array, 1, &last));
  Objects objects;
  for (LONG i = first; i <= last; ++i) {
    OwnedVariant value;
    V_VT(value.get()) = holdsObjects ? type : VARTYPE{VT_EMPTY};
    void* const place = holdsObjects ? static_cast<void*>(&V_UNKNOWN(value.get())) : value.get();
    throwIfFailed(SafeArrayGetElement(array, &i, place));
    add(name, objects, *value.get());
  }
  return objects;
}

}  // namespace

Objects objectsIn(const wchar_t* name, const VARIANT& argument) {
  const VARIANT& value = dereferenced(argument);
  const VARTYPE type = V_VT(&value) & VT_TYPEMASK;
  if (V_ISARRAY(&value)) {
    const bool isReference = V_ISBYREF(&value);
    SAFEARRAY** const place = isReference ? V_ARRAYREF(&value) : nullptr;
    return objectsOf(name, !isReference ? V_ARRAY(&value) : place ? *place : nullptr, type);
  }
  const auto object = objectIn(value);
  if (!object) {
    throw badArgument(name, L"an object or an array of objects is wanted");
  }
  const auto length = scriptLength(*object.Get());
  if (!length) {
    return {object};
  }
  Objects objects;
  for (LONG i = 0; i < *length; ++i) {
    OwnedVariant element;
    static_cast<void>(readProperty(*object.Get(), std::to_wstring(i), element));
    add(name, objects, *element.get());
  }
  return objects;
}

}  // namespace zyn
