#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>

#include <type_traits>

#include "com/Member_com.h"

namespace zyn {

// The members of IDispatch for a dual interface of the module's type library. `object` is a pointer
// to that interface.

HRESULT typeInfoCount(UINT* count) noexcept;
HRESULT typeInfoOf(REFIID dual, UINT index, ITypeInfo** info) noexcept;
HRESULT idsOfNames(REFIID dual, REFIID reserved, LPOLESTR* names, UINT count, DISPID* ids) noexcept;
HRESULT invokeMember(void* object, REFIID dual, REFIID reserved, const LateCall& call) noexcept;

/// Late binding for the dual interface `Interface`, as the module's own type library describes it.
/// `Earlier` are those interfaces that it derives from which objects answer too, the first
/// published one last; what is called late is found in all of them.
template <class Interface, class... Earlier>
class Dual : public Interface {
  static_assert((std::is_base_of_v<Earlier, Interface> && ...));

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
