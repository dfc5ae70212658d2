#pragma once

#include <atomic>
#include <utility>
#include <vector>

#include "support/HostSession_win.h"

namespace zyn::test {

/// Reference counting, QueryInterface and an empty IDispatch for objects that the tests hand to the
/// library. Every interface of the list is answered unless it is refused. First derives from
/// IDispatch. Born with one reference.
template <class Derived, class First, class... Rest>
class ForeignBase : public First, public Rest... {
 public:
  ForeignBase() { ++live_; }
  ForeignBase(const ForeignBase&) = delete;
  ForeignBase& operator=(const ForeignBase&) = delete;

  /// From now on QueryInterface answers result for this interface.
  void refuse(REFIID iid, HRESULT result = E_NOINTERFACE) { refused_.emplace_back(iid, result); }

  /// The object as a host hands it over.
  IDispatch* dispatch() { return static_cast<First*>(this); }

  /// Objects of this class that have not been destroyed yet.
  static int live() { return live_; }

  STDMETHODIMP QueryInterface(REFIID iid, void** out) override {
    *out = nullptr;
    for (const auto& [id, result] : refused_) {
      if (id == iid) return result;
    }
    if (iid == IID_IUnknown || iid == IID_IDispatch || iid == __uuidof(First)) {
      *out = static_cast<First*>(this);
    }
    ((iid == __uuidof(Rest) ? void(*out = static_cast<Rest*>(this)) : void()), ...);
    if (!*out) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete static_cast<Derived*>(this);
    return left;
  }

  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;
  }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    return DISP_E_MEMBERNOTFOUND;
  }

 protected:
  virtual ~ForeignBase() { --live_; }

 private:
  static inline std::atomic<int> live_ = 0;
  std::atomic<ULONG> references_ = 1;
  std::vector<std::pair<IID, HRESULT>> refused_;
};

/// A new object with one reference, owned by the result.
template <class Object, class... Arguments>
ComPtr<Object> makeForeign(Arguments&&... arguments) {
  ComPtr<Object> object;
  // Not Attach: MinGW's adds a reference of its own.
  *object.GetAddressOf() = new Object(std::forward<Arguments>(arguments)...);
  return object;
}

/// Hands out a counted reference, as an out argument does.
template <class Interface, class Object>
HRESULT handOut(const ComPtr<Object>& object, Interface** out) {
  *out = object.Get();
  (*out)->AddRef();
  return S_OK;
}

}  // namespace zyn::test
