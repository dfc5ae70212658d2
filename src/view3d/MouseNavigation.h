#pragma once

#include <optional>

#include "view/MouseKeys.h"
#include "view/PixelPoint.h"
#include "view/RubberBand.h"
#include "view3d/MouseMode.h"
#include "view3d/NavigationHost.h"
#include "view3d/ViewState3D.h"

namespace zyn {

/// Turns the mouse messages of a 3D view into camera moves, picks and events. Positions are client
/// pixels; while the mouse is captured they may lie outside of the client area.
///
/// Whatever the host does in between, a drag ends with the release of its button, the loss of the
/// capture, the first move that reports the button as up, or the view; and it ends once. A release
/// without a press fires its event and does no more.
class MouseNavigation {
 public:
  MouseNavigation(ViewState3D& view, NavigationHost& host) : view_(view), host_(host) {}
  MouseNavigation(const MouseNavigation&) = delete;
  MouseNavigation& operator=(const MouseNavigation&) = delete;

  MouseMode& mode() { return mode_; }

  /// Whether dragging in a selection mode draws a rubber band.
  bool windowSelection() const { return windowSelection_; }
  void setWindowSelection(bool on) { windowSelection_ = on; }

  /// Whether a press in a selection mode reports every hit, or the nearest only.
  bool selectSuperpose() const { return selectSuperpose_; }
  void setSelectSuperpose(bool on) { selectSuperpose_ = on; }

  /// Whether the middle button navigates.
  bool middleButtonActive() const { return middleButtonActive_; }
  void setMiddleButtonActive(bool active);

  /// Whether the wheel turns the other way round.
  bool middleButtonInverse() const { return middleButtonInverse_; }
  void setMiddleButtonInverse(bool inverse) { middleButtonInverse_ = inverse; }

  /// Multiplies the turns of the wheel.
  double middleButtonAcceleration() const { return middleButtonAcceleration_; }
  void setMiddleButtonAcceleration(double factor) { middleButtonAcceleration_ = factor; }

  bool isMouseInside() const { return inside_; }

  /// The rubber band to draw, if one is being dragged.
  std::optional<RubberBand> rubberBand() const;

  void leftDown(PixelPoint at, MouseKeys keys);
  void leftUp(PixelPoint at, MouseKeys keys);
  void middleDown(PixelPoint at, MouseKeys keys);
  void middleUp(PixelPoint at);
  void rightDown(PixelPoint at);
  void rightUp(PixelPoint at);
  void mouseMove(PixelPoint at, MouseKeys keys);
  void mouseLeave();

  /// Zooms about the last position of the mouse, or about `at` as long as it has not moved over the
  /// view. `delta` is 120 for one notch.
  void wheel(int delta, PixelPoint at);

  /// The capture went to another window, or the system asks for the end of modes.
  void captureLost();

  /// The window is gone: drags end, and messages still being handled call the host no more.
  void close();

 private:
  /// A button that is held.
  struct Press {
    PixelPoint at;
    bool drags = false;           ///< there was a camera to move
    bool buttonReported = false;  ///< the message told of its own button, so moves will too
    std::optional<PixelPoint> bandTo;
  };

  bool isHeld() const { return (left_ && left_->drags) || middle_; }
  bool isNavigating() const { return (left_ && left_->drags) || (middle_ && middleButtonActive_); }
  bool isBandMode() const;

  void beginDrag(PixelPoint at);
  void releaseIfIdle();
  void cancelLeft();
  void cancelMiddle();
  void endUnheld(MouseKeys keys);
  void enter();
  void followKeys(MouseKeys keys);
  void dragCamera(PixelPoint at);
  void moveCamera(int dx, int dy, ClientSize client);
  void dragRubberBand(PixelPoint at);
  void pickPressed(PixelPoint at, MouseKeys keys);
  void selectWindow(PixelPoint press, PixelPoint release, MouseKeys keys);
  void pickHovered(PixelPoint at, MouseKeys keys);

  ViewState3D& view_;
  NavigationHost& host_;

  MouseMode mode_;
  bool windowSelection_ = false;
  bool selectSuperpose_ = false;
  bool middleButtonActive_ = true;
  bool middleButtonInverse_ = false;
  double middleButtonAcceleration_ = 1.0;

  std::optional<Press> left_;
  std::optional<Press> middle_;
  PixelPoint dragFrom_;
  bool inside_ = false;
  bool captured_ = false;
  std::optional<PixelPoint> lastAt_;
  std::optional<PixelPoint> hoveredAt_;

  // Each call of the host may let other messages in. These counts tell, after a call, whether what
  // is being handled still holds.
  unsigned leftTurns_ = 0;  ///< presses, releases and cancellations
  unsigned middleTurns_ = 0;
  unsigned closings_ = 0;
};

}  // namespace zyn
