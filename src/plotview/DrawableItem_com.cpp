#include "plotview/DrawableItem_com.h"

#include <cmath>

#include "scene/measureScene_com.h"

namespace zyn {

void DrawableItem::measure() { bounds_ = measureScene(list_); }

/// Bounds of what a logarithm cannot show are left out whole: the object alone knows what is above.
std::optional<Box3> DrawableItem::extent(const AxisLogs& logs) {
  if (!list_.holdsOutside()) {
    bounds_ = list_.ownBounds();
  }
  if (!bounds_ || (logs.x && !(bounds_->xMin > 0)) || (logs.y && !(bounds_->yMin > 0))) {
    return std::nullopt;
  }
  Box3 box = *bounds_;
  if (logs.x) {
    box.xMin = std::log10(box.xMin);
    box.xMax = std::log10(box.xMax);
  }
  if (logs.y) {
    box.yMin = std::log10(box.yMin);
    box.yMax = std::log10(box.yMax);
  }
  return box;
}

}  // namespace zyn
