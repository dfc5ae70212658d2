#pragma once

#include <wrl/client.h>

#include "common/ComObject_com.h"
#include "viewer/InPlaceFrame_com.h"

namespace zyn::viewer {

/// The place of one control in the main window: where it is, in which frame, and what surrounds it.
class ControlSite final
    : public host::NumberedDispatch<IOleClientSite, IOleInPlaceSiteEx, IOleControlSite, IDispatch> {
 public:
  ControlSite(HWND window, Microsoft::WRL::ComPtr<InPlaceFrame> frame)
      : window_(window), frame_(std::move(frame)) {}

  /// The control that this is the site of.
  void setControl(IUnknown* control);

  /// Where the control belongs, client coordinates of the window; moves an active one there.
  void place(const RECT& area);

  const RECT& area() const { return area_; }

  /// The control is being let go: it is called no more.
  void forget();

  // IOleClientSite
  STDMETHODIMP SaveObject() noexcept override { return E_NOTIMPL; }
  STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker** moniker) noexcept override;
  STDMETHODIMP GetContainer(IOleContainer** container) noexcept override;
  STDMETHODIMP ShowObject() noexcept override { return S_OK; }
  STDMETHODIMP OnShowWindow(BOOL) noexcept override { return S_OK; }
  STDMETHODIMP RequestNewObjectLayout() noexcept override { return E_NOTIMPL; }

  // IOleInPlaceSiteEx
  STDMETHODIMP GetWindow(HWND* window) noexcept override;
  STDMETHODIMP ContextSensitiveHelp(BOOL) noexcept override { return S_OK; }
  STDMETHODIMP CanInPlaceActivate() noexcept override { return S_OK; }
  STDMETHODIMP OnInPlaceActivate() noexcept override { return S_OK; }
  STDMETHODIMP OnUIActivate() noexcept override { return S_OK; }
  STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                LPRECT position, LPRECT clip,
                                LPOLEINPLACEFRAMEINFO info) noexcept override;
  STDMETHODIMP Scroll(SIZE) noexcept override { return S_FALSE; }
  STDMETHODIMP OnUIDeactivate(BOOL) noexcept override { return S_OK; }
  STDMETHODIMP OnInPlaceDeactivate() noexcept override;
  STDMETHODIMP DiscardUndoState() noexcept override { return S_OK; }
  STDMETHODIMP DeactivateAndUndo() noexcept override;
  STDMETHODIMP OnPosRectChange(LPCRECT) noexcept override;
  STDMETHODIMP OnInPlaceActivateEx(BOOL* noRedraw, DWORD) noexcept override;
  STDMETHODIMP OnInPlaceDeactivateEx(BOOL) noexcept override { return OnInPlaceDeactivate(); }
  STDMETHODIMP RequestUIActivate() noexcept override { return S_OK; }

  // IOleControlSite
  STDMETHODIMP OnControlInfoChanged() noexcept override { return S_OK; }
  STDMETHODIMP LockInPlaceActive(BOOL) noexcept override { return S_OK; }
  STDMETHODIMP GetExtendedControl(IDispatch** extended) noexcept override;
  STDMETHODIMP TransformCoords(POINTL* himetric, POINTF* container, DWORD flags) noexcept override;
  STDMETHODIMP TranslateAccelerator(MSG* message, DWORD) noexcept override;
  STDMETHODIMP OnFocus(BOOL) noexcept override { return S_OK; }
  STDMETHODIMP ShowPropertyFrame() noexcept override { return E_NOTIMPL; }

  /// The ambient properties.
  STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result,
                      EXCEPINFO*, UINT*) noexcept override;

 private:
  HWND window_;
  Microsoft::WRL::ComPtr<InPlaceFrame> frame_;
  Microsoft::WRL::ComPtr<IOleInPlaceObject> control_;
  RECT area_ = {};
};

}  // namespace zyn::viewer
