#include "view/measureScene_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

std::optional<Box3> measureScene(CListTrace& list, MeasureDrawable measureOne) {
  BoundsSum scene;
  list.forEachOutside([&](IDispatch* object) {
    ComPtr<IGLDraw> drawable;
    if (SUCCEEDED(object->QueryInterface(IID_PPV_ARGS(&drawable))) && drawable) {
      scene.add(measureOne(*drawable.Get()));
    }
  });
  scene.add(list.ownBounds());
  return scene.box;
}

}  // namespace zyn
