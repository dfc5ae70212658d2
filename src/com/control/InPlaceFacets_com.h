#pragma once

#include <ocidl.h>
#include <oleidl.h>

#include "com/control/Facet_com.h"

namespace zyn {

/// IOleInPlaceObjectWindowless: what a container does with an active control. The control always
/// has a window, so that its messages never come through here.
class InPlaceObjectFacet final : public Facet<IOleInPlaceObjectWindowless> {
 public:
  using Facet::Facet;

  STDMETHODIMP GetWindow(HWND* window) noexcept override;
  STDMETHODIMP ContextSensitiveHelp(BOOL enter) noexcept override;
  STDMETHODIMP InPlaceDeactivate() noexcept override;
  STDMETHODIMP UIDeactivate() noexcept override;
  STDMETHODIMP SetObjectRects(LPCRECT position, LPCRECT clip) noexcept override;
  STDMETHODIMP ReactivateAndUndo() noexcept override;
  STDMETHODIMP OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam,
                               LRESULT* result) noexcept override;
  STDMETHODIMP GetDropTarget(IDropTarget** target) noexcept override;
};

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
