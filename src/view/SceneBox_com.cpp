#include "view/SceneBox_com.h"

#include <algorithm>

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

bool SceneBox::isKnown() const {
  return !epochs_.empty() && std::all_of(epochs_.begin(), epochs_.end(), [](const auto& module) {
    return *module.first == module.second;
  });
}

std::optional<Box3> SceneBox::measureOwn(IModelBounds& object, Epochs& epochs) {
  const GeometryEpoch::Count* const count = &object.geometryEpoch();
  const bool isNew = std::none_of(epochs.begin(), epochs.end(),
                                  [&](const auto& module) { return module.first == count; });
  if (isNew) {
    epochs.emplace_back(count, *count);
  }
  return object.modelBounds();
}

std::optional<Box3> SceneBox::measure(CListTrace& list) {
  forget();
  Epochs epochs;
  bool allOurs = true;
  std::optional<Box3> scene;
  for (CListTrace::Walk walk(list); walk; walk.advance()) {
    const ComPtr<IDispatch> object = (*walk)->object;
    if (const auto own = ownObject(object.Get())) {
      unite(scene, measureOwn(*own.Get(), epochs));
      continue;
    }
    allOurs = false;
    ComPtr<IGLDraw> drawable;
    if (SUCCEEDED(object.As(&drawable)) && drawable) {
      unite(scene, measureOne_(*drawable.Get()));
    }
  }
  if (allOurs) {
    epochs_ = std::move(epochs);
  }
  return scene;
}

std::optional<Box3> SceneBox::measureAppended(CListTrace& list, IDispatch* object,
                                              const std::optional<Box3>& before) {
  const auto own = isKnown() ? ownObject(object) : nullptr;
  if (!own) {
    return measure(list);
  }
  std::optional<Box3> scene = before;
  unite(scene, measureOwn(*own.Get(), epochs_));
  return scene;
}

}  // namespace zyn
