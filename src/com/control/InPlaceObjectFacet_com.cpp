#include "com/control/InPlaceObjectFacet_com.h"

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

}  // namespace zyn
