#include "view3d/SceneBox_com.h"

#include "ZYNMODELEGEOM.h"
#include "objects/ModelBox_com.h"

namespace zyn {

std::optional<Box3> sceneBoxOf(CListTrace& list) {
  std::optional<Box3> scene;
  for (CListTrace::Walk walk(list); walk; walk.advance()) {
    const Microsoft::WRL::ComPtr<IDispatch> object = (*walk)->object;
    Microsoft::WRL::ComPtr<IGLDraw> drawable;
    if (FAILED(object.As(&drawable)) || !drawable) {
      continue;
    }
    if (const std::optional<Box3> bounds = boundsOf(*drawable.Get())) {
      if (scene) {
        scene->unite(*bounds);
      } else {
        scene = bounds;
      }
    }
  }
  return scene;
}

}  // namespace zyn
