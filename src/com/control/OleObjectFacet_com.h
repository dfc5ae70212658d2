#pragma once

#include "com/control/Facet_com.h"

#include <oleidl.h>

namespace zyn {

/// IOleObject: site, verbs, extent, and the watchers of the object's fate.
class OleObjectFacet final : public Facet<IOleObject> {
 public:
  using Facet::Facet;

  /// Tells the watchers that the object has been saved, or closed.
  void saved() noexcept;
  void closed() noexcept;

  void forgetWatchers() noexcept { watchers_.Reset(); }

  STDMETHODIMP SetClientSite(IOleClientSite* site) noexcept override;
  STDMETHODIMP GetClientSite(IOleClientSite** site) noexcept override;
  STDMETHODIMP SetHostNames(LPCOLESTR application, LPCOLESTR object) noexcept override;
  STDMETHODIMP Close(DWORD saveOption) noexcept override;
  STDMETHODIMP SetMoniker(DWORD which, IMoniker* moniker) noexcept override;
  STDMETHODIMP GetMoniker(DWORD assign, DWORD which, IMoniker** moniker) noexcept override;
  STDMETHODIMP InitFromData(IDataObject* data, BOOL creation, DWORD reserved) noexcept override;
  STDMETHODIMP GetClipboardData(DWORD reserved, IDataObject** data) noexcept override;
  STDMETHODIMP DoVerb(LONG verb, LPMSG message, IOleClientSite* site, LONG index, HWND parent,
                      LPCRECT position) noexcept override;
  STDMETHODIMP EnumVerbs(IEnumOLEVERB** verbs) noexcept override;
  STDMETHODIMP Update() noexcept override;
  STDMETHODIMP IsUpToDate() noexcept override;
  STDMETHODIMP GetUserClassID(CLSID* id) noexcept override;
  STDMETHODIMP GetUserType(DWORD form, LPOLESTR* text) noexcept override;
  STDMETHODIMP SetExtent(DWORD aspect, SIZEL* extent) noexcept override;
  STDMETHODIMP GetExtent(DWORD aspect, SIZEL* extent) noexcept override;
  STDMETHODIMP Advise(IAdviseSink* sink, DWORD* connection) noexcept override;
  STDMETHODIMP Unadvise(DWORD connection) noexcept override;
  STDMETHODIMP EnumAdvise(IEnumSTATDATA** connections) noexcept override;
  STDMETHODIMP GetMiscStatus(DWORD aspect, DWORD* status) noexcept override;
  STDMETHODIMP SetColorScheme(LOGPALETTE* palette) noexcept override;

 private:
  HRESULT show(IOleClientSite* site, HWND parent, LPCRECT position, bool withUi);
  void hide();

  Microsoft::WRL::ComPtr<IOleAdviseHolder> watchers_;
};

}  // namespace zyn
