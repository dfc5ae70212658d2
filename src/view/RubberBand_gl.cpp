#include "view/RubberBand_gl.h"

#include <algorithm>
#include <cmath>

#include "glcontext/StateGuards_gl.h"
#include "glcontext/gl_api.h"

namespace zyn {

namespace {

/// Four pixels of a screen black, four white.
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

void setPlainLines(double width) {
  glDisable(GL_LIGHTING);
  glDisable(GL_DEPTH_TEST);
  glDisable(GL_LINE_SMOOTH);
  glDisable(GL_LINE_STIPPLE);
  glLineWidth(static_cast<GLfloat>(width));
}

}  // namespace

void drawRubberBand(const RubberBand& band, double pixelScale) {
  GLint viewport[4] = {};
  glGetIntegerv(GL_VIEWPORT, viewport);
  const PushedAttributes attributes(GL_ALL_ATTRIB_BITS);
  const PushedMatrix projection(GL_PROJECTION);
  glLoadIdentity();
  glOrtho(0, viewport[2], 0, viewport[3], -1, 1);
  const PushedMatrix modelview(GL_MODELVIEW);
  glLoadIdentity();
  setPlainLines(pixelScale);
  glColor3f(1, 1, 1);
  drawOutline(band, viewport[3]);
  glEnable(GL_LINE_STIPPLE);
  glLineStipple(std::max(1, static_cast<GLint>(std::lround(pixelScale))), kDashes);
  glColor3f(0, 0, 0);
  drawOutline(band, viewport[3]);
}

}  // namespace zyn
