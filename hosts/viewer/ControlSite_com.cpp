#include "viewer/ControlSite_com.h"

// After windows.h:
#include <olectl.h>

#include <cmath>

namespace zyn::viewer {

namespace {

constexpr double kHimetricPerInch = 2540.0;

/// Dots per inch of the screen, across and down.
class ScreenResolution {
 public:
  ScreenResolution() : screen_(GetDC(nullptr)) {}
  ~ScreenResolution() { ReleaseDC(nullptr, screen_); }
  ScreenResolution(const ScreenResolution&) = delete;
  ScreenResolution& operator=(const ScreenResolution&) = delete;

  double across() const { return GetDeviceCaps(screen_, LOGPIXELSX); }
  double down() const { return GetDeviceCaps(screen_, LOGPIXELSY); }

 private:
  HDC screen_;
};

template <typename Interface>
HRESULT none(Interface** out, HRESULT answer) {
  if (out == nullptr) {
    return E_POINTER;
  }
  *out = nullptr;
  return answer;
}

}  // namespace

void ControlSite::setControl(IUnknown* control) {
  control_.Reset();
  control->QueryInterface(IID_PPV_ARGS(&control_));
}

void ControlSite::forget() {
  window_ = nullptr;
  control_.Reset();
}

void ControlSite::place(const RECT& area) {
  area_ = area;
  if (control_) {
    control_->SetObjectRects(&area_, &area_);
  }
}

STDMETHODIMP ControlSite::GetMoniker(DWORD, DWORD, IMoniker** moniker) noexcept {
  return none(moniker, E_NOTIMPL);
}

STDMETHODIMP ControlSite::GetContainer(IOleContainer** container) noexcept {
  return none(container, E_NOINTERFACE);
}

STDMETHODIMP ControlSite::GetWindow(HWND* window) noexcept {
  if (window == nullptr) {
    return E_POINTER;
  }
  *window = window_;
  return window_ == nullptr ? E_FAIL : S_OK;
}

STDMETHODIMP ControlSite::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                           LPRECT position, LPRECT clip,
                                           LPOLEINPLACEFRAMEINFO info) noexcept {
  if (frame == nullptr || document == nullptr || position == nullptr || clip == nullptr ||
      info == nullptr) {
    return E_POINTER;
  }
  frame_.CopyTo(frame);
  *document = nullptr;  // the frame is the only window
  *position = area_;
  *clip = area_;
  info->fMDIApp = FALSE;
  info->hwndFrame = window_;
  info->haccel = frame_->accelerators();
  info->cAccelEntries =
      static_cast<UINT>(CopyAcceleratorTableW(frame_->accelerators(), nullptr, 0));
  return S_OK;
}

STDMETHODIMP ControlSite::OnInPlaceDeactivate() noexcept {
  frame_->SetActiveObject(nullptr, nullptr);
  return S_OK;
}

STDMETHODIMP ControlSite::DeactivateAndUndo() noexcept {
  return control_ ? control_->InPlaceDeactivate() : S_OK;
}

STDMETHODIMP ControlSite::OnPosRectChange(LPCRECT) noexcept {
  // The control fills the view area whatever size it would like.
  return control_ ? control_->SetObjectRects(&area_, &area_) : S_OK;
}

STDMETHODIMP ControlSite::OnInPlaceActivateEx(BOOL* noRedraw, DWORD) noexcept {
  if (noRedraw != nullptr) {
    *noRedraw = FALSE;
  }
  return S_OK;
}

STDMETHODIMP ControlSite::GetExtendedControl(IDispatch** extended) noexcept {
  return none(extended, E_NOTIMPL);
}

STDMETHODIMP ControlSite::TransformCoords(POINTL* himetric, POINTF* container,
                                          DWORD flags) noexcept {
  if (himetric == nullptr || container == nullptr) {
    return E_POINTER;
  }
  const ScreenResolution resolution;
  const double across = resolution.across() / kHimetricPerInch;
  const double down = resolution.down() / kHimetricPerInch;
  if ((flags & XFORMCOORDS_HIMETRICTOCONTAINER) != 0) {
    container->x = static_cast<FLOAT>(himetric->x * across);
    container->y = static_cast<FLOAT>(himetric->y * down);
  } else if ((flags & XFORMCOORDS_CONTAINERTOHIMETRIC) != 0) {
    himetric->x = std::lround(container->x / across);
    himetric->y = std::lround(container->y / down);
  } else {
    return E_INVALIDARG;
  }
  return S_OK;
}

STDMETHODIMP ControlSite::TranslateAccelerator(MSG* message, DWORD) noexcept {
  return frame_->TranslateAccelerator(message, 0);
}

STDMETHODIMP ControlSite::Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS*,
                                 VARIANT* result, EXCEPINFO*, UINT*) noexcept {
  if (result == nullptr || (flags & DISPATCH_PROPERTYGET) == 0) {
    return DISP_E_MEMBERNOTFOUND;
  }
  const auto answer = [result](VARTYPE type, LONG value) {
    VariantInit(result);
    result->vt = type;
    if (type == VT_BOOL) {
      result->boolVal = value != 0 ? VARIANT_TRUE : VARIANT_FALSE;
    } else {
      result->lVal = value;
    }
    return S_OK;
  };
  switch (member) {
    case DISPID_AMBIENT_USERMODE:
    case DISPID_AMBIENT_AUTOCLIP:
    case DISPID_AMBIENT_SUPPORTSMNEMONICS:
      return answer(VT_BOOL, TRUE);
    case DISPID_AMBIENT_UIDEAD:
    case DISPID_AMBIENT_SHOWHATCHING:
    case DISPID_AMBIENT_SHOWGRABHANDLES:
    case DISPID_AMBIENT_MESSAGEREFLECT:
    case DISPID_AMBIENT_DISPLAYASDEFAULT:
      return answer(VT_BOOL, FALSE);
    case DISPID_AMBIENT_BACKCOLOR:
      return answer(VT_I4, static_cast<LONG>(GetSysColor(COLOR_WINDOW)));
    case DISPID_AMBIENT_FORECOLOR:
      return answer(VT_I4, static_cast<LONG>(GetSysColor(COLOR_WINDOWTEXT)));
    case DISPID_AMBIENT_LOCALEID:
      return answer(VT_I4, static_cast<LONG>(GetUserDefaultLCID()));
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

}  // namespace zyn::viewer
