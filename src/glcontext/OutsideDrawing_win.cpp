#include "glcontext/OutsideDrawing_win.h"

#include "glcontext/StateQuery_gl.h"
#include "platform/HostState_win.h"

namespace zyn {

OutsideDrawing::OutsideDrawing(bool keepsMode) : keepsMode_(keepsMode) {}

OutsideDrawing::~OutsideDrawing() {
  HostState::setOurs();
  context_.restore();
  GLenum mode = enumState(GL_RENDER_MODE);
  if (mode == 0) {  // between glBegin and glEnd no state is told
    glEnd();
    mode = enumState(GL_RENDER_MODE);
  }
  if (integerState(GL_LIST_INDEX) != 0) {
    glEndList();
  }
  if (!keepsMode_ && mode != GL_RENDER) {
    glRenderMode(GL_RENDER);
  }
}

}  // namespace zyn
