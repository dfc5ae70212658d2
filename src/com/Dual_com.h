#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>

#include "com/dispatch_com.h"

namespace zyn {

/// Late binding for the dual interface `Interface`, as the module's own type library describes it.
template <class Interface>
class Dual : public Interface {
 public:
  STDMETHODIMP GetTypeInfoCount(UINT* count) noexcept override { return typeInfoCount(count); }

  STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** info) noexcept override {
    return typeInfoOf(__uuidof(Interface), index, info);
  }

  STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID,
                             DISPID* ids) noexcept override {
    return idsOfNames(__uuidof(Interface), iid, names, count, ids);
  }

  STDMETHODIMP Invoke(DISPID member, REFIID iid, LCID locale, WORD flags, DISPPARAMS* arguments,
                      VARIANT* result, EXCEPINFO* exception,
                      UINT* wrongArgument) noexcept override {
    return invokeMember(
        static_cast<Interface*>(this), __uuidof(Interface), iid,
        LateCall{member, locale, flags, arguments, result, exception, wrongArgument});
  }

 protected:
  Dual() = default;
  ~Dual() = default;
};

}  // namespace zyn
