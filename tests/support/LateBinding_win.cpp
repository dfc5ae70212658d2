#include "support/LateBinding_win.h"

#include <algorithm>
#include <utility>

namespace zyn::test {
namespace {

_variant_t reference(VARTYPE type, void* variable) {
  VARIANT value;
  VariantInit(&value);
  value.vt = static_cast<VARTYPE>(VT_BYREF | type);
  value.byref = variable;
  return _variant_t(value, false);
}

std::wstring takeText(BSTR text) {
  std::wstring copy = text ? std::wstring(text, SysStringLen(text)) : std::wstring();
  SysFreeString(text);
  return copy;
}

CallResult invoke(IDispatch* object, const wchar_t* name, WORD kind,
                  const std::vector<_variant_t>& arguments) {
  CallResult call;
  const DISPID id = dispidOf(object, name);
  if (id == DISPID_UNKNOWN) {
    call.invoked = DISP_E_UNKNOWNNAME;
    return call;
  }
  // Arguments travel last first.
  std::vector<VARIANT> reversed(arguments.begin(), arguments.end());
  std::reverse(reversed.begin(), reversed.end());
  DISPID named = DISPID_PROPERTYPUT;
  DISPPARAMS parameters = {};
  parameters.rgvarg = reversed.data();
  parameters.cArgs = static_cast<UINT>(reversed.size());
  const bool puts = kind == DISPATCH_PROPERTYPUT || kind == DISPATCH_PROPERTYPUTREF;
  if (puts) {
    parameters.rgdispidNamedArgs = &named;
    parameters.cNamedArgs = 1;
  }
  EXCEPINFO exception = {};
  UINT wrongArgument = 0;
  VARIANT* result = puts ? nullptr : &call.value;
  call.invoked = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters, result,
                                &exception, &wrongArgument);
  if (call.invoked == DISP_E_EXCEPTION && exception.pfnDeferredFillIn) {
    exception.pfnDeferredFillIn(&exception);
  }
  call.scode = exception.scode;
  call.source = takeText(exception.bstrSource);
  call.description = takeText(exception.bstrDescription);
  takeText(exception.bstrHelpFile);
  return call;
}

}  // namespace

DISPID dispidOf(IDispatch* object, const wchar_t* name) {
  std::wstring spelled = name;
  LPOLESTR names[] = {spelled.data()};
  DISPID id = DISPID_UNKNOWN;
  const HRESULT found = object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
  return SUCCEEDED(found) ? id : DISPID_UNKNOWN;
}

CallResult callMethod(IDispatch* object, const wchar_t* name,
                      const std::vector<_variant_t>& arguments) {
  return invoke(object, name, DISPATCH_METHOD, arguments);
}

CallResult getProperty(IDispatch* object, const wchar_t* name) {
  return invoke(object, name, DISPATCH_PROPERTYGET, {});
}

CallResult putProperty(IDispatch* object, const wchar_t* name, const _variant_t& value) {
  return invoke(object, name, DISPATCH_PROPERTYPUT, {value});
}

CallResult putReference(IDispatch* object, const wchar_t* name, const _variant_t& value) {
  return invoke(object, name, DISPATCH_PROPERTYPUTREF, {value});
}

_variant_t outArgument(double& variable) { return reference(VT_R8, &variable); }
_variant_t outArgument(long& variable) { return reference(VT_I4, &variable); }
_variant_t outArgument(VARIANT& variable) { return reference(VT_VARIANT, &variable); }

}  // namespace zyn::test
