#include "com/ScriptObject_com.h"

#include "com/arguments_com.h"
#include "com/changeType_com.h"
#include "platform/HostState_win.h"

namespace zyn {

namespace {

/// More than any script keeps: what claims more is none of its arrays.
constexpr LONG kMostElements = 10'000'000;

}  // namespace

HRESULT readProperty(IDispatch& object, std::wstring name, OwnedVariant& value) {
  LPOLESTR names[] = {name.data()};
  DISPID id = 0;
  const HRESULT known = object.GetIDsOfNames(IID_NULL, std::data(names), 1, LOCALE_NEUTRAL, &id);
  HostState::setOurs();
  if (FAILED(known)) {
    return known;
  }
  DISPPARAMS none{};
  const HRESULT read = object.Invoke(id, IID_NULL, LOCALE_NEUTRAL, DISPATCH_PROPERTYGET, &none,
                                     value.get(), nullptr, nullptr);
  HostState::setOurs();
  return read;
}

std::optional<LONG> scriptLength(IDispatch& object) {
  OwnedVariant length;
  const bool hasLength = SUCCEEDED(readProperty(object, L"length", length)) &&
                         SUCCEEDED(changeType(*length.get(), *length.get(), VT_I4, LOCALE_NEUTRAL));
  if (!hasLength || V_I4(length.get()) < 0 || V_I4(length.get()) > kMostElements) {
    return std::nullopt;
  }
  return V_I4(length.get());
}

}  // namespace zyn
