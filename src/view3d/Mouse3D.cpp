#include "view3d/Mouse3D.h"

#include <utility>

namespace zyn {

namespace {

/// Part of the client area's side that a distance in pixels makes.
float ratio(int pixels, int side) { return static_cast<float>(pixels) / static_cast<float>(side); }

/// What the wheel divides the view rectangle by.
float wheelFactor(int turn, int height) {
  return 1.0F - static_cast<float>(turn) / (5.0F * static_cast<float>(height));
}

}  // namespace

void MouseMode3D::set(std::int32_t value) {
  take(value);
  if (standIn_) {
    standIn_ = value;
  }
}

void Mouse3D::leftDown(PixelPoint at, MouseKeys keys) {
  const unsigned turn = ++leftTurns_;
  const unsigned closings = closings_;
  left_.reset();
  host_.fireMouseDown(MouseButton::kLeft, at);
  if (leftTurns_ != turn) {
    return;
  }
  const bool drags = view_.camera() != nullptr;
  view_.pushHistory();
  left_ = Press{at, drags, keys.left()};
  if (!drags) {
    return;
  }
  beginDrag(at);
  if (closings == closings_) {
    chooseCentre(at);
    pickPressed(at, keys);
  }
}

void Mouse3D::leftUp(PixelPoint at, MouseKeys keys) {
  ++leftTurns_;
  const unsigned closings = closings_;
  const bool selects = left_ && left_->drags && isBandMode();
  const bool once = mode_.isRectangle();
  const std::optional<Press> press = std::exchange(left_, std::nullopt);
  host_.fireMouseUp(MouseButton::kLeft, at);
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
    mode_.endRectangle();
  }
  host_.repaint();
}

void Mouse3D::middleDown(PixelPoint at, MouseKeys keys) {
  const unsigned turn = ++middleTurns_;
  cancelMiddle();
  host_.fireMouseDown(MouseButton::kMiddle, at);
  if (middleTurns_ != turn) {
    return;
  }
  middle_ = Press{at, true, keys.middle()};
  if (middleButtonActive()) {
    mode_.standIn(MouseMode::kPan);
  }
  beginDrag(at);
  chooseCentre(at);
}

void Mouse3D::middleUp(PixelPoint at) {
  ++middleTurns_;
  middle_.reset();
  host_.fireMouseUp(MouseButton::kMiddle, at);
  releaseIfIdle();
  if (!middle_) {
    mode_.endStandIn();
  }
}

void Mouse3D::rightDown(PixelPoint at) { host_.fireMouseDown(MouseButton::kRight, at); }

void Mouse3D::rightUp(PixelPoint at) { host_.fireMouseUp(MouseButton::kRight, at); }

void Mouse3D::mouseMove(PixelPoint at, MouseKeys keys) {
  const unsigned closings = closings_;
  endUnheld(keys);
  if (closings != closings_) {
    return;
  }
  followKeys(keys);
  arrive(at);
  dragCamera(at);
  dragRubberBand(at);
  if (closings == closings_) {
    pickHovered(at, keys);
  }
  if (closings == closings_) {
    host_.fireMouseMove(keys.moveKey(), at);
  }
}

void Mouse3D::wheel(int delta, PixelPoint at) {
  const ClientSize client = view_.clientSize();
  if (!view_.camera() || client.isEmpty()) {
    return;
  }
  const PixelPoint centre = lastAt_.value_or(at);
  view_.zoomAbout(centre.x, centre.y, wheelFactor(wheel_.turned(delta), client.height));
  host_.repaint();
}

void Mouse3D::followKeys(MouseKeys keys) {
  if (!middle_ || !middleButtonActive()) {
    return;
  }
  if (keys.control()) {
    mode_.standIn(MouseMode::kPan);
  } else {
    mode_.standIn(keys.shift() ? MouseMode3D::kZoom : MouseMode3D::kRotate);
  }
}

void Mouse3D::dragCamera(PixelPoint at) {
  const ClientSize client = view_.clientSize();
  if (!isNavigating() || !view_.camera() || client.isEmpty() || at == dragFrom_) {
    return;
  }
  if (mode_.value() < MouseMode::kPan || mode_.value() > MouseMode3D::kZoom) {
    return;
  }
  moveCamera(at, client);
  dragFrom_ = at;
  host_.repaint();
}

void Mouse3D::moveCamera(PixelPoint to, ClientSize client) {
  const float alongX = ratio(to.x - dragFrom_.x, client.width);
  const float alongY = ratio(dragFrom_.y - to.y, client.height);
  switch (mode_.value()) {
    case MouseMode::kPan:
      view_.translateH(-alongX * view_.camera()->width());
      view_.translateV(-alongY * view_.camera()->height());
      break;
    case MouseMode3D::kRotate:
      rotate(to, -alongX * 360.0F, -alongY * 360.0F);
      break;
    default:
      view_.zoom(1.0F - 3.0F * alongY);
      break;
  }
}

void Mouse3D::rotate(PixelPoint to, float across, float upwards) {
  switch (rotation_.mode) {
    case MouseRotation::kTable:
      view_.turn(turnCentre_, [=](CParamsVue3D& camera) { camera.turnTable(across, upwards); });
      break;
    case MouseRotation::kTrackball:
      view_.turn(turnCentre_,
                 [&](CParamsVue3D& camera) { camera.turnBall(dragFrom_, to, view_.clientSize()); });
      break;
    default:
      view_.turn(turnCentre_, [=](CParamsVue3D& camera) {
        camera.rotateH(across);
        camera.rotateV(upwards);
      });
      break;
  }
}

/// About what the drag that begins will turn the camera.
void Mouse3D::chooseCentre(PixelPoint press) {
  turnCentre_.reset();
  if (rotation_.centre == MouseRotation::kPoint) {
    turnCentre_ = rotation_.point;
  } else if (rotation_.centre == MouseRotation::kUnderMouse) {
    turnCentre_ = host_.surfaceAt(press);
    if (!turnCentre_) {
      turnCentre_ = view_.pointBeside(press);
    }
  }
}

void Mouse3D::pickPressed(PixelPoint at, MouseKeys keys) {
  const unsigned closings = closings_;
  if (!mode_.isSelection() || !host_.hasSelectables()) {
    return;
  }
  const PickRecords records = host_.pickAt(at);
  if (closings == closings_) {
    host_.fireMouseSelection(keys.key(), at, selectionOf(records));
  }
}

void Mouse3D::selectWindow(PixelPoint press, PixelPoint release, MouseKeys keys) {
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

void Mouse3D::pickHovered(PixelPoint at, MouseKeys keys) {
  const unsigned closings = closings_;
  if (!view_.camera() || !beginHover(at, keys)) {
    return;
  }
  const PickRecords records = host_.pickAt(at);
  if (closings == closings_) {
    host_.fireMouseOn(keys.moveKey(), at, records.nearestNames());
  }
}

}  // namespace zyn
