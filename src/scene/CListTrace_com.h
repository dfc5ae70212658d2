#pragma once

#include <windows.h>

#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <optional>

#include "ZYNMODELEGEOM.h"
#include "contract/TextView_win.h"
#include "core/ZYNList.h"
#include "glcontext/DisplayLists_gl.h"
#include "platform/HostState_win.h"
#include "scene/DrawElem_com.h"
#include "scene/ElementGroup_com.h"

namespace zyn {

/// What a list draws for.
struct ListPass {
  std::uint32_t overrideMode = 0;  ///< counts in place of each object's own mode when it is not 0
  TextView texts{};                ///< handed to our texts before they draw
  std::shared_ptr<DisplayLists> lists{};  ///< of the current context; null: draw without lists
  double opacity = 1.0;                   ///< by which objects of ours multiply alpha, 0 to 1
  std::int32_t names = 0;  ///< that groups around the list have on the selection stack
};

/// The objects that a view or an offscreen context draws, in the order in which they were added.
/// Owns its elements, and through them one reference on each object.
///
/// Adding, removing and measuring an object costs the same whatever the length of the list, and
/// triangles that stand together are drawn together: see ElementGroup.
class CListTrace : private ZYNList<DrawElem*> {
 public:
  /// `owner`, if any, is told of every change of the list and of objects of ours in it.
  explicit CListTrace(SceneWatcher* owner = nullptr) : owner_(owner) {}
  CListTrace(const CListTrace&) = delete;
  CListTrace& operator=(const CListTrace&) = delete;
  ~CListTrace() override;

  using ZYNList::count;
  using ZYNList::head;
  using ZYNList::Node;
  using ZYNList::Walk;

  /// Appends `object`; a null object is ignored. Throws _com_error when the object fails while it
  /// is asked for its pick name, with the list unchanged.
  void add(IDispatch* object, std::uint32_t mode);

  /// What `add` appends, for a caller that appends several or none; null for a null object.
  static std::unique_ptr<DrawElem> makeElement(IDispatch* object, std::uint32_t mode);

  void add(std::unique_ptr<DrawElem> element);

  /// Removes the first element of `object`. Whether there was one.
  bool removeFirst(IDispatch* object);

  /// Removes every element of `object`.
  void removeEvery(IDispatch* object);

  void removeAll();

  /// Whether drawing one of the objects may take fonts.
  bool mayHoldText();

  /// The box around the objects of ours; none while these are empty.
  std::optional<Box3> ownBounds();

  /// Calls `visit` for the objects of other components, which may change the list meanwhile.
  template <class Visit>
  void forEachOutside(Visit visit);

  void tellOwner(SceneChange change) const noexcept {
    if (owner_) {
      owner_->objectChanged(change);
    }
  }

  /// Draws every drawable object in list order, as if Draw3D of each were called. Objects may
  /// change the list while they draw. Throws _com_error when one fails.
  void draw3D(const ListPass& pass);

  /// The same with Draw2D, without depth test: what comes later lies on top.
  void draw2D(const ListPass& pass);

 private:
  struct Drawing;

  Node* makeNode(DrawElem* element) override { return &element->node; }
  void freeNode(Node*) override {}

  void enter(DrawElem& element);
  void leave(DrawElem& element);
  void closeGap(ElementGroup& group);
  DrawElem* find(IDispatch* object);
  std::unique_ptr<DrawElem> release(DrawElem& element);

  void draw(Drawing& drawing);
  static void drawObject(DrawElem& element, Drawing& drawing);
  static void drawOutside(IDispatch* object, int mode, Drawing& drawing);
  static void drawRun(Walk& walk, Drawing& drawing);

  SceneWatcher* owner_;
  using Groups = std::list<ElementGroup>;
  Groups groups_;      ///< in the order of the list
  BoundsSum settled_;  ///< box of all groups but the last
  /// The elements with objects of other components; those of one object in the order of the list.
  std::multimap<IDispatch*, DrawElem*> outside_;
};

template <class Visit>
void CListTrace::forEachOutside(Visit visit) {
  if (outside_.empty()) {
    return;
  }
  for (Walk walk(*this); walk; walk.advance()) {
    if (ElementGroup* const group = ElementGroup::of(**walk)) {
      walk.stand(group->last().node);
    } else {
      const Microsoft::WRL::ComPtr<IDispatch> object = (*walk)->object;
      visit(object.Get());
      HostState::setOurs();
    }
  }
}

}  // namespace zyn
