#pragma once

#include "com/control/Facet_com.h"

#include <oleidl.h>

namespace zyn {

/// IOleInPlaceActiveObject: keys and window states that reach the control through its container's
/// frame.
class InPlaceActiveObjectFacet final : public Facet<IOleInPlaceActiveObject> {
 public:
  using Facet::Facet;

  STDMETHODIMP GetWindow(HWND* window) noexcept override;
  STDMETHODIMP ContextSensitiveHelp(BOOL enter) noexcept override;
  STDMETHODIMP TranslateAccelerator(LPMSG message) noexcept override;
  STDMETHODIMP OnFrameWindowActivate(BOOL active) noexcept override;
  STDMETHODIMP OnDocWindowActivate(BOOL active) noexcept override;
  STDMETHODIMP ResizeBorder(LPCRECT border, IOleInPlaceUIWindow* window,
                            BOOL frame) noexcept override;
  STDMETHODIMP EnableModeless(BOOL enable) noexcept override;
};

}  // namespace zyn
