#include "viewer/InPlaceFrame_com.h"

#include <new>

namespace zyn::viewer {

void InPlaceFrame::forget() {
  window_ = nullptr;
  accelerators_ = nullptr;
  showStatus_ = nullptr;
  activeObject_.Reset();
}

STDMETHODIMP InPlaceFrame::GetWindow(HWND* window) noexcept {
  if (window == nullptr) {
    return E_POINTER;
  }
  *window = window_;
  return window_ == nullptr ? E_FAIL : S_OK;
}

STDMETHODIMP InPlaceFrame::SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) noexcept {
  activeObject_ = object;
  return S_OK;
}

STDMETHODIMP InPlaceFrame::InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS widths) noexcept {
  if (widths == nullptr) {
    return E_POINTER;
  }
  for (LONG* const width : {&widths->width[0], &widths->width[2], &widths->width[4]}) {
    *width = 0;
  }
  return S_OK;
}

STDMETHODIMP InPlaceFrame::SetStatusText(LPCOLESTR text) noexcept {
  try {
    if (showStatus_) {
      showStatus_(text == nullptr ? L"" : text);
    }
    return S_OK;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
}

STDMETHODIMP InPlaceFrame::TranslateAccelerator(LPMSG message, WORD) noexcept {
  if (message == nullptr) {
    return E_POINTER;
  }
  return accelerators_ != nullptr && ::TranslateAcceleratorW(window_, accelerators_, message) != 0
             ? S_OK
             : S_FALSE;
}

}  // namespace zyn::viewer
