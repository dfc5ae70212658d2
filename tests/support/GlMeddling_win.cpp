#include "support/GlMeddling_win.h"

#include <windows.h>
// After windows.h:
#include <GL/gl.h>

#include <array>
#include <vector>

namespace zyn::test {

namespace {

GLfloat unit(Random& rng) { return static_cast<GLfloat>(rng.between(0, 1)); }

std::array<GLfloat, 4> colour(Random& rng) { return {unit(rng), unit(rng), unit(rng), unit(rng)}; }

GLenum face(Random& rng) {
  return rng.pick(std::array<GLenum, 3>{GL_FRONT, GL_BACK, GL_FRONT_AND_BACK});
}

GLenum comparison(Random& rng) {
  return rng.pick(std::array<GLenum, 4>{GL_ALWAYS, GL_LEQUAL, GL_GREATER, GL_NOTEQUAL});
}

void toggle(Random& rng) {
  const auto capability = rng.pick(std::array<GLenum, 16>{
      GL_LIGHTING, GL_COLOR_MATERIAL, GL_BLEND, GL_DEPTH_TEST, GL_CULL_FACE, GL_NORMALIZE,
      GL_LINE_SMOOTH, GL_LINE_STIPPLE, GL_POLYGON_SMOOTH, GL_POLYGON_OFFSET_FILL, GL_LIGHT0,
      GL_LIGHT1, GL_DITHER, GL_COLOR_LOGIC_OP, GL_POLYGON_STIPPLE, GL_STENCIL_TEST});
  glIsEnabled(capability) ? glDisable(capability) : glEnable(capability);
}

void material(Random& rng) {
  const auto name = rng.pick(
      std::array<GLenum, 5>{GL_AMBIENT, GL_DIFFUSE, GL_SPECULAR, GL_EMISSION, GL_SHININESS});
  auto values = colour(rng);
  if (name == GL_SHININESS) values[0] = rng.oneIn(2) ? 0 : 128 * values[0];
  glMaterialfv(face(rng), name, values.data());
}

void depth(Random& rng) {
  glDepthMask(rng.oneIn(2) ? GL_TRUE : GL_FALSE);
  glDepthFunc(comparison(rng));
}

void blending(Random& rng) {
  glEnable(GL_BLEND);
  glBlendFunc(rng.pick(std::array<GLenum, 3>{GL_ONE, GL_DST_COLOR, GL_SRC_ALPHA}),
              rng.pick(std::array<GLenum, 3>{GL_ONE, GL_ZERO, GL_ONE_MINUS_SRC_COLOR}));
}

void faces(Random& rng) {
  glEnable(GL_CULL_FACE);
  glCullFace(rng.oneIn(2) ? GL_FRONT : GL_BACK);
  glFrontFace(rng.oneIn(2) ? GL_CW : GL_CCW);
  glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, static_cast<GLint>(rng.below(2)));
}

void polygons(Random& rng) {
  glPolygonMode(face(rng), rng.pick(std::array<GLenum, 3>{GL_LINE, GL_POINT, GL_FILL}));
  glShadeModel(rng.oneIn(2) ? GL_FLAT : GL_SMOOTH);
  glEdgeFlag(rng.oneIn(2) ? GL_TRUE : GL_FALSE);
}

void lines(Random& rng) {
  glLineWidth(static_cast<GLfloat>(rng.between(1, 4)));
  glEnable(GL_LINE_STIPPLE);
  glLineStipple(2, static_cast<GLushort>(rng.next()));
}

void lights(Random& rng) {
  glLightfv(rng.oneIn(2) ? GL_LIGHT0 : GL_LIGHT1, GL_DIFFUSE, colour(rng).data());
  glLightModelfv(GL_LIGHT_MODEL_AMBIENT, colour(rng).data());
}

void place(Random& rng) {
  glMatrixMode(GL_MODELVIEW);
  glTranslated(rng.between(-2, 2), rng.between(-2, 2), rng.between(-2, 2));
  glRotated(rng.between(-60, 60), 1, 2, 3);
  const double scale = rng.between(0.5, 1.5);
  glScaled(scale, rng.oneIn(3) ? -scale : scale, scale);
  if (rng.oneIn(3)) glMatrixMode(GL_PROJECTION);
}

void currentValues(Random& rng) {
  glColor4fv(colour(rng).data());
  glNormal3f(unit(rng), -unit(rng), unit(rng));
  glTexCoord2f(unit(rng), unit(rng));
  glColorMaterial(face(rng), rng.oneIn(2) ? GL_AMBIENT_AND_DIFFUSE : GL_EMISSION);
}

void fragments(Random& rng) {
  if (rng.oneIn(2)) glEnable(GL_ALPHA_TEST);
  glAlphaFunc(comparison(rng), unit(rng));
  glColorMask(rng.oneIn(4) ? GL_FALSE : GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
  glLogicOp(GL_XOR);
  if (rng.oneIn(3)) glEnable(GL_FOG);
  glFogfv(GL_FOG_COLOR, colour(rng).data());
}

void clipping(Random& rng) {
  const GLdouble plane[] = {rng.between(-1, 1), rng.between(-1, 1), rng.between(-1, 1), 3};
  glClipPlane(GL_CLIP_PLANE0, plane);
  glEnable(GL_CLIP_PLANE0);
  if (rng.oneIn(3)) {
    glEnable(GL_SCISSOR_TEST);
    glScissor(8, 8, 60, 40);
  }
}

void texture(Random& rng) {
  const std::array<GLubyte, 16> texels = {255, 0, 0,   255, 0,   255, 0,   255,
                                          0,   0, 255, 128, 255, 255, 255, 0};
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 2, 2, 0, GL_RGBA, GL_UNSIGNED_BYTE, texels.data());
  glEnable(GL_TEXTURE_2D);
  if (rng.oneIn(2)) glEnable(GL_TEXTURE_GEN_S);
}

/// More colours than any drawing of the tests has vertices.
void arrays(Random&) {
  static const std::vector<GLfloat> colours(4 * 65536, 0.25F);
  glEnableClientState(GL_COLOR_ARRAY);
  glColorPointer(4, GL_FLOAT, 0, colours.data());
}

void error(Random&) { glEnable(GL_FRONT); }

}  // namespace

void meddle(Random& rng) {
  static constexpr std::array kMeddlings = {
      toggle, toggle, material, material, depth,  blending, faces,         polygons,  lines,
      lights, place,  place,    texture,  arrays, error,    currentValues, fragments, clipping};
  rng.pick(kMeddlings)(rng);
}

void PushedState::begin() {
  end();
  glGetIntegerv(GL_ATTRIB_STACK_DEPTH, &depth_);
  glPushAttrib(GL_ALL_ATTRIB_BITS);
  glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
}

void PushedState::end() {
  int depth = 0;
  glGetIntegerv(GL_ATTRIB_STACK_DEPTH, &depth);
  if (depth_ >= 0 && depth > depth_) {
    glPopClientAttrib();
    glPopAttrib();
  }
  depth_ = -1;
}

}  // namespace zyn::test
