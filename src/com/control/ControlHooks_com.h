#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>

#include <optional>

#include "com/control/Extent.h"

namespace zyn {

class StockPointer;

/// What a control supplies to the base that deals with its container.
///
/// The hooks run on the thread of the control's apartment, in the library's own floating-point
/// environment, with the object kept alive. What they throw ends within the base: a window message
/// has nobody to report to, a call of the container gets the matching HRESULT. A hook that calls
/// out (events, drawn objects, message boxes) must expect the window to be gone afterwards.
class ControlHooks {
 public:
  ControlHooks() = default;
  ControlHooks(const ControlHooks&) = delete;
  ControlHooks& operator=(const ControlHooks&) = delete;
  virtual ~ControlHooks() = default;

  /// The window exists (hidden yet) with its first client size. windowResized follows only when
  /// that size changes.
  virtual void windowCreated(HWND window, SIZE client) = 0;

  /// Called exactly once for each windowCreated, also where that threw, while the handle is still
  /// valid if it can be: `window` is null when the window died without telling.
  virtual void windowDestroyed(HWND window) noexcept = 0;

  virtual void windowResized(SIZE client) = 0;

  /// WM_PAINT. Never nested; a repaint asked for meanwhile follows. `dc` is clipped to what needs
  /// painting.
  virtual void paint(HDC dc) = 0;

  /// Draws a picture of the control, of `pixels` device pixels (both > 0), into the rectangle
  /// `bounds` of a foreign device context: of the screen, a bitmap or a printer. `bounds` is in
  /// that context's logical units; its right - left and bottom - top carry the sign of the mapping
  /// mode, as StretchDIBits wants them.
  virtual void drawInto(HDC dc, const RECT& bounds, SIZE pixels) = 0;

  /// Any message of the window, first before the base: mouse, keys, wheel, timer, capture.
  /// Coordinates as the system gives them. No value: the base and the system deal with it. Not
  /// asked for WM_CREATE, WM_DESTROY, WM_NCDESTROY, WM_PAINT, WM_SIZE and WM_ERASEBKGND.
  virtual std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;

  /// Whether the control itself uses this virtual key (an arrow, say) before its container may.
  virtual bool wantsKey(WPARAM) const noexcept { return false; }

  /// A property of the container's surroundings changed; DISPID_UNKNOWN: any of them.
  virtual void ambientChanged(DISPID) {}

  /// The stock properties MousePointer and MouseIcon of a control that has them.
  virtual StockPointer* stockPointer() noexcept { return nullptr; }
};

}  // namespace zyn
