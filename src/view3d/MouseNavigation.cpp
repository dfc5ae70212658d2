#include "view3d/MouseNavigation.h"

#include <utility>

#include "core/saturate.h"

namespace zyn {

namespace {

/// Part of the client area's side that a distance in pixels makes.
float ratio(int pixels, int side) { return static_cast<float>(pixels) / static_cast<float>(side); }

/// What the wheel divides the view rectangle by.
float wheelFactor(int turn, int height) {
  return 1.0F - static_cast<float>(turn) / (5.0F * static_cast<float>(height));
}

}  // namespace

void MouseNavigation::setMiddleButtonActive(bool active) {
  middleButtonActive_ = active;
  if (!active) {
    mode_.endStandIn();
  }
}

std::optional<RubberBand> MouseNavigation::rubberBand() const {
  if (!left_ || !left_->bandTo || !isBandMode()) {
    return std::nullopt;
  }
  return RubberBand{left_->at, *left_->bandTo};
}

bool MouseNavigation::isBandMode() const {
  return mode_.value() == MouseMode::kSelectOnce || (mode_.isSelection() && windowSelection_);
}

void MouseNavigation::leftDown(PixelPoint at, MouseKeys keys) {
  const unsigned turn = ++leftTurns_;
  const unsigned closings = closings_;
  left_.reset();
  host_.fireMouseDown(MouseButton::Left, at);
  if (leftTurns_ != turn) {
    return;
  }
  const bool drags = view_.camera() != nullptr;
  view_.pushHistory();
  left_ = Press{at, drags, keys.left(), std::nullopt};
  if (!drags) {
    return;
  }
  beginDrag(at);
  if (closings == closings_) {
    pickPressed(at, keys);
  }
}

void MouseNavigation::leftUp(PixelPoint at, MouseKeys keys) {
  ++leftTurns_;
  const unsigned closings = closings_;
  const bool selects = left_ && left_->drags && isBandMode();
  const bool once = mode_.isOnce();
  const std::optional<Press> press = std::exchange(left_, std::nullopt);
  host_.fireMouseUp(MouseButton::Left, at);
  releaseIfIdle();
  if (!press) {
    return;
  }
  if (selects && closings == closings_ && !left_) {
    selectWindow(press->at, at, keys);
  }
  if (closings != closings_ || left_) {
    return;
  }
  if (once) {
    mode_.endOnce();
  }
  host_.repaint();
}

void MouseNavigation::middleDown(PixelPoint at, MouseKeys keys) {
  const unsigned turn = ++middleTurns_;
  cancelMiddle();
  host_.fireMouseDown(MouseButton::Middle, at);
  if (middleTurns_ != turn) {
    return;
  }
  middle_ = Press{at, true, keys.middle(), std::nullopt};
  if (middleButtonActive_) {
    mode_.standIn(MouseMode::kPan);
  }
  beginDrag(at);
}

void MouseNavigation::middleUp(PixelPoint at) {
  ++middleTurns_;
  middle_.reset();
  host_.fireMouseUp(MouseButton::Middle, at);
  releaseIfIdle();
  if (!middle_) {
    mode_.endStandIn();
  }
}

void MouseNavigation::rightDown(PixelPoint at) { host_.fireMouseDown(MouseButton::Right, at); }

void MouseNavigation::rightUp(PixelPoint at) { host_.fireMouseUp(MouseButton::Right, at); }

void MouseNavigation::mouseMove(PixelPoint at, MouseKeys keys) {
  const unsigned closings = closings_;
  endUnheld(keys);
  if (closings != closings_) {
    return;
  }
  followKeys(keys);
  lastAt_ = at;
  enter();
  dragCamera(at);
  dragRubberBand(at);
  if (closings == closings_) {
    pickHovered(at, keys);
  }
  if (closings == closings_) {
    host_.fireMouseMove(keys.moveKey(), at);
  }
}

void MouseNavigation::mouseLeave() {
  inside_ = false;
  hoveredAt_.reset();
  if (host_.drawsCursor()) {
    host_.repaint();
  }
}

void MouseNavigation::wheel(int delta, PixelPoint at) {
  const ClientSize client = view_.clientSize();
  if (!view_.camera() || client.isEmpty()) {
    return;
  }
  const double turn = (middleButtonInverse_ ? -1.0 : 1.0) * delta * middleButtonAcceleration_;
  const PixelPoint centre = lastAt_.value_or(at);
  view_.zoomAbout(centre.x, centre.y, wheelFactor(saturatedInteger(turn), client.height));
  host_.repaint();
}

void MouseNavigation::captureLost() {
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

void MouseNavigation::close() {
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
void MouseNavigation::beginDrag(PixelPoint at) {
  dragFrom_ = at;
  if (!std::exchange(captured_, true)) {
    host_.captureMouse();
  }
}

/// Gives the capture back when no button needs it any more. The system then reports it as lost.
void MouseNavigation::releaseIfIdle() {
  if (!isHeld() && std::exchange(captured_, false)) {
    host_.releaseMouse();
  }
}

void MouseNavigation::cancelLeft() {
  if (left_) {
    left_.reset();
    mode_.endOnce();
  }
}

void MouseNavigation::cancelMiddle() {
  middle_.reset();
  mode_.endStandIn();
}

/// Ends the drags of buttons that were released where no message told of it.
void MouseNavigation::endUnheld(MouseKeys keys) {
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

void MouseNavigation::followKeys(MouseKeys keys) {
  if (!middle_ || !middleButtonActive_) {
    return;
  }
  if (keys.control()) {
    mode_.standIn(MouseMode::kPan);
  } else {
    mode_.standIn(keys.shift() ? MouseMode::kZoom : MouseMode::kRotate);
  }
}

void MouseNavigation::enter() {
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

void MouseNavigation::dragCamera(PixelPoint at) {
  const ClientSize client = view_.clientSize();
  if (!isNavigating() || !view_.camera() || client.isEmpty() || at == dragFrom_) {
    return;
  }
  if (mode_.value() < MouseMode::kPan || mode_.value() > MouseMode::kZoom) {
    return;
  }
  moveCamera(at.x - dragFrom_.x, dragFrom_.y - at.y, client);
  dragFrom_ = at;
  host_.repaint();
}

/// `dx` pixels to the right, `dy` upwards.
void MouseNavigation::moveCamera(int dx, int dy, ClientSize client) {
  const float alongX = ratio(dx, client.width);
  const float alongY = ratio(dy, client.height);
  switch (mode_.value()) {
    case MouseMode::kPan:
      view_.translateH(-alongX * view_.camera()->width());
      view_.translateV(-alongY * view_.camera()->height());
      break;
    case MouseMode::kRotate:
      view_.rotateH(-alongX * 360.0F);
      view_.rotateV(-alongY * 360.0F);
      break;
    default:
      view_.zoom(1.0F - 3.0F * alongY);
      break;
  }
}

void MouseNavigation::dragRubberBand(PixelPoint at) {
  if (!left_ || !left_->drags || !isBandMode() || left_->bandTo.value_or(left_->at) == at) {
    return;
  }
  left_->bandTo = at;
  host_.repaint();
}

void MouseNavigation::pickPressed(PixelPoint at, MouseKeys keys) {
  const unsigned closings = closings_;
  if (!mode_.isSelection() || !host_.hasSelectables()) {
    return;
  }
  const PickRecords records = host_.pickAt(at);
  if (closings == closings_) {
    host_.fireMouseSelection(keys.key(), at,
                             selectSuperpose_ ? records.allNames() : records.nearestNames());
  }
}

void MouseNavigation::selectWindow(PixelPoint press, PixelPoint release, MouseKeys keys) {
  const unsigned closings = closings_;
  const auto rectangle = SelectionRectangle::between(press, release, view_.clientSize());
  if (!rectangle || !view_.camera()) {
    return;
  }
  const PickRecords records = host_.pickWithin(*rectangle);
  if (closings == closings_) {
    host_.fireWindowSelection(keys.key(), *rectangle, records.allNames());
  }
}

/// Once a position, and only while no button is held.
void MouseNavigation::pickHovered(PixelPoint at, MouseKeys keys) {
  const unsigned closings = closings_;
  if (keys.anyButton() || left_ || middle_ || hoveredAt_ == at || !view_.camera() ||
      !host_.hasSelectables()) {
    return;
  }
  hoveredAt_ = at;
  const PickRecords records = host_.pickAt(at);
  if (closings == closings_) {
    host_.fireMouseOn(keys.moveKey(), at, records.nearestNames());
  }
}

}  // namespace zyn
