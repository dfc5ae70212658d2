#include "objects/text/LabelPainter_gl.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "glcontext/ModelView_gl.h"
#include "glcontext/RasterImage_gl.h"
#include "glcontext/StateGuards_gl.h"
#include "glcontext/ViewMeasures_gl.h"
#include "objects/text/TextPainter_gl.h"

namespace zyn {

namespace {

constexpr double kDimensionLineWidth = 1.0;
constexpr double kFineLineWidth = 0.5;

/// Where a label's text is drawn.
struct TextPlace {
  ModelView space;
  Point position;
  double pixel;  ///< units of the space
};

UnlitColour colourOf(const TextLabel& label, const LabelView& view) {
  return UnlitColour(label.r, label.g, label.b, view.opacity * label.alpha);
}

/// In the scope of the label's colour.
void setDepthTest(const TextLabel& label) {
  if (label.alwaysReadable) {
    glDisable(GL_DEPTH_TEST);
  }
}

/// A plane of unit axes, and how much longer they were in the model-view matrix.
struct UnscaledPlane {
  ModelView matrix;
  PlaneScale scale{matrix.normalize(0), matrix.normalize(1)};
};

/// Makes a point the origin of the current model-view matrix, where OpenGL can calculate with that.
bool startAt(const Point& origin, ModelView space) {
  space.moveTo(origin);
  const bool isUsable = space.isUsable();
  if (isUsable) {
    space.load();
  }
  return isUsable;
}

void drawBoxForSelection(const TextLabel& label, const TextBox& box, const TextPlacement& placement,
                         const ModelView& space) {
  const SelectionNames names(label.typeSelection, label.nomSelection, label.pushTypeSelection);
  drawTextBox(label.surround(box), placement, space);
}

/// Behind a text with this box, of which an em height is `em` pixels. It lies in the plane of the
/// text, which is to be seen on it, and so leaves the depth to be set afterwards.
void drawBackground(const TextLabel& label, const TextBox& box, const TextPlacement& placement,
                    double em, const LabelView& view, const ModelView& space) {
  const TextBackground& background = label.background;
  if (!label.hasBackground(box)) {
    return;
  }
  const PushedAttributes depth(GL_DEPTH_BUFFER_BIT);
  glDepthMask(GL_FALSE);
  const TextBox whole = label.surround(box);
  if (background.isFilled) {
    const UnlitColour colour(background.r, background.g, background.b,
                             view.opacity * background.alpha);
    drawTextBox(whole, placement, space);
  }
  if (background.isFramed) {
    drawTextFrame(whole, placement, view.pixelScale, view.pixelScale / em, space);
  }
}

/// So that what is drawn later and lies behind a background does not cover it.
void setDepthOfBackground(const TextLabel& label, const TextBox& box,
                          const TextPlacement& placement, const ModelView& space) {
  if (label.background.isFilled && label.hasBackground(box) && !label.alwaysReadable) {
    const PushedAttributes colours(GL_COLOR_BUFFER_BIT);
    glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    drawTextBox(label.surround(box), placement, space);
  }
}

/// A label's text as glyphs of the fonts, and where it is drawn.
struct OutlineText {
  OutlineText(const TextLabel& label, const CGLFontContext& fonts, const TextPlace& place,
              const LabelView& view)
      : text(label.shaped ? std::string() : label.shownText()),
        box(label.shaped ? label.shaped->box(label.line(fonts.metrics()))
                         : measureText(fonts.metrics(), text, label.line(fonts.metrics()))),
        em(label.emHeight(box)),
        placement{place.position, anchorOf(box, label.reference), place.pixel * em,
                  label.alwaysReadable, view.axes} {}

  std::string text;  ///< none where it is shaped
  TextBox box;
  double em;
  TextPlacement placement;
};

void drawOutlineText(const TextLabel& label, const CGLFontContext& fonts, const TextPlace& place,
                     const LabelView& view, int mode) {
  const auto [text, box, em, placement] = OutlineText(label, fonts, place, view);
  if (mode < 0) {
    drawBoxForSelection(label, box, placement, place.space);
    return;
  }
  drawBackground(label, box, placement, view.pixelScale * em, view, place.space);
  const double lineWidth = kGlyphLineWidth * view.pixelScale;
  if (label.shaped) {
    drawShapedText(fonts, *label.shaped, placement, lineWidth, place.space);
  } else {
    drawText(fonts, text, placement, lineWidth, place.space);
  }
  setDepthOfBackground(label, box, placement, place.space);
}

void drawDigits(const TextLabel& label, CGLFontContext& fonts, int size, const TextPlace& place,
                const LabelView& view, int mode) {
  const TextBox box = label.digitBox(size);
  const PlanePoint anchor = anchorOf(box, label.reference);
  const TextPlacement placement{place.position, anchor, place.pixel, true};
  if (mode < 0) {
    drawBoxForSelection(label, box, placement, place.space);
    return;
  }
  drawBackground(label, box, placement, 1, view, place.space);
  if (!isRecording()) {
    fonts.buildDigits();
  }
  const PushedAttributes rasterPosition(GL_CURRENT_BIT);
  const PushedMatrix matrix(GL_MODELVIEW);
  if (startAt(place.position, place.space) && moveRasterTo(0, 0, 0, -anchor.x, -anchor.y)) {
    drawDigitText(fonts, size, label.shownText());
  }
}

void setLines(bool smooth, double width) {
  setEnabled(GL_LINE_SMOOTH, smooth);
  if (smooth) {
    glHint(GL_LINE_SMOOTH_HINT, GL_DONT_CARE);
  }
  glLineWidth(static_cast<GLfloat>(width));
}

/// Draws points of a dimension about one of them, near which single precision is enough.
class DimensionPoints {
 public:
  DimensionPoints(const DimensionShape& shape, const ModelView& space)
      : origin_(shape.lines.back().from), visible_(startAt({origin_.x, origin_.y, 0}, space)) {}

