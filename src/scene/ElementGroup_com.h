#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <optional>
#include <vector>

#include "core/Box3.h"
#include "glcontext/DisplayLists_gl.h"
#include "objects/triangle/TriangleRun_gl.h"
#include "scene/DrawElem_com.h"

namespace zyn {

class CListTrace;

/// A box that is the sum of others.
struct BoundsSum {
  std::optional<Box3> box;
  bool isKnown = true;  ///< until one of the others changes

  void add(const std::optional<Box3>& more) {
    if (box && more) {
      box->unite(*more);
    } else if (more) {
      box = more;
    }
  }
};

/// Neighbouring elements of a draw list with objects of ours, of which the list keeps what it
/// would otherwise work out again and again: their box and, for triangles that are drawn in the
/// same way, a display list.
class ElementGroup final : public SceneWatcher {
 public:
  enum class Kind {
    kObjects,   ///< each draws itself
    kNests,     ///< groups, which hold other objects
    kSurfaces,  ///< triangles
    kOutlines   ///< triangles in mode 1
  };

  /// Large enough for display lists to draw fast, small enough to compile one for each change.
  static constexpr std::uint32_t kMostElements = 512;

  /// The drawing mode that shows triangles as outlines.
  static constexpr std::uint32_t kOutlineMode = 1;

  ElementGroup(const CListTrace& list, Kind kind) : list_(list), kind_(kind) {}
  ~ElementGroup();
  ElementGroup(const ElementGroup&) = delete;
  ElementGroup& operator=(const ElementGroup&) = delete;

  /// For elements with an object of ours.
  static Kind kindOf(const DrawElem& element);
  /// The group of an element; null for an object of another component.
  static ElementGroup* of(const DrawElem& element) {
    return static_cast<ElementGroup*>(element.watcher);
  }

  /// Where the list keeps the group.
  using Place = std::list<ElementGroup>::iterator;
  Place place() const { return place_; }
  void setPlace(Place place) { place_ = place; }

  Kind kind() const { return kind_; }
  bool hasTriangles() const { return kind_ == Kind::kSurfaces || kind_ == Kind::kOutlines; }
  std::uint32_t count() const { return count_; }
  DrawElem& last() const { return *last_; }
  bool isFirst(const DrawElem& element) const { return first_ == &element; }

  /// The group right behind this one in the list, if it is of the same kind.
  ElementGroup* successor() const;

  bool accepts(const DrawElem& element) const {
    return count_ < kMostElements && kindOf(element) == kind_;
  }
  /// Takes an element in that stands right behind the last one.
  void append(DrawElem& element);
  /// Lets an element go that is still linked in its list.
  void remove(DrawElem& element);
  /// Takes in all elements of its successor, which is empty then.
  void absorb(ElementGroup& successor);

  /// Calls `visit` for each element that is a group.
  template <class Visit>
  void forEachNest(const Visit& visit) const {
    if (kind_ == Kind::kNests) {
      forEach([&](ISceneObject& object) { visit(*object.nest()); });
    }
  }

  /// Whether there are objects of other components in the groups that these elements are.
  bool holdsOutside();

  /// Whether one of the objects does.
  bool hidesLines() const;

  /// None while all objects are empty.
  const std::optional<Box3>& bounds();

  /// Adds the bounds of the moved objects to a sum.
  void addMoved(const GlMatrix& matrix, bool isFlat, BoundsSum& sum);

  /// Where a ray first meets a surface that the objects show.
  std::optional<SurfaceHit> nearestHit(const Ray& ray);

  /// Adds its box to a sum, which is from then on told of changes, and outlives the group.
  void addTo(BoundsSum& sum);

  /// The display list that draws the triangles as the run wants them, in the current context whose
  /// lists these are; 0 when the context has no list left. Tells the run. There is one for each
  /// context and each opacity in which they are drawn, of the last kMostLists.
  GLuint listFor(TriangleRun& run, const std::shared_ptr<DisplayLists>& lists, bool isFlat);

  /// Draws the triangles at once, in a selection pass those only that may be picked. Tells the run.
  void draw(TriangleRun& run, bool isFlat, const PickQuery* query) const;

  void objectChanged(SceneChange change) noexcept override;
  const CListTrace* watchingList() const noexcept override { return &list_; }

 private:
  /// A display list of one context.
  struct Compiled {
    std::weak_ptr<DisplayLists> home;      ///< of the context that has the list
    GLuint name = 0;                       ///< of the list
    TriangleSetting setting{};             ///< the latest for which it was asked
    std::optional<TriangleCalls> calls{};  ///< in the list; none when it has to be compiled
  };
  static constexpr std::size_t kMostLists = 16;

  Compiled& compiledFor(const TriangleSetting& setting, const std::shared_ptr<DisplayLists>& lists);
  void shareCorners(DrawElem& added);
  static void giveUp(const Compiled& compiled) noexcept;
  void forgetCalls() noexcept;
  TriangleCalls emit(const TriangleSetting& setting, bool isFlat, const PickQuery* query) const;
  template <class Visit>
  void forEach(Visit visit) const;
  /// The element behind one in the list; null for the last.
  static DrawElem* nextOf(const DrawElem& element) {
    ZYNLink<DrawElem>* const next = element.node().next;
    return next ? next->get() : nullptr;
  }

  const CListTrace& list_;
  Kind kind_;
  Place place_;
  std::uint32_t count_ = 0;
  DrawElem* first_ = nullptr;
  DrawElem* last_ = nullptr;

  BoundsSum bounds_;
  BoundsSum* sum_ = nullptr;  ///< of which its own box is a part
  std::optional<bool> holdsOutside_;

  std::vector<Compiled> compiled_;  ///< the one that was last asked for at the end
};

template <class Visit>
void ElementGroup::forEach(Visit visit) const {
  const DrawElem* element = first_;
  for (std::uint32_t left = count_; element && left > 0; --left) {
    visit(*element->own);
    element = nextOf(*element);
  }
}

}  // namespace zyn
