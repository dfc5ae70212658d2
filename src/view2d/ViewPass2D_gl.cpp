#include "view2d/ViewPass2D_gl.h"

#include "glcontext/StateGuards_gl.h"
#include "view/RubberBand_gl.h"
#include "view2d/Grid_gl.h"
#include "view2d/ViewMatrices_gl.h"

namespace zyn {

namespace {

void drawCursor(const ViewPass2D::Cursor& cursor, const ScaledView& shown) {
  loadViewAt({cursor.position[0], cursor.position[1], 0}, shown);
  cursor.glyph.draw(0, 0, 0);
}

void drawOverlays(const ViewPass2D& pass) {
  const PushedMatrix projection(GL_PROJECTION);
  const PushedMatrix modelview(GL_MODELVIEW);
  if (pass.rubberBand) {
    drawRubberBand(*pass.rubberBand);
  }
  if (pass.frame) {
    loadViewAt(pass.frame->origin(), pass.shown);
    pass.frame->draw();
  }
  if (pass.cursor) {
    drawCursor(*pass.cursor, pass.shown);
  }
}

}  // namespace

void drawView2D(const ViewPass2D& pass, const std::function<void()>& drawTraces,
                const std::function<void()>& present) {
  const PushedMatrix modelview(GL_MODELVIEW);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  if (pass.grid) {
    drawGrid(*pass.grid, pass.shown);
  }
  loadView(pass.shown);
  {
    const BalancedStacks stacks;
    drawTraces();
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
