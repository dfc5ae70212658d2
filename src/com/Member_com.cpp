#include "com/Member_com.h"

#include <oleauto.h>
#include <wrl/client.h>

#include "com/errors_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

/// The description of a function; its memory belongs to the type information.
class FunctionDescription {
 public:
  FunctionDescription(ITypeInfo& info, UINT function) : info_(info) {
    throwIfFailed(info.GetFuncDesc(function, &value_));
  }
  FunctionDescription(const FunctionDescription&) = delete;
  FunctionDescription& operator=(const FunctionDescription&) = delete;
  ~FunctionDescription() { info_.ReleaseFuncDesc(value_); }

  const FUNCDESC* operator->() const { return value_; }

 private:
  ITypeInfo& info_;
  FUNCDESC* value_ = nullptr;
};

/// The description of a type; its memory belongs to the type information.
struct TypeAttributes {
  explicit TypeAttributes(ITypeInfo& owner) : info(owner) {
    throwIfFailed(info.GetTypeAttr(&value));
  }
  TypeAttributes(const TypeAttributes&) = delete;
  TypeAttributes& operator=(const TypeAttributes&) = delete;
  ~TypeAttributes() { info.ReleaseTypeAttr(value); }

  ITypeInfo& info;
  TYPEATTR* value = nullptr;
};

/// How a parameter is taken, from its description in a type library. Throws where the type is none
/// of automation's.
ParameterType parameterType(ITypeInfo& info, const TYPEDESC& description);

[[noreturn]] void refuse() { throw _com_error(DISP_E_BADVARTYPE); }

bool isInterface(const TYPEATTR& type) {
  return type.typekind == TKIND_INTERFACE || type.typekind == TKIND_DISPATCH;
}

bool isDispatch(const TYPEATTR& type) {
  return type.typekind == TKIND_DISPATCH || (type.wTypeFlags & TYPEFLAG_FDISPATCHABLE) != 0 ||
         type.guid == IID_IDispatch;
}

VARTYPE plainType(VARTYPE type) {
  switch (type) {
    case VT_INT:
      return VT_I4;
    case VT_UINT:
      return VT_UI4;
    case VT_HRESULT:
      return VT_ERROR;
    case VT_PTR:
    case VT_SAFEARRAY:
    case VT_CARRAY:
      refuse();
    default:
      return type;
  }
}

IID interfaceOf(VARTYPE type) { return type == VT_DISPATCH ? IID_IDispatch : IID_IUnknown; }

ComPtr<ITypeInfo> referred(ITypeInfo& info, const TYPEDESC& description) {
  ComPtr<ITypeInfo> type;
  throwIfFailed(info.GetRefTypeInfo(description.hreftype, &type));
  return type;
}

ParameterType namedType(ITypeInfo& info, const TYPEDESC& description) {
  const ComPtr<ITypeInfo> named = referred(info, description);
  const TypeAttributes attributes(*named.Get());
  switch (attributes.value->typekind) {
    case TKIND_ENUM:
      return {VT_I4, false, {}};
    case TKIND_ALIAS:
      return parameterType(*named.Get(), attributes.value->tdescAlias);
    default:
      refuse();
  }
}

/// The interface that a pointer leads to, if it leads to one.
bool interfacePointer(ITypeInfo& info, const TYPEDESC& target, ParameterType& found) {
  if (target.vt != VT_USERDEFINED) {
    return false;
  }
  const ComPtr<ITypeInfo> named = referred(info, target);
  const TypeAttributes attributes(*named.Get());
  const TYPEATTR& type = *attributes.value;
  if (type.typekind == TKIND_ALIAS) {
    return interfacePointer(*named.Get(), type.tdescAlias, found);
  }
  if (!isInterface(type)) {
    return false;
  }
  found = {static_cast<VARTYPE>(isDispatch(type) ? VT_DISPATCH : VT_UNKNOWN), false, type.guid};
  return true;
}

ParameterType parameterType(ITypeInfo& info, const TYPEDESC& description) {
  if (description.vt == VT_USERDEFINED) {
    return namedType(info, description);
  }
  if (description.vt != VT_PTR) {
    const VARTYPE type = plainType(description.vt);
    return {type, false, interfaceOf(type)};
  }
  ParameterType target{};
  if (interfacePointer(info, *description.lptdesc, target)) {
    return target;
  }
  target = parameterType(info, *description.lptdesc);
  if (target.byReference) {
    refuse();
  }
  target.byReference = true;
  return target;
}

}  // namespace

Member readMember(ITypeInfo& info, UINT function) {
  const FunctionDescription described(info, function);
  Member member{
      described->memid, described->invkind, static_cast<ULONG_PTR>(described->oVft), {}, false};
  for (SHORT i = 0; i < described->cParams; ++i) {
    const ELEMDESC& element = described->lprgelemdescParam[i];
    const USHORT flags = element.paramdesc.wParamFlags;
    const bool isOutput = (flags & PARAMFLAG_FOUT) != 0;
    const bool isInput = (flags & PARAMFLAG_FIN) != 0;
    const bool isOptional = (flags & PARAMFLAG_FOPT) != 0;
    member.parameters.push_back(
        {parameterType(info, element.tdesc), isInput, isOutput, isOptional});
    member.hasResult = (flags & PARAMFLAG_FRETVAL) != 0;
  }
  return member;
}

}  // namespace zyn
