#include "view2d/Mouse2D.h"

#include <cstdlib>
#include <utility>

namespace zyn {

namespace {

/// Modes in which a press puts the view on the history, for the drag that may change it.
bool keepsHistory(std::int32_t mode) { return mode == 1 || mode == 2 || mode >= 5; }

/// So far the mouse may move in a click, in pixels.
constexpr int kClickReach = 3;

}  // namespace

void MouseMode2D::set(std::int32_t value) {
  if (standIn_) {
    standIn_.reset();
    set_ = value;
  } else {
    take(value);
  }
}

void MouseMode2D::beginPan() {
  if (!standIn_) {
    previous_ = set_;
    standIn_ = kPan;
  }
}

void Mouse2D::leftDown(PixelPoint at, MouseKeys keys) {
  const unsigned turn = ++leftTurns_;
  left_.reset();
  host_.fireMouseDown(MouseButton::kLeft, view_->getPoint(at));
  if (leftTurns_ != turn) {
    return;
  }
  if (view_->takeHold(at)) {
    left_ = Press{.at = at, .drags = true, .buttonReported = keys.left(), .holds = true};
    beginDrag(at);
    return;
  }
  clickAt_ = at;
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
    view_->pushHistory();
  }
  left_ = Press{at, true, keys.left()};
  beginDrag(at);
}

/// Does what the mode asks for at once. Whether a drag begins.
bool Mouse2D::actOnPress(PixelPoint at, MouseKeys keys) {
  const unsigned turn = leftTurns_;
  if (mode_.value() == MouseMode2D::kNearest) {
    if (host_.askNearest(view_->getPoint(at)) && leftTurns_ == turn) {
      host_.repaint();
    }
    return false;
  }
  if (mode_.isSelection()) {
    pickPressed(at, keys);
    return windowSelection();
  }
  return true;
}

void Mouse2D::leftUp(PixelPoint at, MouseKeys keys) {
  ++leftTurns_;
  const unsigned closings = closings_;
  const bool endsBand = left_ && !left_->holds && isBandMode();
  const bool zooms = mode_.value() == MouseMode::kRectangle;
  const bool isClick = std::exchange(clickAt_, std::nullopt).has_value();
  const std::optional<Press> press = std::exchange(left_, std::nullopt);
  host_.fireMouseUp(MouseButton::kLeft, view_->getPoint(at));
  releaseIfIdle();
  if (closings != closings_ || left_) {
    return;
  }
  if (press && press->holds) {
    if (view_->letGo(at)) {
      host_.repaint();
    }
    return;
  }
  if (endsBand) {
    endRubberBand({press->at, at}, zooms, keys);
  }
  if (isClick && closings == closings_) {
    view_->click(at);
  }
}

void Mouse2D::leftDoubleClick(PixelPoint at) {
  const unsigned closings = closings_;
  if (view_->doubleClick(at)) {
    host_.repaint();
  }
  if (!host_.hasSelectables()) {
    return;
  }
  const PickRecords records = host_.pickAt(at);
  if (closings == closings_) {
    host_.fireMouseSelectionDblClick(selectionOf(records));
  }
}

void Mouse2D::middleDown(PixelPoint at, MouseKeys keys) {
  if (!middleButtonActive()) {
    return;
  }
  mode_.beginPan();
  middle_ = Press{at, true, keys.middle()};
  beginDrag(at);
}

void Mouse2D::middleUp() {
  cancelMiddle();
  releaseIfIdle();
}

void Mouse2D::rightDown(PixelPoint at) {
  host_.fireMouseDown(MouseButton::kRight, view_->getPoint(at));
}

void Mouse2D::rightUp(PixelPoint at) {
  host_.fireMouseUp(MouseButton::kRight, view_->getPoint(at));
}

void Mouse2D::mouseMove(PixelPoint at, MouseKeys keys) {
  const unsigned closings = closings_;
  endUnheld(keys);
  if (closings != closings_) {
    return;
  }
  arrive(at);
  dragView(at);
  dragRubberBand(at);
  if (closings == closings_) {
    host_.fireMouseMove(view_->getPoint(at));
  }
  if (closings == closings_) {
    pickHovered(at, keys);
  }
}

void Mouse2D::mouseLeave() {
  const unsigned closings = closings_;
  leave();
  if (closings == closings_) {
    host_.fireMouseLeave();
  }
}

bool Mouse2D::wheel(int delta, PixelPoint at) {
  if (!middleButtonActive()) {
    return false;
  }
  if (view_->turnWheel(lastAt_.value_or(at), delta, wheel_)) {
    host_.repaint();
  }
  return true;
}

void Mouse2D::dragView(PixelPoint at) {
  const PixelPoint from = std::exchange(dragFrom_, at);
  if (clickAt_ &&
      (std::abs(at.x - clickAt_->x) > kClickReach || std::abs(at.y - clickAt_->y) > kClickReach)) {
    clickAt_.reset();
  }
  if (left_ && left_->holds) {
    if (!(at == from) && view_->dragHeld(from, at)) {
      host_.repaint();
    }
    return;
  }
  const bool pans = isHeld() && mode_.value() == MouseMode::kPan && !(at == from);
  if (pans && view_->pan(at.x - from.x, at.y - from.y)) {
    host_.repaint();
  }
}

void Mouse2D::endRubberBand(const RubberBand& band, bool zooms, MouseKeys keys) {
  const unsigned turn = leftTurns_;
  if (zooms) {
    view_->zoomTo(band);
    if (!maintainWindowZoom()) {
      mode_.endRectangle();
    }
  } else {
    selectWindow(band, keys);
  }
  if (leftTurns_ == turn) {
    host_.repaint();
  }
}

/// Does nothing for a rectangle less than a pixel wide or high.
void Mouse2D::selectWindow(const RubberBand& band, MouseKeys keys) {
  if (band.press.x == band.current.x || band.press.y == band.current.y) {
    return;
  }
  const unsigned closings = closings_;
  const Rect2 rectangle = view_->getRectangle(band);
  const PickRecords records = host_.pickWithin(band);
  if (closings == closings_) {
    host_.fireWindowSelection(keys.key(), rectangle, records.allNames());
  }
}

void Mouse2D::pickPressed(PixelPoint at, MouseKeys keys) {
  const unsigned closings = closings_;
  if (!host_.hasSelectables()) {
    return;
  }
  const Point point = view_->getPoint(at);
  const PickedNames names = selectionOf(host_.pickAt(at));
  if (closings == closings_) {
    host_.fireMouseSelection(names);
  }
  if (closings == closings_) {
    host_.fireMouseSelection2(keys.key(), point, names);
  }
}

void Mouse2D::pickHovered(PixelPoint at, MouseKeys keys) {
  const unsigned closings = closings_;
  if (!beginHover(at, keys)) {
    return;
  }
  const Point point = view_->getPoint(at);
  const PickedNames names = host_.pickAt(at).nearestNames();
  if (closings == closings_) {
    host_.fireMouseOn(names);
  }
  if (closings == closings_) {
    host_.fireMouseOn2(keys.key(), point, names);
  }
}

}  // namespace zyn
