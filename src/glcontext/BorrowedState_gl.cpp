#include "glcontext/BorrowedState_gl.h"

#include "glcontext/StateQuery_gl.h"

namespace zyn {

namespace {

constexpr GLint kAttributeRoom = 2;  ///< our own and what painters push
constexpr GLint kClientAttributeRoom = 1;
constexpr GLint kMatrixRoom = 2;  ///< what painters push
constexpr GLint kNameRoom = 2;    ///< a type and a name

GLint roomOn(GLenum depth, GLenum most) { return integerState(most) - integerState(depth); }

bool hasNameRoom() {
  return enumState(GL_RENDER_MODE) != GL_SELECT ||
         roomOn(GL_NAME_STACK_DEPTH, GL_MAX_NAME_STACK_DEPTH) >= kNameRoom;
}

}  // namespace

bool BorrowedState::isAvailable() {
  // Without a current context all the answers are 0.
  return roomOn(GL_ATTRIB_STACK_DEPTH, GL_MAX_ATTRIB_STACK_DEPTH) >= kAttributeRoom &&
         roomOn(GL_CLIENT_ATTRIB_STACK_DEPTH, GL_MAX_CLIENT_ATTRIB_STACK_DEPTH) >=
             kClientAttributeRoom &&
         hasNameRoom();
}

BorrowedState::BorrowedState() : matrices_{currentModelView()} {
  glMatrixMode(GL_MODELVIEW);
  if (isRecorded_) {
    glPushMatrix();
    return;
  }
  for (GLint room = roomOn(GL_MODELVIEW_STACK_DEPTH, GL_MAX_MODELVIEW_STACK_DEPTH);
       room < kMatrixRoom; ++room) {
    glPopMatrix();
    matrices_.push_back(currentModelView());
  }
  glLoadMatrixd(matrices_.front().data());
}

BorrowedState::~BorrowedState() {
  glMatrixMode(GL_MODELVIEW);
  if (isRecorded_) {
    glPopMatrix();
    return;
  }
  glLoadMatrixd(matrices_.back().data());
  for (auto matrix = matrices_.rbegin() + 1; matrix != matrices_.rend(); ++matrix) {
    glPushMatrix();
    glLoadMatrixd(matrix->data());
  }
}

GlMatrix currentModelView() { return matrixState(GL_MODELVIEW_MATRIX); }

Lens currentLens() {
  Lens lens;
  lens.projection = matrixState(GL_PROJECTION_MATRIX);
  glGetDoublev(GL_VIEWPORT, lens.viewport.data());
  return lens;
}

}  // namespace zyn
