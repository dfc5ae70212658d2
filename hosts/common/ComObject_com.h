#pragma once

#include <windows.h>
// After windows.h:
#include <ocidl.h>

#include <atomic>
#include <tuple>

namespace zyn::host {

/// Whether a pointer to `Interface` may be handed out for `iid`; interfaces that inherit others of
/// use say so in a specialisation.
template <typename Interface>
bool answersTo(REFIID iid) {
  return iid == __uuidof(Interface);
}
template <>
inline bool answersTo<IOleInPlaceSiteEx>(REFIID iid) {
  return iid == IID_IOleInPlaceSiteEx || iid == IID_IOleInPlaceSite || iid == IID_IOleWindow;
}
template <>
inline bool answersTo<IOleInPlaceFrame>(REFIID iid) {
  return iid == IID_IOleInPlaceFrame || iid == IID_IOleInPlaceUIWindow || iid == IID_IOleWindow;
}

/// IUnknown of an object with the given interfaces. A new object has no reference: put it into a
/// ComPtr at once.
template <typename... Interfaces>
class ComObject : public Interfaces... {
 public:
  ComObject() = default;
  ComObject(const ComObject&) = delete;
  ComObject& operator=(const ComObject&) = delete;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) noexcept override {
    if (object == nullptr) {
      return E_POINTER;
    }
    *object = nullptr;
    if (iid == IID_IUnknown) {
      using First = std::tuple_element_t<0, std::tuple<Interfaces...>>;
      *object = static_cast<IUnknown*>(static_cast<First*>(this));
    } else {
      ((*object == nullptr && answersTo<Interfaces>(iid)
            ? void(*object = static_cast<Interfaces*>(this))
            : void()),
       ...);
    }
    if (*object == nullptr) {
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }

  STDMETHODIMP_(ULONG) AddRef() noexcept override { return ++references_; }

  STDMETHODIMP_(ULONG) Release() noexcept override {
    const ULONG left = --references_;
    if (left == 0) {
      delete this;
    }
    return left;
  }

 protected:
  virtual ~ComObject() = default;

 private:
  std::atomic<ULONG> references_ = 0;
};

/// A ComObject one of whose interfaces derives from IDispatch, for callers that know the numbers of
/// its members: there are no names.
template <typename... Interfaces>
class NumberedDispatch : public ComObject<Interfaces...> {
 public:
  STDMETHODIMP GetTypeInfoCount(UINT* count) noexcept override {
    if (count == nullptr) {
      return E_POINTER;
    }
    *count = 0;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) noexcept override {
    if (info == nullptr) {
      return E_POINTER;
    }
    *info = nullptr;
    return DISP_E_BADINDEX;
  }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) noexcept override {
    return DISP_E_UNKNOWNNAME;
  }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                      UINT*) noexcept override {
    return DISP_E_MEMBERNOTFOUND;
  }
};

}  // namespace zyn::host
