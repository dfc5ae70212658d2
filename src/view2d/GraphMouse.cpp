#include "view2d/GraphMouse.h"

#include <utility>

namespace zyn {

namespace {

/// Modes in which a press puts the view on the history, for the drag that may change it.
bool keepsHistory(std::int32_t mode) { return mode == 1 || mode == 2 || mode >= 5; }

}  // namespace

void GraphMouse::setMiddleButtonActive(bool active) {
  middleButtonActive_ = active;
  if (!active) {
    mode_.endPan();
  }
}

std::optional<RubberBand> GraphMouse::rubberBand() const {
  if (!left_ || !left_->bandTo || !isBandMode()) {
    return std::nullopt;
  }
  return RubberBand{left_->at, *left_->bandTo};
}

bool GraphMouse::isBandMode() const {
  return mode_.value() == MouseMode2D::kZoomRectangle || (mode_.isSelection() && windowSelection_);
}

void GraphMouse::leftDown(PixelPoint at, MouseKeys keys) {
  const unsigned turn = ++leftTurns_;
  left_.reset();
  host_.fireMouseDown(MouseButton::Left, view_.getPoint(at));
  if (leftTurns_ != turn) {
    return;
  }
  const std::int32_t mode = mode_.value();
  const bool drags = actOnPress(at, keys);
  if (leftTurns_ != turn) {
    return;
  }
  if (!drags) {
    releaseIfIdle();
    return;
  }
  if (keepsHistory(mode)) {
    view_.pushHistory();
  }
  press(left_, at, keys.left());
}

/// Does what the mode asks for at once. Whether a drag begins.
bool GraphMouse::actOnPress(PixelPoint at, MouseKeys keys) {
  const unsigned turn = leftTurns_;
  if (mode_.value() == MouseMode2D::kNearest) {
    if (host_.askNearest(view_.getPoint(at)) && leftTurns_ == turn) {
      host_.repaint();
    }
    return false;
  }
  if (mode_.isSelection()) {
    pickPressed(at, keys);
    return windowSelection_;
  }
  return true;
}

void GraphMouse::leftUp(PixelPoint at, MouseKeys keys) {
  ++leftTurns_;
  const unsigned closings = closings_;
  const bool endsBand = left_ && isBandMode();
  const bool zooms = mode_.value() == MouseMode2D::kZoomRectangle;
  const std::optional<Press> press = std::exchange(left_, std::nullopt);
  host_.fireMouseUp(MouseButton::Left, view_.getPoint(at));
  releaseIfIdle();
  if (endsBand && closings == closings_ && !left_) {
    endRubberBand({press->at, at}, zooms, keys);
  }
}

void GraphMouse::leftDoubleClick(PixelPoint at) {
  const unsigned closings = closings_;
  if (!host_.hasSelectables()) {
    return;
  }
  const PickRecords records = host_.pickAt(at);
  if (closings == closings_) {
    host_.fireMouseSelectionDblClick(selectionOf(records));
  }
}

void GraphMouse::middleDown(PixelPoint at, MouseKeys keys) {
  if (!middleButtonActive_) {
    return;
  }
  mode_.beginPan();
  press(middle_, at, keys.middle());
}

void GraphMouse::middleUp() {
  cancelMiddle();
  releaseIfIdle();
}

void GraphMouse::rightDown(PixelPoint at) {
  host_.fireMouseDown(MouseButton::Right, view_.getPoint(at));
}

void GraphMouse::rightUp(PixelPoint at) {
  host_.fireMouseUp(MouseButton::Right, view_.getPoint(at));
}

void GraphMouse::mouseMove(PixelPoint at, MouseKeys keys) {
  const unsigned closings = closings_;
  endUnheld(keys);
  if (closings != closings_) {
    return;
  }
  lastAt_ = at;
  enter();
  dragView(at);
  dragRubberBand(at);
  if (closings == closings_) {
    host_.fireMouseMove(view_.getPoint(at));
  }
  if (closings == closings_) {
    pickHovered(at, keys);
  }
}

void GraphMouse::mouseLeave() {
  const unsigned closings = closings_;
  inside_ = false;
  hoveredAt_.reset();
  if (host_.drawsCursor()) {
    host_.repaint();
  }
  if (closings == closings_) {
    host_.fireMouseLeave();
  }
}

bool GraphMouse::wheel(int delta, PixelPoint at) {
  if (!middleButtonActive_) {
    return false;
  }
  if (view_.turnWheel(lastAt_.value_or(at), delta, wheel_)) {
    host_.repaint();
  }
  return true;
}

void GraphMouse::captureLost() {
  ++leftTurns_;
  captured_ = false;
  const bool wasHeld = isHeld();
  cancelLeft();
  cancelMiddle();
  if (wasHeld) {
    host_.repaint();
  }
}

void GraphMouse::close() {
  ++closings_;
  ++leftTurns_;
  captured_ = false;
  inside_ = false;
  lastAt_.reset();
  hoveredAt_.reset();
  cancelLeft();
  cancelMiddle();
}

/// Captures the mouse once: a window that captures it again is told that it lost it.
void GraphMouse::press(std::optional<Press>& button, PixelPoint at, bool buttonReported) {
  button = Press{at, buttonReported, std::nullopt};
  dragFrom_ = at;
  if (!std::exchange(captured_, true)) {
    host_.captureMouse();
  }
}

/// Gives the capture back when no button needs it any more. The system then reports it as lost.
void GraphMouse::releaseIfIdle() {
  if (!isHeld() && std::exchange(captured_, false)) {
    host_.releaseMouse();
  }
}

void GraphMouse::cancelLeft() {
  if (std::exchange(left_, std::nullopt)) {
    mode_.endZoom(maintainWindowZoom_);
  }
}

void GraphMouse::cancelMiddle() {
  middle_.reset();
  mode_.endPan();
}

/// Ends the drags of buttons that were released where no message told of it.
void GraphMouse::endUnheld(MouseKeys keys) {
  const bool leftEnds = left_ && left_->buttonReported && !keys.left();
  const bool middleEnds = middle_ && middle_->buttonReported && !keys.middle();
  if (leftEnds) {
    cancelLeft();
  }
  if (middleEnds) {
    cancelMiddle();
  }
  if (leftEnds || middleEnds) {
    host_.repaint();
    releaseIfIdle();
  }
}

void GraphMouse::enter() {
  if (inside_) {
    return;
  }
  inside_ = true;
  if (host_.drawsCursor()) {
    host_.repaint();
  }
  if (inside_) {
    host_.trackMouseLeave();
  }
}

void GraphMouse::dragView(PixelPoint at) {
  const PixelPoint from = std::exchange(dragFrom_, at);
  const bool pans = isHeld() && mode_.value() == MouseMode2D::kPan && !(at == from);
  if (pans && view_.pan(at.x - from.x, at.y - from.y)) {
    host_.repaint();
  }
}

void GraphMouse::dragRubberBand(PixelPoint at) {
  if (!left_ || !isBandMode() || left_->bandTo.value_or(left_->at) == at) {
    return;
  }
  left_->bandTo = at;
  host_.repaint();
}

void GraphMouse::endRubberBand(const RubberBand& band, bool zooms, MouseKeys keys) {
  const unsigned turn = leftTurns_;
  if (zooms) {
    view_.zoomTo(band);
    mode_.endZoom(maintainWindowZoom_);
  } else {
    selectWindow(band, keys);
  }
  if (leftTurns_ == turn) {
    host_.repaint();
  }
}

/// Does nothing for a rectangle less than a pixel wide or high.
void GraphMouse::selectWindow(const RubberBand& band, MouseKeys keys) {
  if (band.press.x == band.current.x || band.press.y == band.current.y) {
    return;
  }
  const unsigned closings = closings_;
  const Rect2 rectangle = view_.getRectangle(band);
  const PickRecords records = host_.pickWithin(band);
  if (closings == closings_) {
    host_.fireWindowSelection(keys.key(), rectangle, records.allNames());
  }
}

PickedNames GraphMouse::selectionOf(const PickRecords& records) const {
  return selectSuperpose_ ? records.allNames() : records.nearestNames();
}

void GraphMouse::pickPressed(PixelPoint at, MouseKeys keys) {
  const unsigned closings = closings_;
  if (!host_.hasSelectables()) {
    return;
  }
  const Point point = view_.getPoint(at);
  const PickedNames names = selectionOf(host_.pickAt(at));
  if (closings == closings_) {
    host_.fireMouseSelection(names);
  }
  if (closings == closings_) {
    host_.fireMouseSelection2(keys.key(), point, names);
  }
}

/// Once a position, and only while no button is held.
void GraphMouse::pickHovered(PixelPoint at, MouseKeys keys) {
  const unsigned closings = closings_;
  if (keys.anyButton() || isHeld() || hoveredAt_ == at || !host_.hasSelectables()) {
    return;
  }
  hoveredAt_ = at;
  const Point point = view_.getPoint(at);
  const PickedNames names = host_.pickAt(at).nearestNames();
  if (closings == closings_) {
    host_.fireMouseOn(names);
  }
  if (closings == closings_) {
    host_.fireMouseOn2(keys.key(), point, names);
  }
}

}  // namespace zyn
