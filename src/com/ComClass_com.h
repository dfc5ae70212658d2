#pragma once

#include <windows.h>
// After windows.h:
#include <ocidl.h>
#include <oleauto.h>
#include <wrl/client.h>

#include <memory>
#include <new>
#include <tuple>
#include <type_traits>
#include <utility>

#include "com/ComIdentity_com.h"
#include "com/Dual_com.h"
#include "com/ErrorInfoSupport_com.h"
#include "com/askFor_com.h"
#include "com/automation_com.h"

namespace zyn {

/// An interface without late binding, with those that it derives from and that objects answer too:
/// one pointer in each object for all of them.
template <class Interface, class... Earlier>
struct Extending : Interface {
  static_assert((std::is_base_of_v<Earlier, Interface> && ...));
};

namespace detail {

/// The published interface behind an entry of a class's interface list.
template <class Entry>
struct Published {
  using Type = Entry;
  static bool answers(REFIID iid) { return iid == __uuidof(Entry); }
};
template <class Interface, class... Earlier>
struct Published<Dual<Interface, Earlier...>> {
  using Type = std::tuple_element_t<sizeof...(Earlier), std::tuple<Interface, Earlier...>>;
  static bool answers(REFIID iid) {
    return iid == __uuidof(Interface) || ((iid == __uuidof(Earlier)) || ...) ||
           iid == IID_IDispatch;
  }
};
template <class Interface, class... Earlier>
struct Published<Extending<Interface, Earlier...>> {
  using Type = Interface;
  static bool answers(REFIID iid) {
    return iid == __uuidof(Interface) || ((iid == __uuidof(Earlier)) || ...);
  }
};

}  // namespace detail

/// Base of every COM object: counts references, can be aggregated, answers QueryInterface for its
/// interfaces, offers error information and holds a module lock while it lives. The first
/// interface is the default one; `Dual<I>` adds late binding to I, `Dual<I2, I>` to I2 of an object
/// whose default interface is I.
///
/// A class declares `static constexpr const wchar_t* kProgId`, the source named in its errors, and
/// may define `HRESULT finishConstruction()`, which runs once the object can be referred to; its
/// failure ends the creation.
template <class Derived, class... Interfaces>
class ComClass : public Interfaces..., public ComIdentity {
  using Default = std::tuple_element_t<0, std::tuple<Interfaces...>>;

 public:
  class InnerUnknown;

  static REFIID defaultInterface() noexcept {
    return __uuidof(typename detail::Published<Default>::Type);
  }

  HRESULT finishConstruction() { return S_OK; }

  bool isAggregated() noexcept { return controllingUnknown() != ownUnknown(); }

  STDMETHODIMP QueryInterface(REFIID iid, void** out) noexcept final {
    if (isAggregated()) {
      return controllingUnknown()->QueryInterface(iid, out);
    }
    if (!out) {
      return E_POINTER;
    }
    *out = nullptr;
    return iid == IID_IUnknown ? hand(ownUnknown(), out) : findInterface(iid, out);
  }
  STDMETHODIMP_(ULONG) AddRef() noexcept final {
    return isAggregated() ? controllingUnknown()->AddRef() : addReference();
  }
  STDMETHODIMP_(ULONG) Release() noexcept final {
    return isAggregated() ? controllingUnknown()->Release() : dropReference([this] { destroy(); });
  }

 protected:
  ComClass() noexcept : ComIdentity(ownUnknown()) {}
  ~ComClass() = default;

  /// More interfaces than those of the list: gives the interface with a reference counted on it.
  virtual HRESULT queryExtra(REFIID, void**) noexcept { return E_NOINTERFACE; }

 private:
  IUnknown* ownUnknown() noexcept { return static_cast<Default*>(this); }

  static bool hasErrorInfo(REFIID iid) noexcept {
    return (detail::Published<Interfaces>::answers(iid) || ...);
  }

  /// `*out` is null when called.
  HRESULT findInterface(REFIID iid, void** out) noexcept {
    if (iid == IID_ISupportErrorInfo) {
      return ErrorInfoSupport::give(*controllingUnknown(), hasErrorInfo, out);
    }
    const bool found = ((detail::Published<Interfaces>::answers(iid) &&
                         SUCCEEDED(hand(static_cast<Interfaces*>(this), out))) ||
                        ...);
    return found ? S_OK : queryExtra(iid, out);
  }

  template <class Interface>
  static HRESULT hand(Interface* found, void** out) noexcept {
    found->AddRef();
    *out = found;
    return S_OK;
  }

  void destroy() noexcept {
    static_assert(std::is_final_v<Derived>, "the object is deleted as what it is");
    delete static_cast<Derived*>(this);
  }
};

/// What an outer object keeps of one that is part of it: the unknown that does not delegate.
template <class Derived, class... Interfaces>
class ComClass<Derived, Interfaces...>::InnerUnknown final : public IUnknown {
 public:
  /// For a new object that nobody has seen yet. Takes over the reference on it.
  void attach(ComClass& object, IUnknown* outer) noexcept {
    object_ = &object;
    object.aggregateInto(outer);
  }

  STDMETHODIMP QueryInterface(REFIID iid, void** out) noexcept override {
    if (!out) {
      return E_POINTER;
    }
    *out = nullptr;
    return iid == IID_IUnknown ? hand(this, out) : object_->findInterface(iid, out);
  }
  STDMETHODIMP_(ULONG) AddRef() noexcept override { return object_->addReference(); }
  STDMETHODIMP_(ULONG) Release() noexcept override {
    return object_->dropReference([this] {
      object_->destroy();
      delete this;
    });
  }

 private:
  ComClass* object_ = nullptr;
};

/// Gives a new object as an outer object or a class object wants it: as part of `outer`, if any,
/// and by the interface `iid`, which an outer object must ask to be IUnknown.
template <class Class>
HRESULT createInstance(IUnknown* outer, REFIID iid, void** out) noexcept {
  if (!out) {
    return E_POINTER;
  }
  *out = nullptr;
  if (outer && iid != IID_IUnknown) {
    return CLASS_E_NOAGGREGATION;
  }
  return boundary([&] {
    auto inner = outer ? std::make_unique<typename Class::InnerUnknown>() : nullptr;
    auto* const object = new Class();
    if (inner) {
      inner->attach(*object, outer);
    }
    const auto held = adopt(inner ? inner.release() : object->controllingUnknown());
    throwIfFailed(object->finishConstruction());
    return held->QueryInterface(iid, out);
  });
}

/// A new object for our own use.
template <class Class, class... Arguments>
Microsoft::WRL::ComPtr<Class> makeObject(Arguments&&... arguments) {
  auto object = adopt(new Class(std::forward<Arguments>(arguments)...));
  throwIfFailed(object->finishConstruction());
  return object;
}

}  // namespace zyn