  bool areVisible() const { return visible_; }
  void draw(const PlanePoint& point) const { glVertex2d(point.x - origin_.x, point.y - origin_.y); }

 private:
  PushedMatrix matrix_{GL_MODELVIEW};
  PlanePoint origin_;
  bool visible_;
};

void drawArrow(const DimensionPoints& points, const Arrow& arrow) {
  for (const GLenum kind : GLNames{GL_TRIANGLES, GL_LINE_LOOP}) {
    glBegin(kind);
    for (const PlanePoint& corner : arrow) {
      points.draw(corner);
    }
    glEnd();
  }
}

void drawLines(const DimensionPoints& points, const DimensionShape& shape) {
  glBegin(GL_LINES);
  for (const Segment& line : shape.lines) {
    points.draw(line.from);
    points.draw(line.to);
  }
  glEnd();
}

/// Smooth where the glyphs are, but for the straight lines of a dimension along an axis.
void drawDimension(const DimensionShape& shape, const ModelView& space, bool smooth,
                   double pixelScale) {
  const DimensionPoints points(shape, space);
  if (!points.areVisible()) {
    return;
  }
  const PushedAttributes attributes(GL_LINE_BIT | GL_HINT_BIT);
  if (smooth) {
    setLines(true, kFineLineWidth * pixelScale);
  }
  if (shape.alongAxis) {
    setLines(false, kDimensionLineWidth * pixelScale);
  }
  drawLines(points, shape);
  if (smooth) {
    setLines(true, kFineLineWidth * pixelScale);
  }
  for (const Arrow& arrow : shape.arrows) {
    drawArrow(points, arrow);
  }
}

bool moveLabel(TextLabel& label, const DimensionShape& shape, PlaneScale scale) {
  const double x = shape.text.x / scale.x;
  const double y = shape.text.y / scale.y;
  const bool moved = x != label.position.x || y != label.position.y;
  label.position.x = x;
  label.position.y = y;
  label.reference = shape.reference;
  return moved;
}

TextPlace placeInPlane(const TextLabel& label, const UnscaledPlane& plane, double pixel) {
  return {
      plane.matrix, {label.position.x * plane.scale.x, label.position.y * plane.scale.y, 0}, pixel};
}

TextPlace placeInSpace(const TextLabel& label, const ModelView& space, double pixel,
                       const GlMatrix* perspective) {
  const double nearness = perspective ? perspectiveScale(*perspective, space, label.position) : 1.0;
  return {space, label.position, pixel * nearness};
}

/// The colour and the matrix mode in which a label of a 2D view is drawn, for a scope.
class PlaneScope {
 public:
  PlaneScope(const TextLabel& label, const LabelView& view) : colour_(colourOf(label, view)) {}

