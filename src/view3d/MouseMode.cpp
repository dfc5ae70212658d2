#include "view3d/MouseMode.h"

namespace zyn {

void MouseMode::set(std::int32_t value) {
  if (!isOnce()) {
    previous_ = set_;
  }
  set_ = value;
  if (standIn_) {
    standIn_ = value;
  }
}

void MouseMode::endOnce() {
  if (isOnce()) {
    set_ = previous_;
  }
}

}  // namespace zyn
