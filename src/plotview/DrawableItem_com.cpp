#include "plotview/DrawableItem_com.h"

#include "scene/measureScene_com.h"

namespace zyn {

void DrawableItem::measure() { bounds_ = measureScene(list_); }

/// Only traces have other bounds on logarithmic axes: other objects are in coordinates of the axes.
std::optional<Box3> DrawableItem::extent(const AxisLogs& logs) {
  ISceneObject* const own = list_.head()->get()->own;
  return own ? own->boundsOn(logs) : bounds_;
}

}  // namespace zyn
