#pragma once

#include <optional>

#include "core/Point.h"
#include "view/ViewMouse.h"
#include "view2d/CParamsVue2D.h"
#include "view2d/PlaneView.h"

namespace zyn {

/// What the left button of a 2D view does. Any other value drags and does nothing else.
class MouseMode2D : public MouseMode {
 public:
  enum : std::int32_t { kNearest = 3 };

  MouseMode2D() : MouseMode(kNearest) {}

  std::int32_t previous() const { return previous_; }

  /// Takes any value, which ends a pan; the mode before the pan is then the one to return to.
  void set(std::int32_t value);

  /// Pans until endStandIn, which goes back to the mode before, whatever that was.
  void beginPan();

  bool isPanning() const { return standIn_.has_value(); }
};

/// What the mouse of a 2D view needs of the view around it.
class MouseHost2D : public MouseHost {
 public:
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

  /// Picks what the rectangle touches.
  virtual PickRecords pickWithin(const RubberBand& band) noexcept = 0;
};

/// Turns the mouse messages of a 2D view into moves of the view, picks, nearest points and events.
class Mouse2D : public ViewMouse {
 public:
  Mouse2D(PlaneView& view, MouseHost2D& host)
      : ViewMouse(host, mode_, false), view_(&view), host_(host) {}

  /// Moves another plane from now on.
  void setView(PlaneView& view) { view_ = &view; }

  MouseMode2D& mode() { return mode_; }

  /// Whether the zoom to a rectangle stays the mode after one.
  bool maintainWindowZoom() const { return rectangleStays_; }
  void setMaintainWindowZoom(bool on) { rectangleStays_ = on; }

  void leftDown(PixelPoint at, MouseKeys keys);
  void leftUp(PixelPoint at, MouseKeys keys);
  void leftDoubleClick(PixelPoint at);
  void middleDown(PixelPoint at, MouseKeys keys);
  void middleUp();
  void rightDown(PixelPoint at);
  void rightUp(PixelPoint at);
  void mouseMove(PixelPoint at, MouseKeys keys);
  void mouseLeave();

  /// Zooms about the last position of the mouse, or about `at` as long as it has not moved over the
  /// view. `delta` is 120 for one notch. False when the wheel is not the view's.
  bool wheel(int delta, PixelPoint at);

 private:
  bool actOnPress(PixelPoint at, MouseKeys keys);
  void dragView(PixelPoint at);
  void endRubberBand(const RubberBand& band, bool zooms, MouseKeys keys);
  void selectWindow(const RubberBand& band, MouseKeys keys);
  void pickPressed(PixelPoint at, MouseKeys keys);
  void pickHovered(PixelPoint at, MouseKeys keys);

  PlaneView* view_;
  MouseHost2D& host_;
  MouseMode2D mode_;
  std::optional<PixelPoint> clickAt_;  ///< where the left button went down, until it moves away
};

}  // namespace zyn
