#pragma once

#include <array>
#include <cstddef>
#include <optional>

#include "core/Transform.h"
#include "scene/CListTrace_com.h"

namespace zyn {

/// What a group is to the lists that it is in: a list of its own, shown moved by a matrix. Tells
/// the watch of its object what changes.
class SceneNest final : private SceneWatcher {
 public:
  /// Groups that lie in one another, at most: drawing takes room on the stack for each level.
  static constexpr std::size_t kMostLevels = 256;

  /// `watch`: of the object that this is a part of.
  explicit SceneNest(SceneWatch& watch) : watch_(watch) {}

  CListTrace& list() { return list_; }
  const CListTrace& list() const { return list_; }

  /// What moves the objects, whose last row is 0 0 0 1. In the plane only x and y count.
  const GlMatrix& place() const { return place_; }
  GlMatrix place(bool isFlat) const { return isFlat ? flattened(place_) : place_; }
  void moveTo(const GlMatrix& place);

  bool isShown() const { return isShown_; }
  void show(bool isShown);

  /// Around the objects of ours where they are shown, in the plane if `isFlat`; none while there
  /// are none, or it is hidden.
  std::optional<Box3> bounds(bool isFlat);

  /// The same, moved further.
  std::optional<Box3> movedBounds(const GlMatrix& matrix, bool isFlat);

  /// Where a ray first meets one of the objects that are shown.
  std::optional<SurfaceHit> nearestHit(const Ray& ray);

  /// Calls `visit` for the groups that hold this one.
  template <class Visit>
  void forEachAround(const Visit& visit) const {
    watch_.find([&](const WatchLink& link) {
      const CListTrace* const list = link.watcher->watchingList();
      if (list && list->nest()) {
        visit(*list->nest());
      }
      return false;
    });
  }

  /// Whether it is `other` or lies in it, at any depth.
  bool isWithin(const SceneNest& other) const;

  /// How many levels of groups there would be with `inner` in this one.
  std::size_t levelsWith(const SceneNest& inner) const;

 private:
  void objectChanged(SceneChange change) noexcept override;

  SceneWatch& watch_;
  GlMatrix place_ = kIdentity;
  bool isShown_ = true;
  /// As shown in space and in the plane, or hidden there.
  std::array<BoundsSum, 2> bounds_{BoundsSum{{}, false}, BoundsSum{{}, false}};
  CListTrace list_{*this, *this};  ///< tells of its end
};

template <class Visit>
void CListTrace::forEachNest(const Visit& visit) const {
  if (nests_ == 0) {
    return;
  }
  for (const ElementGroup& group : groups_) {
    group.forEachNest(visit);
  }
}

template <class Visit>
void CListTrace::forEachOutside(const Visit& visit, bool isFlat, const GlMatrix* place) {
  if (!holdsOutside()) {
    return;
  }
  for (Walk walk(*this); walk; walk.advance()) {
    ElementGroup* const group = ElementGroup::of(**walk);
    if (group && !group->holdsOutside()) {
      walk.stand(group->last().node());
      continue;
    }
    const Microsoft::WRL::ComPtr<IDispatch> object = (*walk)->object;
    if (!group) {
      visit(object.Get(), place);
      HostState::setOurs();
    } else if (SceneNest& nest = *(*walk)->own->nest(); nest.isShown()) {
      const GlMatrix own = nest.place(isFlat);
      const GlMatrix within = place ? product(*place, own) : own;
      nest.list().forEachOutside(visit, isFlat, &within);
    }
  }
}

}  // namespace zyn
