#pragma once

#include "com/control/Facet_com.h"

#include <ocidl.h>

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

}  // namespace zyn
