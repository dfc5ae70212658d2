#include "glcontext/InitialState_gl.h"

namespace zyn {

namespace {

/// GL_MULTISAMPLE_ARB, which OpenGL 1.1 headers lack.
constexpr GLenum kMultisample = 0x809D;

/// OpenGL clamps it to 1, the far plane.
constexpr GLclampd kClearDepth = 10.0;

void setClearValues(const Float4& background) {
  glClearDepth(kClearDepth);
  glClearColor(background[0], background[1], background[2], background[3]);
}

void setBlending() {
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
}

void replaceSmoothing(Antialiasing& antialiasing) {
  if (!antialiasing.multisample) {
    return;
  }
  if (*antialiasing.multisample) {
    antialiasing.lineSmooth = false;
    antialiasing.pointSmooth = false;
  }
  setMultisample(*antialiasing.multisample);
}

void setLineSmooth(const Antialiasing& antialiasing) {
  if (antialiasing.lineSmooth) {
    glEnable(GL_LINE_SMOOTH);
    glHint(GL_LINE_SMOOTH_HINT, antialiasing.hint);
  } else {
    glDisable(GL_LINE_SMOOTH);
  }
}

void setPointSmooth(const Antialiasing& antialiasing) {
  if (antialiasing.pointSmooth) {
    glEnable(GL_POINT_SMOOTH);
    glHint(GL_POINT_SMOOTH_HINT, antialiasing.hint);
  } else {
    glDisable(GL_POINT_SMOOTH);
  }
}

}  // namespace

void setInitialState3D(const Float4& background, Antialiasing& antialiasing) {
  setClearValues(background);
  glClearAccum(0, 0, 0, 0);
  glShadeModel(GL_SMOOTH);
  glEnable(GL_LIGHTING);
  glEnable(GL_CULL_FACE);
  glCullFace(GL_BACK);
  glFrontFace(GL_CCW);
  setBlending();
  replaceSmoothing(antialiasing);
  setSmoothing3D(antialiasing);
  glEnable(GL_DEPTH_TEST);
  glDepthFunc(GL_LESS);
}

void setSmoothing3D(const Antialiasing& antialiasing) {
  setSmoothing2D(antialiasing);
  if (!antialiasing.lineSmooth) {
    glDisable(GL_POLYGON_SMOOTH);
  }
}

void setInitialState2D(const Float4& background, Antialiasing& antialiasing) {
  setClearValues(background);
  glShadeModel(GL_FLAT);
  setBlending();
  replaceSmoothing(antialiasing);
  setSmoothing2D(antialiasing);
}

void setMultisample(bool on) { setEnabled(kMultisample, on); }

void setSmoothing2D(const Antialiasing& antialiasing) {
  setLineSmooth(antialiasing);
  setPointSmooth(antialiasing);
}

}  // namespace zyn
