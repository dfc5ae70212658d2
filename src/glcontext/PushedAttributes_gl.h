#pragma once

#include "glcontext/CountedGuard.h"
#include "glcontext/gl_api.h"

namespace zyn {

/// Groups of the server's state, given back at the end of the scope.
class PushedAttributes : CountedGuard {
 public:
  explicit PushedAttributes(GLbitfield groups) {
    applyColour();
    glPushAttrib(groups);
  }
  ~PushedAttributes() { glPopAttrib(); }
  PushedAttributes(const PushedAttributes&) = delete;
  PushedAttributes& operator=(const PushedAttributes&) = delete;

 private:
  /// Where attributes have been pushed before, Mesa forgets to give back a colour that was set
  /// since and neither used nor read.
  static void applyColour() {
    GLfloat colour[4];
    glGetFloatv(GL_CURRENT_COLOR, colour);
  }
};

}  // namespace zyn
