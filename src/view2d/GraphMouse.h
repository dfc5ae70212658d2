#pragma once

#include <optional>

#include "view/MouseKeys.h"
#include "view/PixelPoint.h"
#include "view/RubberBand.h"
#include "view2d/GraphMouseHost.h"
#include "view2d/MouseMode2D.h"
#include "view2d/ViewState2D.h"

namespace zyn {

/// Turns the mouse messages of a 2D view into moves of the view, picks, nearest points and events.
/// Positions are client pixels; while the mouse is captured they may lie outside of the client
/// area.
///
/// Whatever the host does in between, a drag ends with the release of its button, the loss of the
/// capture, the first move that reports the button as up, or the view; and it ends once. A release
/// without a press fires its event and does no more.
class GraphMouse {
 public:
  GraphMouse(ViewState2D& view, GraphMouseHost& host) : view_(view), host_(host) {}
  GraphMouse(const GraphMouse&) = delete;
  GraphMouse& operator=(const GraphMouse&) = delete;

  MouseMode2D& mode() { return mode_; }

  /// Whether the zoom to a rectangle stays the mode after one.
  bool maintainWindowZoom() const { return maintainWindowZoom_; }
  void setMaintainWindowZoom(bool on) { maintainWindowZoom_ = on; }

  /// Whether dragging in a selection mode draws a rubber band.
  bool windowSelection() const { return windowSelection_; }
  void setWindowSelection(bool on) { windowSelection_ = on; }

  /// Whether presses and double clicks report every hit, or the nearest only.
  bool selectSuperpose() const { return selectSuperpose_; }
  void setSelectSuperpose(bool on) { selectSuperpose_ = on; }

  /// Whether the middle button pans and the wheel zooms.
  bool middleButtonActive() const { return middleButtonActive_; }
  void setMiddleButtonActive(bool active);

  bool middleButtonInverse() const { return wheel_.inverse; }
  void setMiddleButtonInverse(bool inverse) { wheel_.inverse = inverse; }

  double middleButtonAcceleration() const { return wheel_.acceleration; }
  void setMiddleButtonAcceleration(double factor) { wheel_.acceleration = factor; }

  bool isMouseInside() const { return inside_; }

  /// The rubber band to draw, if one is being dragged.
  std::optional<RubberBand> rubberBand() const;

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

  /// The capture went to another window, or the system asks for the end of modes.
  void captureLost();

  /// The window is gone: drags end, and messages still being handled call the host no more.
  void close();

 private:
  /// A button that is held and drags.
  struct Press {
    PixelPoint at;
    bool buttonReported = false;  ///< the message told of its own button, so moves will too
    std::optional<PixelPoint> bandTo;
  };

  bool isHeld() const { return left_ || middle_; }
  bool isBandMode() const;

  bool actOnPress(PixelPoint at, MouseKeys keys);
  void press(std::optional<Press>& button, PixelPoint at, bool buttonReported);
  void releaseIfIdle();
  void cancelLeft();
  void cancelMiddle();
  void endUnheld(MouseKeys keys);
  void enter();
  void dragView(PixelPoint at);
  void dragRubberBand(PixelPoint at);
  void endRubberBand(const RubberBand& band, bool zooms, MouseKeys keys);
  void selectWindow(const RubberBand& band, MouseKeys keys);
  PickedNames selectionOf(const PickRecords& records) const;
  void pickPressed(PixelPoint at, MouseKeys keys);
  void pickHovered(PixelPoint at, MouseKeys keys);

  ViewState2D& view_;
  GraphMouseHost& host_;

  MouseMode2D mode_;
  bool maintainWindowZoom_ = false;
  bool windowSelection_ = false;
  bool selectSuperpose_ = false;
  bool middleButtonActive_ = false;
  ViewState2D::Wheel wheel_;

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
  unsigned closings_ = 0;
};

}  // namespace zyn
