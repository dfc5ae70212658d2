#include "scene/SceneNest_com.h"

#include <algorithm>
#include <map>

namespace zyn {

namespace {

/// How many levels of groups lead away from one, itself included. Each group is looked at once.
template <class ForEachNext>
class Levels {
 public:
  explicit Levels(ForEachNext forEachNext) : forEachNext_(forEachNext) {}

  std::size_t from(const SceneNest& nest) {
    if (const auto known = known_.find(&nest); known != known_.end()) {
      return known->second;
    }
    std::size_t most = 0;
    forEachNext_(nest, [&](const SceneNest& next) { most = std::max(most, from(next)); });
    return known_[&nest] = most + 1;
  }

  bool haveSeen(const SceneNest& nest) const { return known_.count(&nest) != 0; }

 private:
  ForEachNext forEachNext_;
  std::map<const SceneNest*, std::size_t> known_;
};

constexpr auto kForEachAround = [](const SceneNest& nest, const auto& visit) {
  nest.forEachAround(visit);
};
constexpr auto kForEachWithin = [](const SceneNest& nest, const auto& visit) {
  nest.list().forEachNest(visit);
};

}  // namespace

void SceneNest::moveTo(const GlMatrix& place) {
  place_ = place;
  objectChanged(SceneChange::kExtent);
}

void SceneNest::show(bool isShown) {
  isShown_ = isShown;
  watch_.tell(SceneChange::kExtent);  // where the objects would be shown is known as before
}

std::optional<Box3> SceneNest::bounds(bool isFlat) {
  if (!isShown_) {
    return std::nullopt;
  }
  BoundsSum& known = bounds_[isFlat ? 1 : 0];
  if (!known.isKnown) {
    known = {list_.movedBounds(place(isFlat), isFlat), true};
  }
  return known.box;
}

std::optional<Box3> SceneNest::movedBounds(const GlMatrix& matrix, bool isFlat) {
  return isShown_ ? list_.movedBounds(product(matrix, place(isFlat)), isFlat) : std::nullopt;
}

std::optional<SurfaceHit> SceneNest::nearestHit(const Ray& ray) {
  if (!isShown_) {
    return std::nullopt;
  }
  const GlMatrix back = inverse(place_);
  const Point origin = moved(back, ray.origin);
  const Vecteur& d = ray.direction;
  const Vecteur direction(back[0] * d.x + back[4] * d.y + back[8] * d.z,
                          back[1] * d.x + back[5] * d.y + back[9] * d.z,
                          back[2] * d.x + back[6] * d.y + back[10] * d.z);
  std::optional<SurfaceHit> hit = list_.nearestHit({origin, direction, ray.meetsBacks});
  if (hit) {
    hit->normal = movedNormal(place_, hit->normal);
  }
  return hit;
}

bool SceneNest::isWithin(const SceneNest& other) const {
  Levels around(kForEachAround);
  around.from(*this);
  return around.haveSeen(other);
}

std::size_t SceneNest::levelsWith(const SceneNest& inner) const {
  return Levels(kForEachAround).from(*this) + Levels(kForEachWithin).from(inner);
}

void SceneNest::objectChanged(SceneChange change) noexcept {
  if (change != SceneChange::kLook) {
    bounds_[0].isKnown = bounds_[1].isKnown = false;
  }
  watch_.tell(change == SceneChange::kShape ? SceneChange::kExtent : change);
}

}  // namespace zyn
