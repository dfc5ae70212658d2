#include "scene/measureScene_com.h"

#include "com/askFor_com.h"
#include "contract/ModelBounds_com.h"
#include "scene/SceneNest_com.h"

namespace zyn {

std::optional<Box3> measureScene(CListTrace& list) {
  BoundsSum scene{measureOutside(list, list.isFlat(), nullptr)};
  scene.add(list.ownBounds());
  return scene.box;
}

std::optional<Box3> measureOutside(CListTrace& list, bool isFlat, const GlMatrix* place) {
  BoundsSum sum;
  list.forEachOutside(
      [&](IDispatch* object, const GlMatrix* at) {
        if (const auto drawable = askFor<IGLDraw>(object)) {
          const auto box = isFlat ? planeBoundsOf(*drawable.Get()) : boundsOf(*drawable.Get());
          sum.add(box && at ? moved(*at, *box) : box);
        }
      },
      isFlat, place);
  return sum.box;
}

}  // namespace zyn
