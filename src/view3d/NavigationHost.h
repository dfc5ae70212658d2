#pragma once

#include "view/MouseButton.h"
#include "view/PickRecords.h"
#include "view/PixelPoint.h"
#include "view3d/SelectionRectangle.h"

namespace zyn {

/// What MouseNavigation needs of the view around it. Each call may run foreign code: event
/// handlers, drawn objects, containers. That may use the navigation, let more messages in, or close
/// the view; it must not end the navigation's life while one of its messages is handled. Failures
/// end within the call, for a message has nobody to report them to.
class NavigationHost {
 public:
  NavigationHost() = default;
  NavigationHost(const NavigationHost&) = delete;
  NavigationHost& operator=(const NavigationHost&) = delete;
  virtual ~NavigationHost() = default;

  virtual void fireMouseDown(MouseButton button, PixelPoint at) noexcept = 0;
  virtual void fireMouseUp(MouseButton button, PixelPoint at) noexcept = 0;
  virtual void fireMouseMove(int key, PixelPoint at) noexcept = 0;
  virtual void fireMouseSelection(int key, PixelPoint at, const PickedNames& names) noexcept = 0;
  virtual void fireMouseOn(int key, PixelPoint at, const PickedNames& names) noexcept = 0;
  virtual void fireWindowSelection(int key, const SelectionRectangle& rectangle,
                                   const PickedNames& names) noexcept = 0;

  virtual void captureMouse() noexcept = 0;
  virtual void releaseMouse() noexcept = 0;

  /// Asks for one mouseLeave when the mouse leaves the window, and tells the user if that fails.
  virtual void trackMouseLeave() noexcept = 0;

  /// Has the view drawn again, later.
  virtual void repaint() noexcept = 0;

  /// Whether there is anything that can be picked.
  virtual bool hasSelectables() const noexcept = 0;

  /// Whether the cursor glyph is drawn, which shows only while the mouse is inside.
  virtual bool drawsCursor() const noexcept = 0;

  /// Picks in the selection list, without lighting, at a pixel.
  virtual PickRecords pickAt(PixelPoint at) noexcept = 0;

  /// Picks what the rectangle touches: the selection list drawn with mode -2.
  virtual PickRecords pickWithin(const SelectionRectangle& rectangle) noexcept = 0;
};

}  // namespace zyn