 private:
  /// Of its own: Mesa does not give back what is set first in an inner scope.
  struct MatrixMode {
    MatrixMode() { glMatrixMode(GL_MODELVIEW); }
    PushedAttributes saved{GL_TRANSFORM_BIT};
  };
  MatrixMode matrixMode_;
  UnlitColour colour_;
};

/// Leaves the depth test as it was.
bool drawInPlane(TextLabel& label, CGLFontContext& fonts, const LabelView& view, int mode) {
  const UnscaledPlane plane{ModelView()};
  if (!plane.matrix.isUsable()) {
    return false;
  }
  const PlaneScope scope(label, view);
  const double screenPixel = pixelLength(view.height);
  const double pixel = screenPixel * view.pixelScale;
  bool moved = false;
  if (const auto dimension = layOutDimension(label.dimension, pixel, plane.scale)) {
    moved = moveLabel(label, *dimension, plane.scale);
    if (mode >= 0) {
      drawDimension(*dimension, plane.matrix, fonts.smoothsEdges(), view.pixelScale);
    }
  }
  setDepthTest(label);
  if (const int size = label.digitSize(view.pixelScale)) {
    drawDigits(label, fonts, size, placeInPlane(label, plane, screenPixel), view, mode);
  } else {
    drawOutlineText(label, fonts, placeInPlane(label, plane, pixel), view, mode);
  }
  return moved;
}

/// False where the text has to be drawn by itself.
bool joinAt(const TextPlace& place, const TextLabel& label, TextRun& run, const LabelView& view) {
  const OutlineText outline(label, *run.scene()->fonts, place, view);
  const auto plane = textPlane(outline.placement, place.space);
  const Float4 colour = {saturatedFloat(label.r), saturatedFloat(label.g), saturatedFloat(label.b),
                         saturatedFloat(view.opacity * label.alpha)};
  return plane && run.add(outline.text, *plane, colour);
}

Joining joinInSpace(const TextLabel& label, TextRun& run, const LabelView& view) {
  const TextRun::Scene& scene = *run.scene();
  const GlMatrix* const perspective = scene.shown.perspective ? &scene.stage.projection : nullptr;
  const TextPlace place =
      placeInSpace(label, scene.space, scene.pixel * view.pixelScale, perspective);
  return {.hasJoined = joinAt(place, label, run, view)};
}

Joining joinInPlane(TextLabel& label, TextRun& run, const LabelView& view) {
  const TextRun::Scene& scene = *run.scene();
  const UnscaledPlane plane{scene.space};
  if (!plane.matrix.isUsable()) {
    return {};
  }
  const double pixel = scene.pixel * view.pixelScale;
  const auto dimension = layOutDimension(label.dimension, pixel, plane.scale);
  Joining joining;
  joining.hasMoved = dimension && moveLabel(label, *dimension, plane.scale);
  joining.hasJoined = joinAt(placeInPlane(label, plane, pixel), label, run, view);
  if (joining.hasJoined && dimension) {
    const PlaneScope scope(label, view);
    glDisable(GL_DEPTH_TEST);
    drawDimension(*dimension, plane.matrix, scene.fonts->smoothsEdges(), view.pixelScale);
  }
  return joining;
}

/// What a selection pass draws for a label, about its position.
struct LabelRectangle {
  ScreenRectangle sides;  ///< in units of the eye's space
  bool facesViewer;
};

LabelRectangle rectangleOf(const TextLabel& label, LabelExtent& extent, const LabelView& view,
                           const PickQuery& query) {
  const double screenPixel =
      query.pixelLength(view.height) * std::max(0.0, query.volume.depthOf(label.position));
  const int digitSize = query.isFlat ? label.digitSize(view.pixelScale) : 0;
  const TextBox& box = extent.of(label, *query.fonts, digitSize);
  const double scale =
      digitSize != 0 ? screenPixel : screenPixel * view.pixelScale * label.emHeight(box);
  const PlanePoint anchor = anchorOf(box, label.reference);
  const TextBox whole = label.surround(box);
  return {{scale * (whole.left - anchor.x), scale * (whole.right - anchor.x),
           scale * (whole.bottom - anchor.y), scale * (whole.top - anchor.y)},
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

void drawLabel3D(const TextLabel& label, const CGLFontContext& fonts, const LabelView& view,
                 int mode) {
  {
    const UnlitColour colour = colourOf(label, view);
    setDepthTest(label);
    const GlMatrix projection = matrixState(GL_PROJECTION_MATRIX);
    const TextPlace place =
        placeInSpace(label, ModelView(), pixelLength(view.height) * view.pixelScale,
                     view.perspective ? &projection : nullptr);
    drawOutlineText(label, fonts, place, view, mode);
  }
  glEnable(GL_DEPTH_TEST);
}

bool drawLabel2D(TextLabel& label, CGLFontContext& fonts, const LabelView& view, int mode) {
  const bool moved = drawInPlane(label, fonts, view, mode);
  glEnable(GL_DEPTH_TEST);
  return moved;
}

bool mayJoinTexts(const TextLabel& label, bool isFlat, double pixelScale) {
  const bool isPlain = !label.shaped && !label.background.isFilled && !label.background.isFramed;
  return label.alwaysReadable && isPlain && !(isFlat && label.digitSize(pixelScale) != 0);
}

Joining joinTexts(TextLabel& label, TextRun& run, const LabelView& view, bool isFlat) {
  return isFlat ? joinInPlane(label, run, view) : joinInSpace(label, run, view);
}

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
  if (query.isMoved && !rectangle.facesViewer) {
    return true;  // it lies in a plane that the volume does not know
  }
  return rectangle.facesViewer ? query.volume.mayMeet(at, rectangle.sides)
                               : query.volume.mayMeet(inModel(
                                     at, rectangle.sides, unscaled(query, 0), unscaled(query, 1)));
}

}  // namespace zyn
