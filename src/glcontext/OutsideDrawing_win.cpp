#include "glcontext/OutsideDrawing_win.h"

#include "com/HostState_win.h"
#include "glcontext/StateQuery_gl.h"

namespace zyn {

namespace {

/// Between glBegin and glEnd no state is told.
bool isWithinPrimitive() { return enumState(GL_MATRIX_MODE) == 0; }

}  // namespace

OutsideDrawing::OutsideDrawing() : renders_(enumState(GL_RENDER_MODE) == GL_RENDER) {}

OutsideDrawing::~OutsideDrawing() {
  HostState::setOurs();
  context_.restore();
  if (isWithinPrimitive()) {
    glEnd();
  }
  if (integerState(GL_LIST_INDEX) != 0) {
    glEndList();
  }
  if (renders_ && enumState(GL_RENDER_MODE) != GL_RENDER) {
    glRenderMode(GL_RENDER);
  }
}

}  // namespace zyn
