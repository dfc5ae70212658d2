#include "view/SceneBox_com.h"

#include "objects/GeometryEpoch.h"
#include "objects/ModelBox_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

void unite(std::optional<Box3>& scene, const std::optional<Box3>& bounds) {
  if (!bounds) {
    return;
  }
  if (scene) {
    scene->unite(*bounds);
  } else {
    scene = bounds;
  }
}

}  // namespace

std::optional<Box3> SceneBox::measure(CListTrace& list) {
  const std::uint64_t epoch = GeometryEpoch::now();
  known_ = false;
  bool allOurs = true;
  std::optional<Box3> scene;
  for (CListTrace::Walk walk(list); walk; walk.advance()) {
    const ComPtr<IDispatch> object = (*walk)->object;
    if (const auto own = ownBounds(object.Get())) {
      unite(scene, own);
      continue;
    }
    allOurs = false;
    ComPtr<IGLDraw> drawable;
    if (SUCCEEDED(object.As(&drawable)) && drawable) {
      unite(scene, measureOne_(*drawable.Get()));
    }
  }
  known_ = allOurs;
  epoch_ = epoch;
  return scene;
}

std::optional<Box3> SceneBox::measureAppended(CListTrace& list, IDispatch* object,
                                              const std::optional<Box3>& before) {
  if (known_ && epoch_ == GeometryEpoch::now()) {
    if (const auto own = ownBounds(object)) {
      std::optional<Box3> scene = before;
      unite(scene, own);
      return scene;
    }
  }
  return measure(list);
}

}  // namespace zyn
