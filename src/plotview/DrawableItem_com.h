#pragma once

#include <optional>

#include "plot/PlotItem.h"
#include "scene/CListTrace_com.h"

namespace zyn {

/// A drawable object as what a graph shows: it draws itself into a rendering context, in
/// coordinates of the axes.
class DrawableItem final : public PlotItem {
 public:
  /// `owner` is told of its changes. Throws what CListTrace::add throws.
  DrawableItem(IDispatch* object, SceneWatcher& owner) : list_(&owner, true) {
    list_.add(object, 0);
    measure();
  }

  std::optional<Box3> extent(const AxisLogs& logs) override;
  void draw(const PlotPlace&, const BarPlace&, const DrawColour&, DrawnLayer&) override {}

  CListTrace& list() { return list_; }

  /// Asks the object for its box again.
  void measure();

 private:
  CListTrace list_;
  std::optional<Box3> bounds_;
};

}  // namespace zyn
