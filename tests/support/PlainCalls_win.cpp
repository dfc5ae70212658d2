#include "support/PlainCalls_win.h"

#include "support/TempFolder_win.h"
#include "support/TypeReader_win.h"

namespace zyn::test {
namespace {

constexpr DISPID kFirstOfDispatch = 0x60000000;

/// The Automation type behind a description; interfaces count as dispatch pointers, enumerations as
/// long integers.
VARTYPE plainType(ITypeInfo* type, const TYPEDESC& description) {
  if (description.vt == VT_PTR) {
    const VARTYPE to = plainType(type, *description.lptdesc);
    return to == VT_DISPATCH && description.lptdesc->vt == VT_USERDEFINED ? to : to | VT_BYREF;
  }
  if (description.vt != VT_USERDEFINED) return description.vt;
  ComPtr<ITypeInfo> referred;
  require(type->GetRefTypeInfo(description.hreftype, &referred), "GetRefTypeInfo");
  const TypeAttributes attributes(referred.Get());
  if (attributes->typekind == TKIND_ALIAS) return plainType(referred.Get(), attributes->tdescAlias);
  return attributes->typekind == TKIND_ENUM ? VT_I4 : VT_DISPATCH;
}

const char* prefixOf(INVOKEKIND kind) {
  switch (kind) {
    case INVOKE_PROPERTYGET:
      return "get ";
    case INVOKE_PROPERTYPUT:
      return "put ";
    case INVOKE_PROPERTYPUTREF:
      return "putref ";
    default:
      return "";
  }
}

PlainCall describe(ITypeInfo* type, const FunctionDescription& function) {
  _bstr_t name;
  require(type->GetDocumentation(function->memid, name.GetAddress(), nullptr, nullptr, nullptr),
          "GetDocumentation");
  PlainCall call{prefixOf(function->invkind) + narrow(name),
                 function->memid,
                 static_cast<WORD>(function->invkind),
                 {}};
  for (SHORT i = 0; i < function->cParams; ++i) {
    const ELEMDESC& element = function->lprgelemdescParam[i];
    if (element.paramdesc.wParamFlags & PARAMFLAG_FRETVAL) continue;
    const bool isOut = element.paramdesc.wParamFlags & PARAMFLAG_FOUT;
    call.parameters.push_back({plainType(type, element.tdesc), isOut});
  }
  return call;
}

_variant_t valueFor(VARTYPE type, const PlainArguments& plain) {
  switch (type) {
    case VT_I2:
    case VT_I4:
    case VT_INT:
      return _variant_t(1L);
    case VT_R4:
    case VT_R8:
      return _variant_t(0.5);
    case VT_BOOL:
      return _variant_t(true);
    case VT_BSTR:
      return _variant_t(bstr(plain.file));
    case VT_VARIANT:
      return plain.array;
    default:
      return _variant_t(plain.object.Get());
  }
}

}  // namespace

HRESULT PlainCall::operator()(IDispatch* target, const PlainArguments& plain) const {
  std::vector<_variant_t> outs(parameters.size());
  std::vector<_variant_t> values(parameters.size());  // of arguments, the last one first
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    _variant_t& value = values[parameters.size() - 1 - i];
    if (parameters[i].isOut) {
      V_VT(&value) = VT_BYREF | VT_VARIANT;
      V_VARIANTREF(&value) = &outs[i];
    } else {
      value = valueFor(parameters[i].type & static_cast<VARTYPE>(~VT_BYREF), plain);
    }
  }
  DISPID put = DISPID_PROPERTYPUT;
  const bool isPut = kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF);
  DISPPARAMS arguments = {values.data(), isPut ? &put : nullptr, static_cast<UINT>(values.size()),
                          isPut ? 1U : 0U};
  _variant_t result;
  EXCEPINFO exception = {};
  const HRESULT answer = target->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &arguments,
                                        &result, &exception, nullptr);
  const _bstr_t source(exception.bstrSource, false);
  const _bstr_t description(exception.bstrDescription, false);
  const _bstr_t help(exception.bstrHelpFile, false);
  // Those that refer to our variables own nothing.
  for (_variant_t& value : values) {
    if (V_VT(&value) & VT_BYREF) V_VT(&value) = VT_EMPTY;
  }
  return answer == DISP_E_EXCEPTION ? exception.scode : answer;
}

std::vector<PlainCall> plainCallsOf(IDispatch* object) {
  ComPtr<ITypeInfo> type;
  require(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, &type), "GetTypeInfo");
  const TypeAttributes attributes(type.Get());
  std::vector<PlainCall> calls;
  for (UINT i = 0; i < attributes->cFuncs; ++i) {
    const FunctionDescription function(type.Get(), i);
    if (function->memid < kFirstOfDispatch || function->memid > kFirstOfDispatch + 0x1FFFF) {
      calls.push_back(describe(type.Get(), function));
    }
  }
  return calls;
}

}  // namespace zyn::test
