#include "view2d/ViewPass2D_gl.h"

#include "glcontext/StateGuards_gl.h"
#include "view/PixelScale_gl.h"
#include "view/RubberBand_gl.h"
#include "view2d/Grid_gl.h"
#include "view2d/ViewMatrices_gl.h"

namespace zyn {

namespace {

void drawCursor(const ViewPass2D::Cursor& cursor, const ViewPass2D& pass) {
  loadViewAt({cursor.position[0], cursor.position[1], 0}, pass.shown);
  cursor.glyph.draw(0, 0, 0, pass.pixelScale);
}

void drawOverlays(const ViewPass2D& pass) {
  const PushedMatrix projection(GL_PROJECTION);
  const PushedMatrix modelview(GL_MODELVIEW);
  if (pass.rubberBand) {
    drawRubberBand(*pass.rubberBand, pass.pixelScale);
  }
  if (pass.frame) {
    loadViewAt(pass.frame->origin(), pass.shown);
    pass.frame->draw();
  }
  if (pass.cursor) {
    drawCursor(*pass.cursor, pass);
  }
}

/// Nothing of an earlier frame's depths may count, whoever has left the test on.
void clearFor(const ViewPass2D& pass) {
  if (pass.usesDepth) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  } else {
    glDisable(GL_DEPTH_TEST);
    glClear(GL_COLOR_BUFFER_BIT);
  }
}

}  // namespace

void drawView2D(const ViewPass2D& pass, const std::function<void()>& drawTraces,
                const std::function<void()>& present) {
  const PushedMatrix modelview(GL_MODELVIEW);
  clearFor(pass);
  if (pass.grid) {
    drawGrid(*pass.grid, pass.shown, pass.pixelScale);
  }
  loadView(pass.shown);
  {
    const auto scale = pixelScaleUnlessOne(pass.pixelScale);
    const BalancedStacks stacks;
    drawTraces();
  }
  if (!pass.usesDepth) {
    glDisable(GL_DEPTH_TEST);  // which texts leave on
  }
  drawOverlays(pass);
  glFinish();
  present();
}

PickRecords pickView2D(const ScaledView& shown, const PickRegion& region,
                       const std::function<void()>& drawList) {
  return runPickPass({.region = region, .unlit = true}, [&](const PicturePart& part) {
    loadView(shown, part);
    drawList();
  });
}

}  // namespace zyn
