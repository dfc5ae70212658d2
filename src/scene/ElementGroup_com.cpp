#include "scene/ElementGroup_com.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <span>
#include <utility>

#include "objects/triangle/TriangleCorners_win.h"
#include "scene/CListTrace_com.h"
#include "scene/SceneNest_com.h"

namespace zyn {

namespace {

/// How a 2D view shows a triangle: in the plane, facing the viewer, in its plain colour.
TriangleShape flattened(const TriangleShape& shape) {
  TriangleShape flat = shape;
  for (auto& vertex : flat.vertices) {
    vertex.z = 0;
  }
  for (auto& normal : flat.normals) {
    normal = {0, 0, 1};
  }
  flat.hasMaterial = false;
  return flat;
}

std::optional<Box3> boundsOf(ISceneObject& object, bool isFlat) {
  SceneNest* const nest = object.nest();
  return nest ? nest->bounds(isFlat) : object.modelBounds();
}

}  // namespace

ElementGroup::~ElementGroup() { std::for_each(compiled_.begin(), compiled_.end(), giveUp); }

ElementGroup::Kind ElementGroup::kindOf(const DrawElem& element) {
  if (element.own->nest()) {
    return Kind::kNests;
  }
  if (!element.own->triangleCorners()) {
    return Kind::kObjects;
  }
  return element.drawingMode == kOutlineMode ? Kind::kOutlines : Kind::kSurfaces;
}

ElementGroup* ElementGroup::successor() const {
  const DrawElem* const next = nextOf(*last_);
  ElementGroup* const group = next ? of(*next) : nullptr;
  return group && group->kind_ == kind_ ? group : nullptr;
}

void ElementGroup::append(DrawElem& element) {
  element.watcher = this;
  element.own->watch().join(element);
  if (count_++ == 0) {
    first_ = &element;
  }
  if (hasTriangles() && count_ % TriangleCorners::kMostSharing == 0) {
    shareCorners(element);
  }
  last_ = &element;
  forgetCalls();
  holdsOutside_.reset();
  if (bounds_.isKnown) {
    bounds_.add(boundsOf(*element.own, list_.isFlat()));
  }
}

/// Those of the element that comes behind the last one, and of those before it.
void ElementGroup::shareCorners(DrawElem& added) {
  std::array<TriangleCorners*, TriangleCorners::kMostSharing> corners{};
  std::size_t count = 0;
  corners[count++] = added.own->triangleCorners();
  const DrawElem* element = last_;
  while (element && count < corners.size()) {
    corners[count++] = element->own->triangleCorners();
    const auto* const before = element != first_ ? CListTrace::previous(element->node()) : nullptr;
    element = before ? before->get() : nullptr;
  }
  TriangleCorners::share(std::span(corners).first(count));
}

void ElementGroup::remove(DrawElem& element) {
  element.own->watch().leave(element);
  element.watcher = nullptr;
  --count_;
  if (&element == first_) {
    first_ = nextOf(element);
  }
  if (&element == last_) {
    last_ = count_ > 0 ? CListTrace::previous(element.node())->get() : nullptr;
  }
  objectChanged(SceneChange::kShape);
}

void ElementGroup::absorb(ElementGroup& successor) {
  DrawElem* element = successor.first_;
  for (std::uint32_t i = 0; i < successor.count_; ++i) {
    element->watcher = this;
    element = nextOf(*element);
  }
  last_ = successor.last_;
  count_ += std::exchange(successor.count_, 0);
  objectChanged(SceneChange::kShape);
}

const std::optional<Box3>& ElementGroup::bounds() {
  if (!bounds_.isKnown) {
    bounds_ = {};
    forEach([this](ISceneObject& object) { bounds_.add(boundsOf(object, list_.isFlat())); });
  }
  return bounds_.box;
}

void ElementGroup::addMoved(const GlMatrix& matrix, bool isFlat, BoundsSum& sum) {
  const bool isFlatNest = isFlat && kind_ == Kind::kNests;
  const auto& all = isFlatNest ? std::nullopt : bounds();
  if (!isFlatNest && !all) {
    return;
  }
  if (all) {
    const Box3 around = moved(matrix, *all);
    if (keepsAxes(matrix)) {
      sum.add(around);
      return;
    }
    if (sum.box && sum.box->holds(around)) {
      return;
    }
  }
  forEach([&](ISceneObject& object) {
    SceneNest* const nest = object.nest();
    sum.add(nest ? nest->movedBounds(matrix, isFlat) : object.movedBounds(matrix));
  });
}

std::optional<SurfaceHit> ElementGroup::nearestHit(const Ray& ray) {
  std::optional<SurfaceHit> nearest;
  if (kind_ == Kind::kOutlines || !bounds() || !mayMeet(ray, *bounds())) {
    return nearest;
  }
  const DrawElem* element = first_;
  for (std::uint32_t i = 0; i < count_; ++i) {
    const bool isOutline = element->drawingMode == kOutlineMode;
    const auto hit = isOutline ? std::nullopt : element->own->nearestHit(ray);
    if (hit && (!nearest || hit->distance < nearest->distance)) {
      nearest = hit;
    }
    element = nextOf(*element);
  }
  return nearest;
}

bool ElementGroup::holdsOutside() {
  if (!holdsOutside_) {
    bool any = false;
    forEachNest([&](SceneNest& nest) { any = any || nest.list().holdsOutside(); });
    holdsOutside_ = any;
  }
  return *holdsOutside_;
}

void ElementGroup::addTo(BoundsSum& sum) {
  sum.add(bounds());
  sum_ = &sum;
}

bool ElementGroup::hidesLines() const {
  const DrawElem* element = hasTriangles() ? nullptr : first_;
  for (std::uint32_t i = 0; element && i < count_; ++i) {
    if (element->own->hidesLines()) {
      return true;
    }
    element = nextOf(*element);
  }
  return false;
}

GLuint ElementGroup::listFor(TriangleRun& run, const std::shared_ptr<DisplayLists>& lists,
                             bool isFlat) {
  Compiled& compiled = compiledFor(run.setting(), lists);
  if (compiled.name == 0) {
    compiled.name = lists->make();
  }
  if (compiled.name != 0 && (!compiled.calls || !compiled.calls->suit(run.setting()))) {
    const ListCompilation compilation(compiled.name);
    compiled.calls = emit(run.setting(), isFlat, nullptr);
  }
  if (compiled.name != 0) {
    run.pass(*compiled.calls);
  }
  return compiled.name;
}

/// The one of that context in which the triangles look alike, or a new one.
ElementGroup::Compiled& ElementGroup::compiledFor(const TriangleSetting& setting,
                                                  const std::shared_ptr<DisplayLists>& lists) {
  std::erase_if(compiled_, [](const Compiled& compiled) { return compiled.home.expired(); });
  const auto found =
      std::find_if(compiled_.begin(), compiled_.end(), [&](const Compiled& compiled) {
        return compiled.setting.looksLike(setting) && compiled.home.lock() == lists;
      });
  if (found != compiled_.end()) {
    std::rotate(found, std::next(found), compiled_.end());
    return compiled_.back();
  }
  if (compiled_.size() == kMostLists) {
    giveUp(compiled_.front());
    compiled_.erase(compiled_.begin());
  }
  return compiled_.emplace_back(Compiled{.home = lists, .setting = setting});
}

void ElementGroup::giveUp(const Compiled& compiled) noexcept {
  const auto home = compiled.home.lock();
  if (home && compiled.name != 0) {
    home->giveUp(compiled.name);
  }
}

void ElementGroup::forgetCalls() noexcept {
  for (Compiled& compiled : compiled_) {
    compiled.calls.reset();
  }
}

void ElementGroup::draw(TriangleRun& run, bool isFlat, const PickQuery* query) const {
  run.pass(emit(run.setting(), isFlat, query));
}

TriangleCalls ElementGroup::emit(const TriangleSetting& setting, bool isFlat,
                                 const PickQuery* query) const {
  TriangleEmitter emitter(setting);
  forEach([&](ISceneObject& object) {
    if (!query || object.mayBePicked(*query)) {
      const TriangleShape shape = object.triangleShape();
      emitter.add(isFlat ? flattened(shape) : shape);
    }
  });
  return emitter.finish();
}

void ElementGroup::objectChanged(SceneChange change) noexcept {
  forgetCalls();
  if (change != SceneChange::kLook) {
    holdsOutside_.reset();
    bounds_.isKnown = false;
    if (sum_) {
      sum_->isKnown = false;
    }
  }
  list_.tellOwner(change);
}

}  // namespace zyn
