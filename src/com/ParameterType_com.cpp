#include "com/ParameterType_com.h"

#include <oleauto.h>
#include <wrl/client.h>

#include <memory>

#include "com/errors_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

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

}  // namespace

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

}  // namespace zyn
