#pragma once

#include <vector>

#include "support/Pickable_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {

/// A 3D view along -Z that shows x from -10 to 10 and y from -5 to 5, at 20 pixels a unit.
class TopView : public View3DHost {
 public:
  TopView() {
    addBox({-10, 10, -5, 5, -5, 5});
    require(get()->initView(0), "initView");
    require(get()->VueXYp(0), "VueXYp");
  }

  /// Adds an object, which can be picked.
  void addPickable(IDispatch* object) {
    require(get()->Add(object, 0), "Add");
    require(get()->AddSelection(object), "AddSelection");
    paint();
  }

  static int column(double x) { return static_cast<int>(200 + 20 * x); }
  static int row(double y) { return static_cast<int>(100 - 20 * y); }

  /// What lies under the mouse at a point of the plane.
  std::vector<long> pick(double x, double y) const {
    _variant_t hit;
    require(get()->getSelectionUnderMouse(column(x), row(y), &hit), "getSelectionUnderMouse");
    return namesIn(hit);
  }
  /// What lies in a rectangle, wholly or in part.
  std::vector<long> within(double x1, double y1, double x2, double y2, bool whole) const {
    _variant_t found;
    require(
        queryFor<IZYNVue3D2>(get())->getSelectionRectangle(
            column(x1), row(y1), column(x2), row(y2), whole ? VARIANT_TRUE : VARIANT_FALSE, &found),
        "getSelectionRectangle");
    return namesIn(found);
  }
};

}  // namespace zyn::test
