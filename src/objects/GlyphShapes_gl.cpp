#include "objects/GlyphShapes_gl.h"

#include "glcontext/gl_api.h"

namespace zyn {

namespace {

constexpr GLfloat kOutlineWidth = 0.1F;

void draw(GLenum mode, const std::vector<PlanePoint>& points, double left) {
  glBegin(mode);
  for (const PlanePoint& point : points) {
    glVertex2d(left + point.x, point.y);
  }
  glEnd();
}

/// Calls `drawGlyph` for each character with where it starts.
template <class Draw>
void walk(const GlyphShapes& shapes, const FontMetrics& metrics, std::string_view text,
          Draw drawGlyph) {
  double left = 0;
  for (const char character : text) {
    const auto code = static_cast<unsigned char>(character);
    drawGlyph(shapes[code], left);
    left += metrics.glyphs[code].cellIncX;
  }
}

}  // namespace

void drawShapes(const GlyphShapes& shapes, const FontMetrics& metrics, std::string_view text) {
  walk(shapes, metrics, text, [](const GlyphShape& glyph, double left) {
    draw(GL_TRIANGLES, glyph.filled.corners, left);
  });
  glEnable(GL_LINE_SMOOTH);
  glLineWidth(kOutlineWidth);
  walk(shapes, metrics, text, [](const GlyphShape& glyph, double left) {
    for (const Contour& contour : glyph.contours) {
      draw(GL_LINE_LOOP, contour, left);
    }
  });
}

}  // namespace zyn
