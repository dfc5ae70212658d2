#include "LiveObject_win.h"

#include <cmath>

#include "support/TypeReader_win.h"

namespace zyn::reference {
namespace {

using test::require;

std::string numberText(double number) {
  if (std::isnan(number)) return "not a number";
  if (std::isinf(number)) return number > 0 ? "+infinity" : "-infinity";
  char text[40];
  std::snprintf(text, sizeof text, "%.7g", number);
  return text;
}

std::string arrayText(const VARIANT& value) {
  SAFEARRAY* const array = V_ARRAY(&value);
  LONG last = -1;
  require(SafeArrayGetUBound(array, 1, &last), "SafeArrayGetUBound");
  std::string text;
  for (LONG i = 0; i <= last; ++i) {
    double number = 0;
    require(SafeArrayGetElement(array, &i, &number), "SafeArrayGetElement");
    text += (text.empty() ? "" : ", ") + numberText(number);
  }
  return "(" + text + ")";
}

std::string text(_variant_t& value) {
  switch (V_VT(&value)) {
    case VT_EMPTY:
      return "empty";
    case VT_BOOL:
      return V_BOOL(&value) ? "True" : "False";
    case VT_DISPATCH:
      return V_DISPATCH(&value) ? "an object" : "null";
    case VT_UNKNOWN:
      return V_UNKNOWN(&value) ? "an object" : "null";
    case VT_BSTR:
      return '"' + test::narrow(V_BSTR(&value)) + '"';
    case VT_ARRAY | VT_R8:
      return arrayText(value);
    default:
      require(VariantChangeType(&value, &value, 0, VT_R8), "VariantChangeType");
      return numberText(V_R8(&value));
  }
}

}  // namespace

LiveObject::LiveObject(REFCLSID id) {
  require(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object_)),
          "CoCreateInstance");
}

bool LiveObject::has(REFIID id) const {
  test::ComPtr<IUnknown> found;
  return SUCCEEDED(object_->QueryInterface(id, reinterpret_cast<void**>(found.GetAddressOf())));
}

std::string LiveObject::valueOf(DISPID property) const {
  DISPPARAMS none = {};
  _variant_t value;
  require(object_->Invoke(property, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                          &value, nullptr, nullptr),
          "property get");
  return text(value);
}

}  // namespace zyn::reference
