#pragma once

#include "core/Point.h"
#include "view/MouseButton.h"
#include "view/PickRecords.h"
#include "view/PixelPoint.h"
#include "view/RubberBand.h"
#include "view2d/Rect2.h"

namespace zyn {

/// What GraphMouse needs of the view around it. Each call may run foreign code: event handlers,
/// drawn objects, traces. That may use the mouse logic, let more messages in, or close the view; it
/// must not end the logic's life while one of its messages is handled. Failures end within the
/// call, for a message has nobody to report them to.
class GraphMouseHost {
 public:
  GraphMouseHost() = default;
  GraphMouseHost(const GraphMouseHost&) = delete;
  GraphMouseHost& operator=(const GraphMouseHost&) = delete;
  virtual ~GraphMouseHost() = default;

  // Events. Points and rectangles are in model units.
  virtual void fireMouseDown(MouseButton button, const Point& at) noexcept = 0;
  virtual void fireMouseUp(MouseButton button, const Point& at) noexcept = 0;
  virtual void fireMouseMove(const Point& at) noexcept = 0;
  virtual void fireMouseLeave() noexcept = 0;
  virtual void fireMouseSelection(const PickedNames& names) noexcept = 0;
  virtual void fireMouseSelection2(int key, const Point& at, const PickedNames& names) noexcept = 0;
  virtual void fireMouseSelectionDblClick(const PickedNames& names) noexcept = 0;
  virtual void fireMouseOn(const PickedNames& names) noexcept = 0;
  virtual void fireMouseOn2(int key, const Point& at, const PickedNames& names) noexcept = 0;
  virtual void fireWindowSelection(int key, const Rect2& rectangle,
                                   const PickedNames& names) noexcept = 0;

  /// Asks the active trace for its point nearest to `at` and fires the answer. False when there is
  /// no active trace.
  virtual bool askNearest(const Point& at) noexcept = 0;

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

  /// Picks what the rectangle touches.
  virtual PickRecords pickWithin(const RubberBand& band) noexcept = 0;
};

}  // namespace zyn
