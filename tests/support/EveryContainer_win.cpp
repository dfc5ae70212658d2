#include "support/EveryContainer_win.h"

#include "support/Pickable_win.h"

namespace zyn::test {

EveryContainer::EveryContainer() : plate_(makePickable({7}, {0, 1, 0, 1, 0})) {
  plate_->onDraw2D = plate_->onDraw3D;
  addEverywhere(triangle_.Get());
  addEverywhere(label_.Get());
  select(plate_->dispatch());
  require(view3D_->initView(0), "initView");
  require(view3D_->VueXYp(0), "VueXYp");
  require(view2D_->initView(), "initView");
}

void EveryContainer::addEverywhere(IDispatch* object) {
  require(view3D_->Add(object, 0), "Add");
  require(view2D_->Add(object, 0), "Add");
  scene_.add(object);
  graph_.add(object);
}

void EveryContainer::select(IDispatch* object) const {
  require(view3D_->AddSelection(object), "AddSelection");
  require(view2D_->AddSelection(object), "AddSelection");
}

EveryContainer::Look EveryContainer::look() {
  view3D_.paint();
  view2D_.paint();
  return {view3D_.shown(),
          view2D_.shown(),
          view3D_.picture({30, 20}),
          view2D_.picture({30, 20}),
          scene_.renderBytes(),
          graph_.renderBytes(),
          picked3D(),
          picked2D()};
}

std::vector<long> EveryContainer::picked3D() const {
  _variant_t names;
  require(view3D_->getSelectionUnderMouse(30, 20, &names), "getSelectionUnderMouse");
  return namesIn(names);
}

std::vector<long> EveryContainer::picked2D() {
  view2D_.forgetEvents();
  view2D_.send(WM_LBUTTONDBLCLK, 30, 20);
  view2D_.send(WM_LBUTTONUP, 30, 20);
  const auto events = view2D_.events(GraphEvent::MouseSelectionDblClick);
  return events.empty() ? std::vector<long>() : namesIn(events[0].arguments[0]);
}

}  // namespace zyn::test
