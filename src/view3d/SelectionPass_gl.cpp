#include "view3d/SelectionPass_gl.h"

#include "glcontext/gl_api.h"
#include "view3d/ScenePass_gl.h"

namespace zyn {

PickRecords runSelectionPass(const CParamsVue3D& camera, const PickPass& pass,
                             const std::function<void()>& drawList) {
  const CParamsVue3D fixed(camera);  // drawn objects may move the view's
  return runPickPass(pass, [&](const PicturePart& part) {
    loadProjection(&fixed, part);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    lookAlong(fixed);
    drawList();
  });
}

}  // namespace zyn
