#pragma once

#include "com/control/ActiveWindow_com.h"

namespace zyn {

/// While it lives the window is not painted; what asks for it meanwhile is painted afterwards.
class PaintPause {
 public:
  explicit PaintPause(ActiveWindow& window) noexcept
      : window_(window), scope_(window.paintPause()) {}
  ~PaintPause() {
    scope_.end();
    if (!isNested()) {
      window_.resumePainting();
    }
  }
  PaintPause(const PaintPause&) = delete;
  PaintPause& operator=(const PaintPause&) = delete;

  /// Whether painting was paused before.
  bool isNested() const noexcept { return scope_.isNested(); }

 private:
  ActiveWindow& window_;
  RunningScope::Guard scope_;
};

}  // namespace zyn
