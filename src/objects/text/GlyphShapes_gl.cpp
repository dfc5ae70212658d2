#include "objects/text/GlyphShapes_gl.h"

#include <cstddef>

namespace zyn {

namespace {

constexpr GLsizei kLists = 256;

void draw(GLenum mode, const std::vector<PlanePoint>& points, double left) {
  glBegin(mode);
  for (const PlanePoint& point : points) {
    glVertex2d(left + point.x, point.y);
  }
  glEnd();
}

void drawFilled(const GlyphShape& glyph, double left) { draw(GL_TRIANGLES, glyph.filled, left); }

void drawOutline(const GlyphShape& glyph, double left) {
  for (const Contour& contour : glyph.contours) {
    draw(GL_LINE_LOOP, contour, left);
  }
}

using DrawGlyph = void (*)(const GlyphShape& glyph, double left);

GLuint compile(const GlyphShapes& shapes, const FontMetrics& metrics, DrawGlyph drawGlyph) {
  const GLuint first = glGenLists(kLists);
  if (first == 0) {
    return 0;
  }
  GLuint list = first;
  for (std::size_t code = 0; code < shapes.size(); ++code, ++list) {
    glNewList(list, GL_COMPILE);
    drawGlyph(shapes[code], 0);
    glTranslatef(metrics.glyphs[code].cellIncX, metrics.glyphs[code].cellIncY, 0);
    glEndList();
  }
  return first;
}

void drawText(const GlyphShapes& shapes, const FontMetrics& metrics, std::string_view text,
              DrawGlyph drawGlyph) {
  double left = 0;
  for (const char character : text) {
    const auto code = static_cast<unsigned char>(character);
    drawGlyph(shapes[code], left);
    left += metrics.glyphs[code].cellIncX;
  }
}

}  // namespace

GLuint compileFilledGlyphs(const GlyphShapes& shapes, const FontMetrics& metrics) {
  return compile(shapes, metrics, drawFilled);
}

GLuint compileGlyphOutlines(const GlyphShapes& shapes, const FontMetrics& metrics) {
  return compile(shapes, metrics, drawOutline);
}

void drawFilledGlyphs(const GlyphShapes& shapes, const FontMetrics& metrics,
                      std::string_view text) {
  drawText(shapes, metrics, text, drawFilled);
}

void drawGlyphOutlines(const GlyphShapes& shapes, const FontMetrics& metrics,
                       std::string_view text) {
  drawText(shapes, metrics, text, drawOutline);
}

}  // namespace zyn
