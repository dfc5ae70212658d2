#pragma once

#include <windows.h>

#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <optional>

#include "ZYNMODELEGEOM.h"
#include "contract/TextView_win.h"
#include "core/AxisLogs.h"
#include "core/ZYNList.h"
#include "glcontext/DisplayLists_gl.h"
#include "platform/HostState_win.h"
#include "scene/DrawElem_com.h"
#include "scene/ElementGroup_com.h"

namespace zyn {

class SceneNest;

/// What a list draws for.
struct ListPass {
  std::uint32_t overrideMode = 0;  ///< counts in place of each object's own mode when it is not 0
  TextView texts{};                ///< handed to our texts before they draw
  std::shared_ptr<DisplayLists> lists{};  ///< of the current context; null: draw without lists
  double opacity = 1.0;                   ///< by which objects of ours multiply alpha, 0 to 1
  std::int32_t names = 0;          ///< that groups around the list have on the selection stack
  const ViewAxes* axes = nullptr;  ///< see DrawPass
  bool onlyOutside = false;        ///< leave out what is not of other components
  DepthPhase depth = DepthPhase::kAlone;
  AxisLogs logs{};         ///< see DrawPass
  bool isInGraph = false;  ///< see DrawPass
};

/// The objects that a view or an offscreen context draws, in the order in which they were added.
/// Owns its elements, and through them one reference on each object.
///
/// Adding, removing and measuring an object costs the same whatever the length of the list, and
/// triangles that stand together are drawn together: see ElementGroup. Groups among the objects
/// (SceneNest) have lists of their own.
class CListTrace : private ZYNList<DrawElem*, ZYNLink<DrawElem>> {
 public:
  /// `owner`, if any, is told of every change of the list and of objects of ours in it. `isFlat`:
  /// it is drawn by draw2D.
  explicit CListTrace(SceneWatcher* owner = nullptr, bool isFlat = false)
      : owner_(owner), isFlat_(isFlat) {}
  /// What a group holds.
  CListTrace(SceneWatcher& owner, SceneNest& nest) : owner_(&owner), nest_(&nest) {}
  CListTrace(const CListTrace&) = delete;
  CListTrace& operator=(const CListTrace&) = delete;
  ~CListTrace() override;

  using ZYNList::count;
  using ZYNList::head;
  using ZYNList::Node;
  using ZYNList::previous;
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

  /// The object at a place, from 0 to below count(); the next place takes no time.
  IDispatch* at(std::size_t index);

  bool isFlat() const { return isFlat_; }
  /// The group that the list belongs to; null for that of a view or a context.
  SceneNest* nest() const { return nest_; }

  bool holdsNests() const { return nests_ != 0; }
  /// Whether there are objects of other components, also within groups.
  bool holdsOutside();
  /// Whether drawing one of the objects, also within groups, may take fonts.
  bool mayHoldText();

  /// The box around the objects of ours; none while these are empty.
  std::optional<Box3> ownBounds();

  /// Calls `visit` for each element in the order of the list, which may be changed meanwhile.
  template <class Visit>
  void forEach(Visit visit) {
    for (Walk walk(*this); walk; walk.advance()) {
      visit(**walk);
    }
  }

  /// Calls `visit` for each object of ours that takes fonts, which leaves the list as it is.
  template <class Visit>
  void forEachWithFonts(const Visit& visit) const {
    for (const Node* node = head(); node; node = node->next) {
      const DrawElem& element = *node->get();
      if (const ElementGroup* const group = ElementGroup::of(element);
          group && group->hasTriangles()) {
        node = &group->last().node();
      } else if (element.own && element.own->takesFonts()) {
        visit(element);
      }
    }
  }

  /// The same of the objects moved by a matrix, in the plane if `isFlat`: exactly around what they
  /// show.
  std::optional<Box3> movedBounds(const GlMatrix& matrix, bool isFlat);

  /// Where a ray first meets a surface that objects of ours show.
  std::optional<SurfaceHit> nearestHit(const Ray& ray);

  /// Calls `visit(object, place)` for the objects of other components, which may change the list
  /// meanwhile, also for those within groups that are shown: these are moved by `place`, which is
  /// null for the others, or what moves the list itself if that is given. See SceneNest_com.h.
  template <class Visit>
  void forEachOutside(const Visit& visit, bool isFlat, const GlMatrix* place = nullptr);

  /// Calls `visit` for the groups in the list, which is not to change the list.
  template <class Visit>
  void forEachNest(const Visit& visit) const;

  void tellOwner(SceneChange change) const noexcept {
    if (owner_) {
      owner_->objectChanged(change);
    }
  }

  /// Whether an object of ours hides others by surfaces of which only the depth is drawn.
  bool hidesLines();

  /// Draws every drawable object in list order, as if Draw3D of each were called. Objects may
  /// change the list while they draw. Throws _com_error when one fails.
  void draw3D(const ListPass& pass);

  /// The same for one of its elements, which may be gone afterwards.
  static void draw3D(DrawElem& element, const ListPass& pass);

  /// The same with Draw2D, without depth test: what comes later lies on top.
  void draw2D(const ListPass& pass);
  static void draw2D(DrawElem& element, const ListPass& pass);

 private:
  struct Drawing;

  void enter(DrawElem& element);
  void leave(DrawElem& element);
  void closeGap(ElementGroup& group);
  DrawElem* find(IDispatch* object);
  std::unique_ptr<DrawElem> release(DrawElem& element);

  void draw(Drawing& drawing);
  void drawDepth(const ListPass& pass);
  static void drawAlone(DrawElem& element, Drawing& drawing);
  static void drawObject(DrawElem& element, Drawing& drawing);
  static void drawOutside(IDispatch* object, int mode, Drawing& drawing);
  static void drawRun(Walk& walk, Drawing& drawing);

  SceneWatcher* owner_;
  SceneNest* nest_ = nullptr;
  bool isFlat_ = false;
  std::size_t nests_ = 0;        ///< how many elements are groups
  std::size_t cursorIndex_ = 0;  ///< of the element at the cursor
  using Groups = std::list<ElementGroup>;
  Groups groups_;      ///< in the order of the list
  BoundsSum settled_;  ///< box of all groups but the last
  /// The elements with objects of other components; those of one object in the order of the list.
  std::multimap<IDispatch*, DrawElem*> outside_;
};

}  // namespace zyn
