#include "objects/scale/ScaleBarPainter_gl.h"

#include <array>

#include "glcontext/FrontState_gl.h"
#include "glcontext/Projection_gl.h"
#include "glcontext/StateGuards_gl.h"
#include "objects/scale/ScaleTexture_gl.h"
#include "objects/text/TextPainter_gl.h"

namespace zyn {

namespace {

constexpr double kDark = 0.1;
constexpr double kLight = 0.95;
constexpr double kHaloOpacity = 0.6;
constexpr double kGlyphLineWidth = 0.1;

/// Size in pixels of the picture of which the viewport shows a part.
PlanePoint pictureSize(const PicturePart& part) {
  std::array<GLdouble, 4> viewport{};
  glGetDoublev(GL_VIEWPORT, viewport.data());
  return {viewport[2] / (part.right - part.left), viewport[3] / (part.top - part.bottom)};
}

void setGrey(double level, double opacity) { glColor4d(level, level, level, opacity); }

void drawBox(const PixelBox& box) { glRectd(box.left, box.bottom, box.right, box.top); }

/// By places: the logarithms of values are equally spaced on the bar.
void drawColours(const PixelBox& box, ColourScale scale, bool isUpright, double opacity) {
  scale.isLogarithmic = false;
  scale.range = {0, 1};
  const ScaleTexels texels(scale);
  const ScaleTexture texture(texels);
  const auto corner = [&](bool isRight, bool isTop) {
    const bool isLast = isUpright ? isTop : isRight;
    glTexCoord2fv(texels.coordinateOf(isLast ? 1 : 0, 0).data());
    glVertex2d(isRight ? box.right : box.left, isTop ? box.top : box.bottom);
  };
  glColor4d(1, 1, 1, opacity);
  glBegin(GL_QUADS);
  corner(false, false);
  corner(true, false);
  corner(true, true);
  corner(false, true);
  glEnd();
}

/// A line within each edge of a box.
void drawFrame(const PixelBox& box, double line) {
  drawBox({box.left, box.right, box.bottom, box.bottom + line});
  drawBox({box.left, box.right, box.top - line, box.top});
  drawBox({box.left, box.left + line, box.bottom + line, box.top - line});
  drawBox({box.right - line, box.right, box.bottom + line, box.top - line});
}

void drawTexts(const BarLayout& layout, const CGLFontContext& fonts, PlanePoint shift) {
  for (const BarText& text : layout.texts) {
    TextPlacement placement;
    placement.position = {text.start.x + shift.x, text.start.y + shift.y, 0};
    placement.scale = layout.emHeight;
    if (text.shaped) {
      drawShapedText(fonts, *text.shaped, placement, kGlyphLineWidth, {});
    } else {
      drawText(fonts, text.text, placement, kGlyphLineWidth);
    }
  }
}

/// Around the texts, and a line around all else.
void drawHalo(const BarLayout& layout, const CGLFontContext* fonts) {
  drawFrame(layout.bar.shrunk(-layout.lineWidth), layout.lineWidth);
  for (const PixelBox& tick : layout.ticks) {
    drawBox(tick.shrunk(-layout.lineWidth));
  }
  if (fonts) {
    for (const PlanePoint& shift :
         {PlanePoint{-1, 0}, PlanePoint{1, 0}, PlanePoint{0, -1}, PlanePoint{0, 1}}) {
      drawTexts(layout, *fonts, layout.lineWidth * shift);
    }
  }
}

}  // namespace

void drawScaleBar(const ScaleBar& bar, const ColourScale& scale, const CGLFontContext* fonts,
                  const BarView& view) {
  const PlanePoint picture = pictureSize(view.part);
  const BarLayout layout =
      layOutBar(bar, scale, picture, view.pixelScale, fonts ? fonts->metrics() : FontMetrics());
  const FrontState state;
  glDisable(GL_SCISSOR_TEST);  // it has its place in the picture, beside the area of a plot too
  const PushedMatrix projection(GL_PROJECTION);
  loadOrthographic({0, 0, picture.x, picture.y, -1, 1}, view.part);
  const PushedMatrix modelView(GL_MODELVIEW);
  glLoadIdentity();
  setGrey(view.isOnDark ? kDark : kLight, kHaloOpacity * view.opacity);
  drawHalo(layout, fonts);
  drawColours(layout.bar, scale, bar.isUpright(), view.opacity);
  setGrey(view.isOnDark ? kLight : kDark, view.opacity);
  drawFrame(layout.bar, layout.lineWidth);
  for (const PixelBox& tick : layout.ticks) {
    drawBox(tick);
  }
  if (fonts) {
    drawTexts(layout, *fonts, {});
  }
}

}  // namespace zyn
