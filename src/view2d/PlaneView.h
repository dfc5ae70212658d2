#pragma once

#include "core/Point.h"
#include "view/MouseInput.h"
#include "view/Pixels.h"
#include "view2d/CParamsVue2D.h"

namespace zyn {

/// What the mouse of a 2D view moves. Pixels are those of the client area, points in model units.
/// Operations that return bool tell whether what is shown has changed.
class PlaneView {
 public:
  PlaneView() = default;
  PlaneView(const PlaneView&) = delete;
  PlaneView& operator=(const PlaneView&) = delete;
  virtual ~PlaneView() = default;

  /// The model point of a pixel's coordinates, with z = 0; not finite where there is nothing to map
  /// pixels with.
  virtual Point getPoint(PixelPoint pixel) const = 0;

  /// The model rectangle between two pixels, bounds in order.
  virtual Rect2 getRectangle(const RubberBand& band) const = 0;

  /// Keeps what is shown, to come back to it.
  virtual void pushHistory() = 0;

  /// Turns the wheel by `delta` (120 a notch) over a pixel, whose model point stays under it:
  /// forward zooms out. At least a 64th of the view stays.
  virtual bool turnWheel(PixelPoint mouse, int delta, const Wheel& wheel) = 0;

  /// Moves what is shown by so many pixels, to the right and downwards.
  virtual bool pan(int right, int down) = 0;

  /// Shows the rectangle between two pixels and puts the view there was on the history. Does
  /// nothing for a rectangle less than a pixel wide or high.
  virtual bool zoomTo(const RubberBand& band) = 0;

  /// Whether a press takes hold of something that the mouse moves in every mode.
  virtual bool takeHold(PixelPoint /*at*/) { return false; }
  virtual bool dragHeld(PixelPoint /*from*/, PixelPoint /*to*/) { return false; }
  virtual bool letGo(PixelPoint /*at*/) { return false; }

  /// The left button was pressed and released at one place, without hold of anything.
  virtual void click(PixelPoint /*at*/) {}
  virtual bool doubleClick(PixelPoint /*at*/) { return false; }
};

}  // namespace zyn
