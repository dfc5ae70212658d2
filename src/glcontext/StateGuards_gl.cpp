#include "glcontext/StateGuards_gl.h"

#include <cmath>

namespace zyn {

namespace {

template <class Pop>
void popTo(GLint depth, GLenum depthName, Pop pop) {
  for (GLint excess = integerState(depthName) - depth; excess > 0; --excess) {
    pop();
  }
}

void popMatricesTo(GLint depth, GLenum depthName, GLenum mode) {
  glMatrixMode(mode);
  popTo(depth, depthName, glPopMatrix);
}

}  // namespace

AutoGLCapability::AutoGLCapability(GLenum capability, int mode)
    : capability_(capability), saved_(isEnabled(capability)) {
  if (mode == 1 && !saved_) {
    glEnable(capability_);
  } else if (mode == -1 && saved_) {
    glDisable(capability_);
  }
}

AutoGLCapability::~AutoGLCapability() { setEnabled(capability_, saved_); }

AutoGLDepthFunc::AutoGLDepthFunc(GLenum function) : saved_(enumState(GL_DEPTH_FUNC)) {
  glDepthFunc(function);
}

AutoGLDepthFunc::~AutoGLDepthFunc() {
  if (saved_ != 0) {
    glDepthFunc(saved_);
  }
}

AutoGLDepthMask::AutoGLDepthMask(int mode) : saved_(booleanState(GL_DEPTH_WRITEMASK)) {
  if (mode == 1 && !saved_) {
    glDepthMask(GL_TRUE);
  } else if (mode == -1 && saved_) {
    glDepthMask(GL_FALSE);
  }
}

AutoGLDepthMask::~AutoGLDepthMask() { glDepthMask(saved_ ? GL_TRUE : GL_FALSE); }

AutoGLLineStipple::AutoGLLineStipple(GLint factor, GLushort pattern)
    : enabled_(isEnabled(GL_LINE_STIPPLE)) {
  if (enabled_) {
    factor_ = integerState(GL_LINE_STIPPLE_REPEAT);
    pattern_ = static_cast<GLushort>(integerState(GL_LINE_STIPPLE_PATTERN));
  } else {
    glEnable(GL_LINE_STIPPLE);
  }
  glLineStipple(factor, pattern);
}

AutoGLLineStipple::~AutoGLLineStipple() {
  if (enabled_) {
    glLineStipple(factor_, pattern_);
  } else {
    glDisable(GL_LINE_STIPPLE);
  }
}

AutoGLLineWidth::AutoGLLineWidth(double width)
    : saved_(floatState(GL_LINE_WIDTH)), smooth_(isEnabled(GL_LINE_SMOOTH)) {
  if (smooth_ && std::floor(width) == width) {
    glDisable(GL_LINE_SMOOTH);
  }
  if (width > 0) {  // OpenGL refuses any other
    glLineWidth(static_cast<GLfloat>(width));
  }
}

AutoGLLineWidth::~AutoGLLineWidth() {
  const bool smoothNow = isEnabled(GL_LINE_SMOOTH);
  if (smooth_ && !smoothNow) {
    glEnable(GL_LINE_SMOOTH);
    glHint(GL_LINE_SMOOTH_HINT, GL_DONT_CARE);
  } else if (!smooth_ && smoothNow) {
    glDisable(GL_LINE_SMOOTH);
  }
  glLineWidth(saved_);
}

AutoGLClearColor::AutoGLClearColor(const std::optional<Float4>& colour) {
  if (colour) {
    glGetFloatv(GL_COLOR_CLEAR_VALUE, saved_.emplace().data());
    glClearColor((*colour)[0], (*colour)[1], (*colour)[2], (*colour)[3]);
  }
}

AutoGLClearColor::~AutoGLClearColor() {
  if (saved_) {
    glClearColor((*saved_)[0], (*saved_)[1], (*saved_)[2], (*saved_)[3]);
  }
}

AutoGLPointSize::AutoGLPointSize(double size) : saved_(floatState(GL_POINT_SIZE)) {
  if (size > 0) {  // OpenGL refuses any other
    glPointSize(static_cast<GLfloat>(size));
  }
}

AutoGLPointSize::~AutoGLPointSize() { glPointSize(saved_); }

SelectionNames::SelectionNames(GLint typeSelection, GLint nomSelection, bool pushTypeSelection) {
  if (nomSelection < 0) {
    return;
  }
  if (pushTypeSelection) {
    glPushName(static_cast<GLuint>(typeSelection));
    ++pushed_;
  }
  glPushName(static_cast<GLuint>(nomSelection));
  ++pushed_;
}

SelectionNames::~SelectionNames() {
  for (; pushed_ > 0; --pushed_) {
    glPopName();
  }
}

BalancedStacks::BalancedStacks()
    : matrixMode_(enumState(GL_MATRIX_MODE)),
      projection_(integerState(GL_PROJECTION_STACK_DEPTH)),
      modelview_(integerState(GL_MODELVIEW_STACK_DEPTH)),
      texture_(integerState(GL_TEXTURE_STACK_DEPTH)),
      attributes_(integerState(GL_ATTRIB_STACK_DEPTH)),
      clientAttributes_(integerState(GL_CLIENT_ATTRIB_STACK_DEPTH)),
      names_(integerState(GL_NAME_STACK_DEPTH)) {}

BalancedStacks::~BalancedStacks() {
  popTo(attributes_, GL_ATTRIB_STACK_DEPTH, glPopAttrib);
  popTo(clientAttributes_, GL_CLIENT_ATTRIB_STACK_DEPTH, glPopClientAttrib);
  popTo(names_, GL_NAME_STACK_DEPTH, glPopName);
  popMatricesTo(projection_, GL_PROJECTION_STACK_DEPTH, GL_PROJECTION);
  popMatricesTo(modelview_, GL_MODELVIEW_STACK_DEPTH, GL_MODELVIEW);
  popMatricesTo(texture_, GL_TEXTURE_STACK_DEPTH, GL_TEXTURE);
  glMatrixMode(matrixMode_);
}

}  // namespace zyn
