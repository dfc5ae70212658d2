#pragma once

#include "com/control/ActiveWindow_com.h"

namespace zyn {

/// While it lives the window is not painted; what asks for it meanwhile is painted afterwards.
class PaintPause {
 public:
  explicit PaintPause(ActiveWindow& window) noexcept : window_(window) { window_.pausePainting(); }
  ~PaintPause() { window_.resumePainting(); }
  PaintPause(const PaintPause&) = delete;
  PaintPause& operator=(const PaintPause&) = delete;

 private:
  ActiveWindow& window_;
};

}  // namespace zyn
