#include "objects/text/LabelPick_gl.h"

#include <cmath>

namespace zyn {

namespace {

/// What a selection pass draws for a label, about its position.
struct LabelRectangle {
  ScreenRectangle sides;  ///< in units of the eye's space
  bool facesViewer;
};

LabelRectangle rectangleOf(const TextLabel& label, LabelExtent& extent, const LabelView& view,
                           const PickQuery& query) {
  const double screenPixel = query.pixelLength(view.height);
  const int digitSize = query.isFlat ? label.digitSize(view.pixelScale) : 0;
  const TextBox& box = extent.of(label, *query.fonts, digitSize);
  const double scale =
      digitSize != 0 ? screenPixel : screenPixel * view.pixelScale * label.emHeight(box);
  const PlanePoint anchor = anchorOf(box, label.reference);
  return {{scale * (box.left - anchor.x), scale * (box.right - anchor.x),
           scale * (box.bottom - anchor.y), scale * (box.top - anchor.y)},
          label.alwaysReadable || digitSize != 0};
}

/// Model units for a unit of the eye's space, along an axis of the plane in which a label lies.
double unscaled(const PickQuery& query, std::size_t axis) {
  const double length = query.isFlat ? query.volume.axisLength(axis) : 1.0;
  return length == 0 ? 1.0 : 1 / length;
}

Box3 inModel(const Point& at, const ScreenRectangle& sides, double x, double y) {
  return {at.x + x * sides.left,
          at.x + x * sides.right,
          at.y + y * sides.bottom,
          at.y + y * sides.top,
          at.z,
          at.z};
}

}  // namespace

const TextBox& LabelExtent::of(const TextLabel& label, const CGLFontContext& fonts, int digitSize) {
  if (!box_ || glyphs_ != fonts.glyphsNumber() || digitSize_ != digitSize) {
    box_ = digitSize != 0 ? label.digitBox(digitSize) : label.box(fonts.metrics());
    glyphs_ = fonts.glyphsNumber();
    digitSize_ = digitSize;
  }
  return *box_;
}

bool mayPickLabel(const TextLabel& label, LabelExtent& extent, const LabelView& view,
                  const PickQuery& query) {
  if (query.isFlat && label.dimension.isDimension()) {
    return true;  // drawing it places it
  }
  const LabelRectangle rectangle = rectangleOf(label, extent, view, query);
  Point at = label.position;
  if (query.isFlat) {
    at.z = 0;
  }
  return rectangle.facesViewer ? query.volume.mayMeet(at, rectangle.sides)
                               : query.volume.mayMeet(inModel(
                                     at, rectangle.sides, unscaled(query, 0), unscaled(query, 1)));
}

}  // namespace zyn
