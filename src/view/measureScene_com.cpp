#include "view/measureScene_com.h"
#include "com/askFor_com.h"

namespace zyn {

std::optional<Box3> measureScene(CListTrace& list, MeasureDrawable measureOne) {
  BoundsSum scene;
  list.forEachOutside([&](IDispatch* object) {
    if (const auto drawable = askFor<IGLDraw>(object)) {
      scene.add(measureOne(*drawable.Get()));
    }
  });
  scene.add(list.ownBounds());
  return scene.box;
}

}  // namespace zyn
