#include "objects/dimension/CotePainter_gl.h"

#include "core/VectorMath.h"
#include "glcontext/BorrowedState_gl.h"
#include "glcontext/RasterImage_gl.h"
#include "glcontext/StateGuards_gl.h"
#include "glcontext/StateQuery_gl.h"
#include "objects/text/TextPainter_gl.h"

namespace zyn {

namespace {

constexpr GLfloat kLineWidth = 1.0F;
constexpr GLfloat kEdgeWidth = 0.5F;  ///< of the smooth edges of arrows

/// Whatever the owner of the context does with what it draws, a dimension is drawn plainly.
void setPlainState(const Colour4& colour) {
  for (const GLenum capability :
       GLNames{GL_ALPHA_TEST, GL_COLOR_LOGIC_OP, GL_COLOR_MATERIAL, GL_CULL_FACE, GL_DEPTH_TEST,
               GL_FOG, GL_LIGHTING, GL_LINE_SMOOTH, GL_LINE_STIPPLE, GL_POLYGON_SMOOTH,
               GL_POLYGON_STIPPLE, GL_TEXTURE_1D, GL_TEXTURE_2D}) {
    glDisable(capability);
  }
  glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glLineWidth(kLineWidth);
  glColor4fv(colour.data());
}

void addVertex(const Point& point) { glVertex3d(point.x, point.y, point.z); }

template <class Points>
void draw(GLenum mode, const Points& points) {
  glBegin(mode);
  for (const Point& point : points) {
    addVertex(point);
  }
  glEnd();
}

/// Straight lines along the pixels' rows and columns are sharp as they are.
void drawLine(const CoteLine& line) {
  setEnabled(GL_LINE_SMOOTH, line.isSlanted);
  draw(GL_LINES, std::array{line.from, line.to});
}

void drawArrow(const CoteArrow& arrow) {
  draw(GL_TRIANGLES, arrow);
  draw(GL_LINE_LOOP, arrow);
}

/// The matrix that puts a text drawn from the origin along x, an em a unit, where it belongs.
GlMatrix matrixOf(const PlacedText& text) {
  const Vecteur& x = text.right;
  const Vecteur& y = text.up;
  const Vecteur z = 1 / y.norm() * cross(x, y);
  const Point& o = text.origin;
  return {x.x, x.y, x.z, 0, y.x, y.y, y.z, 0, z.x, z.y, z.z, 0, o.x, o.y, o.z, 1};
}

void drawPlacedText(const PlacedText& placed, const CGLFontContext& fonts, std::string_view text) {
  const PushedMatrix modelview(GL_MODELVIEW);
  glMultMatrixd(matrixOf(placed).data());
  if (placed.isInModel) {
    drawGlyphs(fonts, text);
  } else {
    drawUprightGlyphs(fonts, text);
  }
}

void drawPlacedPicture(const PlacedPicture& placed, const PixelImage& picture) {
  const Point& at = placed.at;
  if (moveRasterTo(at.x, at.y, at.z, placed.offset.x, placed.offset.y)) {
    drawImage(picture);
  }
}

void drawLines(const CoteLayout& layout) {
  for (const CoteLine& line : layout.lines) {
    drawLine(line);
  }
  glEnable(GL_LINE_SMOOTH);
  glLineWidth(kEdgeWidth);
  for (const CoteArrow& arrow : layout.arrows) {
    drawArrow(arrow);
  }
}

/// Names what is drawn within the scope, a part of the dimension with this name of its own.
SelectionNames namesOf(const CoteNames& names, std::optional<std::int32_t> own = std::nullopt) {
  const std::int32_t name = names.whole < 0 ? names.whole : own.value_or(names.whole);
  return {names.type, name, names.pushType};
}

void drawEnd(const std::vector<Quad>& grips, const SelectionNames&) {
  for (const Quad& grip : grips) {
    draw(GL_POLYGON, grip);
  }
}

void drawContentCover(const CoteLayout& layout, const SelectionNames&) {
  if (layout.text) {
    draw(GL_POLYGON, layout.text->corners);
  }
  if (layout.picture) {
    draw(GL_POLYGON, layout.picture->corners);
  }
}

void drawLineCovers(const CoteLayout& layout, const SelectionNames&) {
  for (const CoteLine& line : layout.lines) {
    draw(GL_POLYGON, line.cover);
  }
}

}  // namespace

void drawCote(const CoteLayout& layout, const Colour4& colour, const CGLFontContext& fonts,
              std::string_view text, const PixelImage* picture) {
  setPlainState(colour);
  drawLines(layout);
  if (layout.text) {
    drawPlacedText(*layout.text, fonts, text);
  }
  if (layout.picture && picture) {
    drawPlacedPicture(*layout.picture, *picture);
  }
}

void drawCoteCover(const CoteLayout& layout, const Colour4& colour, const CoteNames& names) {
  setPlainState(colour);
  drawContentCover(layout, namesOf(names));
  drawEnd(layout.grips[0], namesOf(names, names.first));
  drawEnd(layout.grips[1], namesOf(names, names.second));
  drawLineCovers(layout, namesOf(names));
}

}  // namespace zyn
