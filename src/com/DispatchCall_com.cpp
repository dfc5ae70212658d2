#include "com/DispatchCall_com.h"

#include <oleauto.h>
#include <wrl/client.h>

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

constexpr UINT kNotGiven = static_cast<UINT>(-1);

}  // namespace

DispatchCall::DispatchCall(const Member& member, const LateCall& call)
    : member_(member),
      call_(call),
      given_(member.argumentCount(), kNotGiven, &arena_),
      slots_(member.parameters.size(), &arena_) {
  V_VT(&leftOut_) = VT_ERROR;
  V_ERROR(&leftOut_) = DISP_E_PARAMNOTFOUND;
}

HRESULT DispatchCall::execute(void* object) {
  if (call_.result) {
    VariantInit(call_.result);
  }
  HRESULT status = checkArguments();
  if (SUCCEEDED(status)) {
    status = placeArguments();
  }
  if (SUCCEEDED(status)) {
    status = takeArguments();
  }
  if (SUCCEEDED(status)) {
    status = callMember(object);
  }
  return SUCCEEDED(status) ? giveBack() : status;
}

HRESULT DispatchCall::checkArguments() const {
  const DISPPARAMS* const arguments = call_.arguments;
  if (!arguments || (arguments->cArgs != 0 && !arguments->rgvarg) ||
      (arguments->cNamedArgs != 0 && !arguments->rgdispidNamedArgs)) {
    return E_INVALIDARG;
  }
  if (arguments->cArgs > member_.argumentCount() || arguments->cArgs < member_.requiredCount() ||
      arguments->cNamedArgs > arguments->cArgs) {
    return DISP_E_BADPARAMCOUNT;
  }
  // The value of a put has no position of its own; it is the argument of that name.
  if (member_.isPut() &&
      (arguments->cNamedArgs == 0 || arguments->rgdispidNamedArgs[0] != DISPID_PROPERTYPUT)) {
    return DISP_E_PARAMNOTFOUND;
  }
  return S_OK;
}

/// Arguments come in reverse order, the named ones first.
HRESULT DispatchCall::placeArguments() {
  const DISPPARAMS& arguments = *call_.arguments;
  for (UINT i = arguments.cNamedArgs; i < arguments.cArgs; ++i) {
    given_[arguments.cArgs - 1 - i] = i;
  }
  for (UINT i = 0; i < arguments.cNamedArgs; ++i) {
    const HRESULT placed = placeNamed(i);
    if (FAILED(placed)) {
      return placed;
    }
  }
  for (std::size_t i = 0; i < given_.size(); ++i) {
    if (given_[i] == kNotGiven && !member_.parameters[i].isOptional) {
      return DISP_E_PARAMNOTFOUND;
    }
  }
  return S_OK;
}

HRESULT DispatchCall::placeNamed(UINT index) {
  const DISPID name = call_.arguments->rgdispidNamedArgs[index];
  const bool isValue = member_.isPut() && name == DISPID_PROPERTYPUT;
  const auto parameter = isValue ? given_.size() - 1 : static_cast<std::size_t>(name);
  if (parameter >= given_.size() || given_[parameter] != kNotGiven) {
    return blame(index, DISP_E_PARAMNOTFOUND);
  }
  given_[parameter] = index;
  return S_OK;
}

HRESULT DispatchCall::takeArguments() {
  for (std::size_t i = 0; i < given_.size(); ++i) {
    VARIANTARG& argument = given_[i] == kNotGiven ? leftOut_ : call_.arguments->rgvarg[given_[i]];
    const HRESULT taken = slots_[i].take(member_.parameters[i], argument, call_.locale);
    if (FAILED(taken)) {
      return blame(given_[i], taken);
    }
  }
  if (member_.hasResult) {
    slots_.back().makePlace(member_.parameters.back());
  }
  return S_OK;
}

HRESULT DispatchCall::callMember(void* object) {
  std::pmr::vector<VARTYPE> types(&arena_);
  std::pmr::vector<VARIANTARG*> values(&arena_);
  types.reserve(slots_.size());
  values.reserve(slots_.size());
  for (ArgumentSlot& slot : slots_) {
    types.push_back(slot.callType());
    values.push_back(slot.callValue());
  }
  VARIANT answer;
  VariantInit(&answer);
  SetErrorInfo(0, nullptr);
  const HRESULT called =
      DispCallFunc(object, member_.vtableOffset, CC_STDCALL, VT_ERROR,
                   static_cast<UINT>(values.size()), types.data(), values.data(), &answer);
  if (FAILED(called)) {
    return called;
  }
  return FAILED(V_ERROR(&answer)) ? raise(V_ERROR(&answer)) : S_OK;
}

HRESULT DispatchCall::raise(HRESULT failure) const {
  if (EXCEPINFO* const exception = call_.exception) {
    *exception = {};
    exception->scode = failure;
    ComPtr<IErrorInfo> info;
    if (GetErrorInfo(0, &info) == S_OK) {
      info->GetSource(&exception->bstrSource);
      info->GetDescription(&exception->bstrDescription);
      info->GetHelpFile(&exception->bstrHelpFile);
      info->GetHelpContext(&exception->dwHelpContext);
    }
  }
  return DISP_E_EXCEPTION;
}

HRESULT DispatchCall::giveBack() {
  for (std::size_t i = 0; i < given_.size(); ++i) {
    const HRESULT given = slots_[i].giveBack(call_.locale);
    if (FAILED(given)) {
      return blame(given_[i], given);
    }
  }
  if (member_.hasResult && call_.result) {
    slots_.back().moveTo(*call_.result);
  }
  return S_OK;
}

HRESULT DispatchCall::blame(UINT index, HRESULT failure) const {
  if (call_.wrongArgument) {
    *call_.wrongArgument = index;
  }
  return failure;
}

}  // namespace zyn
