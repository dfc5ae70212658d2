#include "offscreen/TracePicture_gl.h"

#include "glcontext/StateGuards_gl.h"
#include "glcontext/gl_api.h"
#include "view/PixelScale_gl.h"
#include "view2d/ViewMatrices_gl.h"

namespace zyn {

void drawTraces(const TracePicture& picture, const std::function<void()>& drawList) {
  loadView(picture.shown, picture.part);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  const PixelScale scale(picture.pixelScale);
  const BalancedStacks stacks;
  drawList();
}

}  // namespace zyn
