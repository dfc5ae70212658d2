#include "view3d/ViewPass3D_gl.h"

#include "view/PixelScale_gl.h"
#include "view/RubberBand_gl.h"
#include "view3d/LightLines_gl.h"
#include "view3d/ScenePass_gl.h"
#include "view3d/Trihedron_gl.h"

namespace zyn {

namespace {

/// Drawn over the scene, with the camera's matrices.
void drawOverlays(const ViewPass3D& pass, const CParamsVue3D& camera) {
  if (pass.drawCoordSys) {
    drawTrihedron(camera, pass.pixelScale);
  }
  if (pass.rubberBand) {
    drawRubberBand(*pass.rubberBand, pass.pixelScale);
  }
  if (pass.cursor) {
    const auto& [x, y, z] = pass.cursor->position;
    pass.cursor->glyph.draw(x, y, z, pass.pixelScale);
  }
  if (pass.drawLights) {
    const auto scale = pixelScaleUnlessOne(pass.pixelScale);
    drawLightLines(camera, pass.lights);
  }
}

}  // namespace

void drawView3D(const ViewPass3D& pass, const std::function<void()>& drawList,
                const std::function<void()>& present) {
  std::optional<CParamsVue3D> camera;  // drawn objects may move the view's
  if (pass.camera) {
    camera.emplace(*pass.camera);
  }
  drawScene({.camera = camera ? &*camera : nullptr,
             .lights = pass.lights,
             .gradient = pass.gradient,
             .part = {},
             .pixelScale = pass.pixelScale},
            drawList);
  if (camera) {
    drawOverlays(pass, *camera);
  }
  glFinish();
  present();
}

void loadCamera(const CParamsVue3D& camera, const PicturePart& part) {
  loadProjection(&camera, part);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  lookAlong(camera);
}

PickRecords pickView3D(const CParamsVue3D& camera, const PickPass& pass,
                       const std::function<void()>& drawList) {
  const CParamsVue3D fixed(camera);  // drawn objects may move the view's
  return runPickPass(pass, [&](const PicturePart& part) {
    loadCamera(fixed, part);
    drawList();
  });
}

}  // namespace zyn
