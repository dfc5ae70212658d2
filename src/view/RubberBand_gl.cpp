#include "view/RubberBand_gl.h"

#include "glcontext/StateGuards_gl.h"
#include "glcontext/gl_api.h"

namespace zyn {

namespace {

/// Four pixels black, four white.
constexpr GLushort kDashes = 0x0F0F;

/// Window coordinates of the centre of a client pixel.
void vertex(int x, int y, int viewHeight) { glVertex2d(x + 0.5, viewHeight - (y + 0.5)); }

void drawOutline(const RubberBand& band, int viewHeight) {
  glBegin(GL_LINE_LOOP);
  vertex(band.press.x, band.press.y, viewHeight);
  vertex(band.current.x, band.press.y, viewHeight);
  vertex(band.current.x, band.current.y, viewHeight);
  vertex(band.press.x, band.current.y, viewHeight);
  glEnd();
}

void setPlainLines() {
  glDisable(GL_LIGHTING);
  glDisable(GL_DEPTH_TEST);
  glDisable(GL_LINE_SMOOTH);
  glDisable(GL_LINE_STIPPLE);
  glLineWidth(1);
}

}  // namespace

void drawRubberBand(const RubberBand& band) {
  GLint viewport[4] = {};
  glGetIntegerv(GL_VIEWPORT, viewport);
  const PushedAttributes attributes(GL_ALL_ATTRIB_BITS);
  const PushedMatrix projection(GL_PROJECTION);
  glLoadIdentity();
  glOrtho(0, viewport[2], 0, viewport[3], -1, 1);
  const PushedMatrix modelview(GL_MODELVIEW);
  glLoadIdentity();
  setPlainLines();
  glColor3f(1, 1, 1);
  drawOutline(band, viewport[3]);
  glEnable(GL_LINE_STIPPLE);
  glLineStipple(1, kDashes);
  glColor3f(0, 0, 0);
  drawOutline(band, viewport[3]);
}

}  // namespace zyn
