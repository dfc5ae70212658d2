#include "com/control/InPlaceFacets_com.h"

#include "com/control/Control_com.h"

namespace zyn {

STDMETHODIMP InPlaceObjectFacet::GetWindow(HWND* window) noexcept {
  if (!window) {
    return E_POINTER;
  }
  *window = control().window();
  return *window ? S_OK : E_FAIL;
}

STDMETHODIMP InPlaceObjectFacet::ContextSensitiveHelp(BOOL) noexcept { return S_OK; }

STDMETHODIMP InPlaceObjectFacet::InPlaceDeactivate() noexcept {
  return entry([&] { control().activation().deactivate(); });
}

STDMETHODIMP InPlaceObjectFacet::UIDeactivate() noexcept {
  return entry([&] { control().activation().deactivateUi(); });
}

STDMETHODIMP InPlaceObjectFacet::SetObjectRects(LPCRECT position, LPCRECT clip) noexcept {
  if (!position) {
    return E_POINTER;
  }
  return entry([&] { control().activation().setRects(*position, clip); });
}

STDMETHODIMP InPlaceObjectFacet::ReactivateAndUndo() noexcept { return INPLACE_E_NOTUNDOABLE; }

STDMETHODIMP InPlaceObjectFacet::OnWindowMessage(UINT, WPARAM, LPARAM, LRESULT* result) noexcept {
  if (!result) {
    return E_POINTER;
  }
  *result = 0;
  return S_FALSE;
}

STDMETHODIMP InPlaceObjectFacet::GetDropTarget(IDropTarget** target) noexcept {
  if (!target) {
    return E_POINTER;
  }
  *target = nullptr;
  return E_NOTIMPL;  // as a control without drag and drop has to answer
}

namespace {

/// The modifiers as IOleControlSite::TranslateAccelerator numbers them.
DWORD heldModifiers() noexcept {
  constexpr DWORD kShift = 1;
  constexpr DWORD kControl = 2;
  constexpr DWORD kAlt = 4;
  const auto held = [](int key) { return GetKeyState(key) < 0; };
  return (held(VK_SHIFT) ? kShift : 0) | (held(VK_CONTROL) ? kControl : 0) |
         (held(VK_MENU) ? kAlt : 0);
}

bool isKey(const MSG& message) noexcept {
  return message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
}

bool isKeyChange(const MSG& message) noexcept {
  return message.message == WM_KEYDOWN || message.message == WM_KEYUP;
}

}  // namespace

STDMETHODIMP InPlaceActiveObjectFacet::GetWindow(HWND* window) noexcept {
  if (!window) {
    return E_POINTER;
  }
  *window = control().window();
  return *window ? S_OK : E_FAIL;
}

STDMETHODIMP InPlaceActiveObjectFacet::ContextSensitiveHelp(BOOL) noexcept { return S_OK; }

STDMETHODIMP InPlaceActiveObjectFacet::TranslateAccelerator(LPMSG message) noexcept {
  if (!message) {
    return E_POINTER;
  }
  return entry([&] {
    if (!isKey(*message)) {
      return S_FALSE;
    }
    const HWND window = control().window();
    if (window && message->hwnd == window && isKeyChange(*message) &&
        control().wantsKey(message->wParam)) {
      DispatchMessageW(message);
      return S_OK;
    }
    const auto site = control().site().as<IOleControlSite>();
    return site && site->TranslateAccelerator(message, heldModifiers()) == S_OK ? S_OK : S_FALSE;
  });
}

STDMETHODIMP InPlaceActiveObjectFacet::OnFrameWindowActivate(BOOL) noexcept { return S_OK; }

STDMETHODIMP InPlaceActiveObjectFacet::OnDocWindowActivate(BOOL) noexcept { return S_OK; }

STDMETHODIMP InPlaceActiveObjectFacet::ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) noexcept {
  return S_OK;
}

STDMETHODIMP InPlaceActiveObjectFacet::EnableModeless(BOOL) noexcept { return S_OK; }

}  // namespace zyn
