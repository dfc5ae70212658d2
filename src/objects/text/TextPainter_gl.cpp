#include "objects/text/TextPainter_gl.h"

#include "glcontext/StateGuards_gl.h"
#include "objects/text/PixelTextPainter_gl.h"

namespace zyn {

namespace {

/// What the glyphs' lists and their smoothing change.
constexpr GLbitfield kTouchedState = GL_CURRENT_BIT | GL_ENABLE_BIT | GL_HINT_BIT | GL_LINE_BIT |
                                     GL_LIST_BIT | GL_POLYGON_BIT | GL_TRANSFORM_BIT;

bool mayCall(GLuint lists) { return isRendering() && glIsList(lists) != GL_FALSE; }

void callLists(GLuint base, std::string_view text) {
  const PushedMatrix start(GL_MODELVIEW);
  glListBase(base);
  glCallLists(static_cast<GLsizei>(text.size()), GL_UNSIGNED_BYTE, text.data());
}

/// Draws something in the plane of a text, if any of it can be seen.
template <class Body>
void drawInPlane(const TextPlacement& placement, const ModelView& space, const Body& body) {
  const auto plane = textPlane(placement, space);
  if (!plane) {
    return;
  }
  const PlaneState state(placement.axes);
  const PushedMatrix modelView(GL_MODELVIEW);
  plane->load();
  body();
}

void smoothLines(double width) {
  glEnable(GL_LINE_SMOOTH);
  glHint(GL_LINE_SMOOTH_HINT, GL_DONT_CARE);
  glLineWidth(static_cast<GLfloat>(width));
}

void drawAt(const PlanePoint& at, const std::vector<PlanePoint>& points) {
  for (const PlanePoint& point : points) {
    glVertex2d(at.x + point.x, at.y + point.y);
  }
}

void drawFilled(const ShapedText& text) {
  glBegin(GL_TRIANGLES);
  for (const PlacedGlyph& glyph : text.glyphs) {
    drawAt(glyph.at, glyph.shape->filled);
  }
  glEnd();
}

void drawOutlines(const ShapedText& text) {
  for (const PlacedGlyph& glyph : text.glyphs) {
    for (const Contour& contour : glyph.shape->contours) {
      glBegin(GL_LINE_LOOP);
      drawAt(glyph.at, contour);
      glEnd();
    }
  }
}

}  // namespace

std::optional<ModelView> textPlane(const TextPlacement& placement, ModelView space) {
  space.moveTo(placement.position);
  if (placement.facesViewer) {
    space.faceViewer();
  } else if (placement.axes) {
    space.alignWith(placement.axes->modelView);
  }
  space.scale(placement.scale);
  space.moveTo({-placement.anchor.x, -placement.anchor.y, 0});
  return placement.scale != 0 && space.isUsable() ? std::optional(space) : std::nullopt;
}

void drawGlyphs(const CGLFontContext& fonts, std::string_view text, double lineWidth) {
  const PushedAttributes attributes(kTouchedState);
  const GlyphShapes* const shapes = fonts.shapes();
  if (mayCall(fonts.filledLists())) {
    callLists(fonts.filledLists(), text);
  } else if (shapes) {
    drawFilledGlyphs(*shapes, fonts.metrics(), text);
  }
  if (!fonts.smoothsEdges()) {
    return;
  }
  smoothLines(lineWidth);
  if (mayCall(fonts.outlineLists())) {
    callLists(fonts.outlineLists(), text);
  } else if (shapes) {
    drawGlyphOutlines(*shapes, fonts.metrics(), text);
  }
}

void drawUprightGlyphs(const CGLFontContext& fonts, std::string_view text, double lineWidth) {
  if (!drawAsPixels(fonts, text, lineWidth)) {
    drawGlyphs(fonts, text, lineWidth);
  }
}

void drawText(const CGLFontContext& fonts, std::string_view text, const TextPlacement& placement,
              double lineWidth, const ModelView& space) {
  if (text.empty()) {
    return;
  }
  drawInPlane(placement, space, [&] {
    if (placement.facesViewer) {
      drawUprightGlyphs(fonts, text, lineWidth);
    } else {
      drawGlyphs(fonts, text, lineWidth);
    }
  });
}

void drawShapedText(const CGLFontContext& fonts, const ShapedText& text,
                    const TextPlacement& placement, double lineWidth, const ModelView& space) {
  drawInPlane(placement, space, [&] {
    const PushedAttributes attributes(kTouchedState);
    drawFilled(text);
    if (fonts.smoothsEdges()) {
      smoothLines(lineWidth);
      drawOutlines(text);
    }
  });
}

void drawTextBox(const TextBox& box, const TextPlacement& placement, const ModelView& space) {
  drawInPlane(placement, space, [&] {
    glBegin(GL_POLYGON);
    glVertex2d(box.left, box.bottom);
    glVertex2d(box.right, box.bottom);
    glVertex2d(box.right, box.top);
    glVertex2d(box.left, box.top);
    glEnd();
  });
}

// Lines, since polygons that are as thin as a pixel may fall between two. They are as much longer
// as they are thick, so that no corner is missing.
void drawTextFrame(const TextBox& box, const TextPlacement& placement, double lineWidth,
                   double thickness, const ModelView& space) {
  drawInPlane(placement, space, [&] {
    const PushedAttributes attributes(kTouchedState);
    glDisable(GL_LINE_SMOOTH);
    glDisable(GL_LINE_STIPPLE);
    glLineWidth(static_cast<GLfloat>(lineWidth));
    const double more = thickness / 2;
    glBegin(GL_LINES);
    for (const double y : {box.bottom, box.top}) {
      glVertex2d(box.left - more, y);
      glVertex2d(box.right + more, y);
    }
    for (const double x : {box.left, box.right}) {
      glVertex2d(x, box.bottom - more);
      glVertex2d(x, box.top + more);
    }
    glEnd();
  });
}

}  // namespace zyn
