#include "com/ScriptObject_com.h"

#include "platform/HostState_win.h"

namespace zyn {

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

}  // namespace zyn
