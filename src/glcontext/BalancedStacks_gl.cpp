#include "glcontext/BalancedStacks_gl.h"

#include "glcontext/StateQuery_gl.h"

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
