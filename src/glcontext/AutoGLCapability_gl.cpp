#include "glcontext/AutoGLCapability_gl.h"

namespace zyn {

AutoGLCapability::AutoGLCapability(GLenum capability, int mode)
    : capability_(capability), saved_(isEnabled(capability)) {
  if (mode == 1 && !saved_) {
    glEnable(capability_);
  } else if (mode == -1 && saved_) {
    glDisable(capability_);
  }
}

AutoGLCapability::~AutoGLCapability() { setEnabled(capability_, saved_); }

}  // namespace zyn
