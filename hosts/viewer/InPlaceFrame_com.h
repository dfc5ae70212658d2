#pragma once

#include <wrl/client.h>

#include <functional>
#include <string>

#include "common/ComObject_com.h"

namespace zyn::viewer {

/// The main window as in-place active controls see it. No room for their tools, no menu merging.
class InPlaceFrame final : public host::ComObject<IOleInPlaceFrame> {
 public:
  using ShowStatus = std::function<void(const std::wstring&)>;

  InPlaceFrame(HWND window, HACCEL accelerators, ShowStatus showStatus)
      : window_(window), accelerators_(accelerators), showStatus_(std::move(showStatus)) {}

  /// The window is gone.
  void forget();

  HACCEL accelerators() const { return accelerators_; }

  /// The control that takes the keys at present; may be null.
  IOleInPlaceActiveObject* activeObject() const { return activeObject_.Get(); }

  STDMETHODIMP GetWindow(HWND* window) noexcept override;
  STDMETHODIMP ContextSensitiveHelp(BOOL) noexcept override { return S_OK; }
  STDMETHODIMP GetBorder(LPRECT) noexcept override { return INPLACE_E_NOTOOLSPACE; }
  STDMETHODIMP RequestBorderSpace(LPCBORDERWIDTHS) noexcept override {
    return INPLACE_E_NOTOOLSPACE;
  }
  STDMETHODIMP SetBorderSpace(LPCBORDERWIDTHS widths) noexcept override {
    return widths == nullptr ? S_OK : OLE_E_INVALIDRECT;
  }
  STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) noexcept override;
  STDMETHODIMP InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS widths) noexcept override;
  STDMETHODIMP SetMenu(HMENU, HOLEMENU, HWND) noexcept override { return S_OK; }
  STDMETHODIMP RemoveMenus(HMENU) noexcept override { return S_OK; }
  STDMETHODIMP SetStatusText(LPCOLESTR text) noexcept override;
  STDMETHODIMP EnableModeless(BOOL) noexcept override { return S_OK; }
  STDMETHODIMP TranslateAccelerator(LPMSG message, WORD) noexcept override;

 private:
  HWND window_;
  HACCEL accelerators_;
  ShowStatus showStatus_;
  Microsoft::WRL::ComPtr<IOleInPlaceActiveObject> activeObject_;
};

}  // namespace zyn::viewer
