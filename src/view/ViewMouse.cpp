#include "view/ViewMouse.h"

#include <utility>

namespace zyn {

void MouseMode::take(std::int32_t value) {
  if (!isRectangle()) {
    previous_ = set_;
  }
  set_ = value;
}

void MouseMode::endRectangle() {
  if (isRectangle()) {
    set_ = previous_;
  }
}

void ViewMouse::setMiddleButtonActive(bool active) {
  middleButtonActive_ = active;
  if (!active) {
    mode_.endStandIn();
  }
}

std::optional<RubberBand> ViewMouse::rubberBand() const {
  if (!left_ || !left_->bandTo || !isBandMode()) {
    return std::nullopt;
  }
  return RubberBand{left_->at, *left_->bandTo};
}

bool ViewMouse::isBandMode() const {
  return mode_.value() == MouseMode::kRectangle || (mode_.isSelection() && windowSelection_);
}

void ViewMouse::captureLost() {
  ++leftTurns_;
  ++middleTurns_;
  captured_ = false;
  const bool wasHeld = isHeld();
  cancelLeft();
  cancelMiddle();
  if (wasHeld) {
    host_.repaint();
  }
}

void ViewMouse::close() {
  ++closings_;
  ++leftTurns_;
  ++middleTurns_;
  captured_ = false;
  inside_ = false;
  lastAt_.reset();
  hoveredAt_.reset();
  cancelLeft();
  cancelMiddle();
}

/// Captures the mouse once: a window that captures it again is told that it lost it.
void ViewMouse::beginDrag(PixelPoint at) {
  dragFrom_ = at;
  if (!std::exchange(captured_, true)) {
    host_.captureMouse();
  }
}

/// Gives the capture back when no button needs it any more. The system then reports it as lost.
void ViewMouse::releaseIfIdle() {
  if (!isHeld() && std::exchange(captured_, false)) {
    host_.releaseMouse();
  }
}

void ViewMouse::cancelLeft() {
  const std::optional<Press> press = std::exchange(left_, std::nullopt);
  if (press && !press->holds && !rectangleStays_) {
    mode_.endRectangle();
  }
}

void ViewMouse::cancelMiddle() {
  middle_.reset();
  mode_.endStandIn();
}

/// Ends the drags of buttons that were released where no message told of it.
void ViewMouse::endUnheld(MouseKeys keys) {
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

/// The mouse is over the view, or has been captured.
void ViewMouse::arrive(PixelPoint at) {
  lastAt_ = at;
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

void ViewMouse::leave() {
  inside_ = false;
  hoveredAt_.reset();
  if (host_.drawsCursor()) {
    host_.repaint();
  }
}

void ViewMouse::dragRubberBand(PixelPoint at) {
  if (!left_ || !left_->drags || left_->holds || !isBandMode() ||
      left_->bandTo.value_or(left_->at) == at) {
    return;
  }
  left_->bandTo = at;
  host_.repaint();
}

/// Whether to pick what the mouse hovers over: once a position, and only while no button is held.
bool ViewMouse::beginHover(PixelPoint at, MouseKeys keys) {
  if (keys.anyButton() || left_ || middle_ || hoveredAt_ == at || !host_.hasSelectables()) {
    return false;
  }
  hoveredAt_ = at;
  return true;
}

PickedNames ViewMouse::selectionOf(const PickRecords& records) const {
  return selectSuperpose_ ? records.allNames() : records.nearestNames();
}

}  // namespace zyn
