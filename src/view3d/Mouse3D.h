#pragma once

#include <optional>

#include "view/ViewMouse.h"
#include "view3d/SelectionRectangle.h"
#include "view3d/ViewState3D.h"

namespace zyn {

/// What dragging the mouse over a 3D view does. Any other value does nothing.
class MouseMode3D : public MouseMode {
 public:
  enum : std::int32_t { kRotate = 2, kZoom = 3 };

  MouseMode3D() : MouseMode(kRotate) {}

  void set(std::int32_t value);

  /// The middle button navigates, by a mode that follows the keys.
  void standIn(std::int32_t value) { standIn_ = value; }
};

/// How the mouse turns the camera.
struct MouseRotation {
  enum Mode : std::int32_t {
    kOrbit = 0,     ///< about the screen's axes
    kTable = 1,     ///< the up direction stays
    kTrackball = 2  ///< as a ball under the mouse
  };
  enum Centre : std::int32_t { kTarget = 0, kUnderMouse = 1, kPoint = 2 };

  std::int32_t mode = kOrbit;
  std::int32_t centre = kTarget;
  Point point{};  ///< the centre that was set
};

/// What the mouse of a 3D view needs of the view around it.
class MouseHost3D : public MouseHost {
 public:
  virtual void fireMouseDown(MouseButton button, PixelPoint at) noexcept = 0;
  virtual void fireMouseUp(MouseButton button, PixelPoint at) noexcept = 0;
  virtual void fireMouseMove(int key, PixelPoint at) noexcept = 0;
  virtual void fireMouseSelection(int key, PixelPoint at, const PickedNames& names) noexcept = 0;
  virtual void fireMouseOn(int key, PixelPoint at, const PickedNames& names) noexcept = 0;
  virtual void fireWindowSelection(int key, const SelectionRectangle& rectangle,
                                   const PickedNames& names) noexcept = 0;

  /// The point of the scene that is seen at the centre of a pixel, if there is one.
  virtual std::optional<Point> surfaceAt(PixelPoint at) noexcept = 0;

  /// Picks what the rectangle touches: the selection list drawn with mode -2.
  virtual PickRecords pickWithin(const SelectionRectangle& rectangle) noexcept = 0;
};

/// Turns the mouse messages of a 3D view into camera moves, picks and events.
class Mouse3D : public ViewMouse {
 public:
  Mouse3D(ViewState3D& view, MouseHost3D& host)
      : ViewMouse(host, mode_, true), view_(view), host_(host) {}

  MouseMode3D& mode() { return mode_; }
  MouseRotation& rotation() { return rotation_; }

  void leftDown(PixelPoint at, MouseKeys keys);
  void leftUp(PixelPoint at, MouseKeys keys);
  void middleDown(PixelPoint at, MouseKeys keys);
  void middleUp(PixelPoint at);
  void rightDown(PixelPoint at);
  void rightUp(PixelPoint at);
  void mouseMove(PixelPoint at, MouseKeys keys);
  void mouseLeave() { leave(); }

  /// Zooms about the last position of the mouse, or about `at` as long as it has not moved over the
  /// view. `delta` is 120 for one notch.
  void wheel(int delta, PixelPoint at);

 private:
  bool isNavigating() const { return (left_ && left_->drags) || (middle_ && middleButtonActive()); }

  void followKeys(MouseKeys keys);
  void dragCamera(PixelPoint at);
  void moveCamera(PixelPoint to, ClientSize client);
  void rotate(PixelPoint to, float across, float upwards);
  void chooseCentre(PixelPoint press);
  void pickPressed(PixelPoint at, MouseKeys keys);
  void selectWindow(PixelPoint press, PixelPoint release, MouseKeys keys);
  void pickHovered(PixelPoint at, MouseKeys keys);

  ViewState3D& view_;
  MouseHost3D& host_;
  MouseMode3D mode_;
  MouseRotation rotation_;
  std::optional<Point> turnCentre_;  ///< in place of the target, during a drag
};

}  // namespace zyn
