#include "scene/ElementGroup_com.h"

#include <utility>

#include "scene/CListTrace_com.h"

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

DrawElem* nextOf(const DrawElem& element) {
  return element.node.next ? element.node.next->value : nullptr;
}

}  // namespace

ElementGroup::~ElementGroup() { forgetList(); }

ElementGroup::Kind ElementGroup::kindOf(const DrawElem& element) {
  if (!element.own->isTriangle()) {
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
  last_ = &element;
  calls_.reset();
  if (bounds_.isKnown) {
    bounds_.add(element.own->modelBounds());
  }
}

void ElementGroup::remove(DrawElem& element) {
  element.own->watch().leave(element);
  element.watcher = nullptr;
  --count_;
  if (&element == first_) {
    first_ = nextOf(element);
  }
  if (&element == last_) {
    last_ = count_ > 0 ? element.node.previous()->value : nullptr;
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
    const DrawElem* element = first_;
    for (std::uint32_t i = 0; i < count_; ++i) {
      bounds_.add(element->own->modelBounds());
      element = nextOf(*element);
    }
  }
  return bounds_.box;
}

void ElementGroup::addTo(BoundsSum& sum) {
  sum.add(bounds());
  sum_ = &sum;
}

GLuint ElementGroup::listFor(TriangleRun& run, const std::shared_ptr<DisplayLists>& lists,
                             bool isFlat) {
  if (home_.lock() != lists) {
    forgetList();
    home_ = lists;
  }
  if (name_ == 0) {
    name_ = lists->make();
  }
  if (name_ != 0 && (!calls_ || !calls_->suit(run.setting()))) {
    const ListCompilation compilation(name_);
    calls_ = emit(run.setting(), isFlat, nullptr);
  }
  if (name_ != 0) {
    run.pass(*calls_);
  }
  return name_;
}

void ElementGroup::draw(TriangleRun& run, bool isFlat, const PickQuery* query) const {
  run.pass(emit(run.setting(), isFlat, query));
}

TriangleCalls ElementGroup::emit(const TriangleSetting& setting, bool isFlat,
                                 const PickQuery* query) const {
  TriangleEmitter emitter(setting);
  const DrawElem* element = first_;
  for (std::uint32_t i = 0; i < count_; ++i) {
    if (!query || element->own->mayBePicked(*query)) {
      const TriangleShape shape = element->own->triangleShape();
      emitter.add(isFlat ? flattened(shape) : shape);
    }
    element = nextOf(*element);
  }
  return emitter.finish();
}

void ElementGroup::objectChanged(SceneChange change) noexcept {
  calls_.reset();
  if (change != SceneChange::kLook) {
    bounds_.isKnown = false;
    if (sum_) {
      sum_->isKnown = false;
    }
  }
  list_.tellOwner(change);
}

void ElementGroup::forgetList() {
  const auto home = home_.lock();
  if (home && name_ != 0) {
    home->giveUp(name_);
  }
  name_ = 0;
  calls_.reset();
}

}  // namespace zyn
