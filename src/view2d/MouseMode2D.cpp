#include "view2d/MouseMode2D.h"

namespace zyn {

void MouseMode2D::set(std::int32_t value) {
  // A pan that the middle button holds is not a mode to return to.
  if (value_ != kZoomRectangle && !panning_) {
    previous_ = value_;
  }
  panning_ = false;
  value_ = value;
}

void MouseMode2D::endZoom(bool maintain) {
  if (value_ == kZoomRectangle && !maintain) {
    value_ = previous_;
  }
}

void MouseMode2D::beginPan() {
  if (!panning_) {
    previous_ = value_;
    value_ = kPan;
    panning_ = true;
  }
}

void MouseMode2D::endPan() {
  if (panning_) {
    panning_ = false;
    value_ = previous_;
  }
}

}  // namespace zyn
