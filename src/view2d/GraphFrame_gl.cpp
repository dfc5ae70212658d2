#include "view2d/GraphFrame_gl.h"

#include "glcontext/RasterImage_gl.h"
#include "glcontext/StateGuards_gl.h"
#include "objects/text/CGLFontContext_gl.h"
#include "objects/text/TextPainter_gl.h"
#include "view2d/FrameLayout.h"

namespace zyn {

namespace {

/// Within a display list nothing may be read back and kept: it would be what was there when the
/// list was compiled.
class CompiledList {
 public:
  explicit CompiledList(GLuint list) { glNewList(list, GL_COMPILE); }
  ~CompiledList() { glEndList(); }
  CompiledList(const CompiledList&) = delete;
  CompiledList& operator=(const CompiledList&) = delete;
};

void setColour(const GraphColour& colour, double alpha = 1.0) {
  glColor4d(colour[0], colour[1], colour[2], alpha);
}

void vertex(const PlanePoint& point) { glVertex2d(point.x, point.y); }

void paint(const FrameLayout::LineGroup& group, double pixelScale) {
  glLineWidth(static_cast<GLfloat>(group.width * pixelScale));
  setColour(group.colour, group.alpha);
  glBegin(GL_LINES);
  for (const FrameLayout::Line& line : group.lines) {
    vertex(line.from);
    vertex(line.to);
  }
  glEnd();
}

void paint(const FrameLayout::Arrow& arrow) {
  glBegin(GL_TRIANGLES);
  for (const PlanePoint& corner : arrow) {
    vertex(corner);
  }
  glEnd();
}

void paintOutlines(const std::string& text, const PlanePoint& start, double emHeight,
                   const CGLFontContext& fonts) {
  const PushedMatrix modelview(GL_MODELVIEW);
  glTranslated(start.x, start.y, 0);
  glScaled(emHeight, emHeight, emHeight);
  drawGlyphs(fonts, text);
}

void paintDigits(const std::string& text, const PlanePoint& start, const LabelFont& font, int size,
                 const CGLFontContext& fonts) {
  if (font.outlines) {
    const double em = font.emHeight(size);
    paintOutlines(text, {start.x, start.y - em * font.outlines->digits.bottom}, em, fonts);
  } else {
    glRasterPos2d(start.x, start.y);
    drawDigitText(fonts, font.drawnSize(size), text);
  }
}

void paint(const PlacedLabel& label, const LabelFont& font, const CGLFontContext& fonts) {
  paintDigits(label.label, {label.box.left, label.box.bottom}, font, font.size, fonts);
  if (!label.exponent.empty()) {
    paintDigits(label.exponent, label.exponentStart, font, font.exponentSize, fonts);
  }
}

void paint(const PlacedTitle& title, const PixelImage& picture, double pixelScale,
           const CGLFontContext& fonts) {
  for (const PlacedTitle::Text& text : title.texts) {
    paintOutlines(text.text, text.start, text.scale, fonts);
  }
  if (title.picture) {
    glRasterPos2d(title.picture->x, title.picture->y);
    drawImage(picture, pixelScale);
  }
}

void paint(const FrameLayout& layout, const PixelImage& pictureX, const PixelImage& pictureY,
           double pixelScale, const CGLFontContext& fonts) {
  for (const FrameLayout::LineGroup& group : layout.lines) {
    paint(group, pixelScale);
  }
  setColour(layout.colour);
  for (const FrameLayout::Arrow& arrow : layout.arrows) {
    paint(arrow);
  }
  for (const PlacedLabel& label : layout.labels) {
    paint(label, layout.labelFont, fonts);
  }
  paint(layout.titleX, pictureX, pixelScale, fonts);
  paint(layout.titleY, pictureY, pixelScale, fonts);
}

GLuint compile(const FrameLayout& layout, const PixelImage& pictureX, const PixelImage& pictureY,
               const GraphPlacement& placement, const CGLFontContext& fonts) {
  const GLuint list = glGenLists(1);
  fonts.compileGlyphs();
  if (list != 0) {
    const CompiledList compiling(list);
    glScaled(placement.unitsPerPixelX, placement.unitsPerPixelY, 1);
    paint(layout, pictureX, pictureY, placement.pixelScale, fonts);
  }
  return list;
}

/// What the list changes, and what would change its picture.
constexpr GLbitfield kState = GL_COLOR_BUFFER_BIT | GL_CURRENT_BIT | GL_ENABLE_BIT | GL_LINE_BIT |
                              GL_LIST_BIT | GL_POLYGON_BIT;

void setPlainDrawing() {
  for (const GLenum capability : GLNames{GL_LIGHTING, GL_DEPTH_TEST, GL_CULL_FACE, GL_LINE_SMOOTH,
                                         GL_LINE_STIPPLE, GL_POLYGON_STIPPLE, GL_TEXTURE_2D}) {
    glDisable(capability);
  }
  glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
}

}  // namespace

GraphFrame::GraphFrame(const LinearGraph& graph, const GraphPlacement& placement,
                       const CGLFontContext& fonts)
    : list_(compile(layOutFrame(graph, placement, fonts.metrics()), graph.x.title.picture,
                    graph.y.title.picture, placement, fonts)),
      origin_(graph.x.min, graph.y.min, 0) {}

GraphFrame::GraphFrame(const LogLogGraph& graph, const GraphPlacement& placement,
                       const CGLFontContext& fonts)
    : list_(compile(layOutFrame(graph, placement, fonts.metrics()), graph.x.picture,
                    graph.y.picture, placement, fonts)),
      origin_(graph.x.min, graph.y.min, 0) {}

GraphFrame::~GraphFrame() { glDeleteLists(list_, 1); }

void GraphFrame::draw() const {
  const PushedAttributes attributes(kState);
  const PushedMatrix modelview(GL_MODELVIEW);
  setPlainDrawing();
  glCallList(list_);
}

}  // namespace zyn
