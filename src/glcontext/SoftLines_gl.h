#pragma once

#include <cmath>

#include "glcontext/StateGuards_gl.h"
#include "glcontext/StateQuery_gl.h"
#include "glcontext/gl_api.h"

namespace zyn {

/// Whether smoothing would only blur a line of this width in pixels.
inline bool isSharpLine(double width, bool isFlat) { return isFlat && std::floor(width) == width; }

/// Sets the line width in pixels for a scope. Lines are smooth if the scene's are, but for those of
/// a whole width in the plane.
class LineWidth {
 public:
  LineWidth(double width, bool isFlat) {
    if (isSharpLine(width, isFlat)) {
      glDisable(GL_LINE_SMOOTH);
    }
    if (width > 0) {  // OpenGL refuses any other
      glLineWidth(static_cast<GLfloat>(width));
    }
  }

 private:
  PushedAttributes saved_{GL_LINE_BIT};
};

/// Whether the edges of lines would hide what comes to lie there later.
inline bool hasSoftLines() {
  return isRendering() && !isRecording() && isEnabled(GL_LINE_SMOOTH) && isEnabled(GL_DEPTH_TEST);
}

/// Lines leave their depth only, for a scope, and their soft edges none: these would hide the next
/// line.
class HardDepth {
 public:
  HardDepth() {
    glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    glDisable(GL_LINE_SMOOTH);
  }

 private:
  PushedAttributes saved_{GL_COLOR_BUFFER_BIT | GL_LINE_BIT};
};

/// Draws lines of one colour, which may be soft.
template <class Draw>
void drawSoftLines(Draw draw) {
  if (!hasSoftLines()) {
    draw();
    return;
  }
  {
    const PushedAttributes saved(GL_DEPTH_BUFFER_BIT);
    glDepthMask(GL_FALSE);
    draw();
  }
  const HardDepth scope;
  draw();
}

}  // namespace zyn
