#include "objects/text/GlyphShapes_gl.h"

#include <array>
#include <cstddef>
#include <deque>
#include <memory>
#include <new>

#include "glcontext/gl_api.h"

namespace zyn {

namespace {

struct DeleteTessellator {
  void operator()(GLUtesselator* tessellator) const { gluDeleteTess(tessellator); }
};
using UniqueTessellator = std::unique_ptr<GLUtesselator, DeleteTessellator>;

using Vertex = std::array<GLdouble, 3>;

/// What the callbacks work on.
struct Work {
  std::deque<Vertex> vertices;  ///< the tessellator points to them
  Triangles result;
  bool isOutOfMemory = false;

  GLdouble* add(GLdouble x, GLdouble y) { return vertices.emplace_back(Vertex{x, y, 0}).data(); }

  /// Nothing may be thrown through the tessellator.
  template <class Body>
  void guarded(Body body) noexcept {
    try {
      body();
    } catch (const std::bad_alloc&) {
      isOutOfMemory = true;
    }
  }
};

Work& workOf(void* data) { return *static_cast<Work*>(data); }

void takeVertex(void* vertex, void* data) {
  Work& work = workOf(data);
  const auto* at = static_cast<const GLdouble*>(vertex);
  work.guarded([&] { work.result.push_back({at[0], at[1]}); });
}

void combine(const GLdouble at[3], void* const[4], const GLfloat[4], void** vertex, void* data) {
  Work& work = workOf(data);
  *vertex = work.vertices.front().data();  // any, where there is no memory for the right one
  work.guarded([&] { *vertex = work.add(at[0], at[1]); });
}

/// Set so that single triangles come, not strips and fans.
void ignoreEdgeFlag(GLboolean, void*) {}

template <class Function>
void setCallback(GLUtesselator* tessellator, GLenum which, Function* function) {
  gluTessCallback(tessellator, which, reinterpret_cast<void (*)()>(function));
}

void tessellate(GLUtesselator* tessellator, const std::vector<Contour>& contours, Work& work) {
  gluTessBeginPolygon(tessellator, &work);
  for (const Contour& contour : contours) {
    gluTessBeginContour(tessellator);
    for (const PlanePoint& point : contour) {
      GLdouble* vertex = work.add(point.x, point.y);
      gluTessVertex(tessellator, vertex, vertex);
    }
    gluTessEndContour(tessellator);
  }
  gluTessEndPolygon(tessellator);
}

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

Triangles tessellate(const std::vector<Contour>& contours) {
  const UniqueTessellator tessellator(gluNewTess());
  if (!tessellator) {
    throw std::bad_alloc();
  }
  gluTessProperty(tessellator.get(), GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_NONZERO);
  gluTessNormal(tessellator.get(), 0, 0, 1);
  setCallback(tessellator.get(), GLU_TESS_VERTEX_DATA, takeVertex);
  setCallback(tessellator.get(), GLU_TESS_COMBINE_DATA, combine);
  setCallback(tessellator.get(), GLU_TESS_EDGE_FLAG_DATA, ignoreEdgeFlag);
  Work work;
  tessellate(tessellator.get(), contours, work);
  if (work.isOutOfMemory) {
    throw std::bad_alloc();
  }
  return work.result;
}

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
