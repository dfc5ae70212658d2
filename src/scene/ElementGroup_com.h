#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <optional>

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

  bool isIn(const CListTrace& list) const { return &list_ == &list; }

  /// Where the list keeps the group.
  using Place = std::list<ElementGroup>::iterator;
  Place place() const { return place_; }
  void setPlace(Place place) { place_ = place; }

  Kind kind() const { return kind_; }
  bool hasTriangles() const { return kind_ != Kind::kObjects; }
  std::uint32_t count() const { return count_; }
  DrawElem& last() const { return *last_; }

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

  /// None while all objects are empty.
  const std::optional<Box3>& bounds();

  /// Adds its box to a sum, which is from then on told of changes, and outlives the group.
  void addTo(BoundsSum& sum);

  /// The display list that draws the triangles as the run wants them, in the current context whose
  /// lists these are; 0 when the context has no list left. Tells the run.
  GLuint listFor(TriangleRun& run, const std::shared_ptr<DisplayLists>& lists, bool isFlat);

  /// Draws the triangles at once, in a selection pass those only that may be picked. Tells the run.
  void draw(TriangleRun& run, bool isFlat, const PickQuery* query) const;

  void objectChanged(SceneChange change) noexcept override;

 private:
  TriangleCalls emit(const TriangleSetting& setting, bool isFlat, const PickQuery* query) const;
  void forgetList();

  const CListTrace& list_;
  Kind kind_;
  Place place_;
  std::uint32_t count_ = 0;
  DrawElem* first_ = nullptr;
  DrawElem* last_ = nullptr;

  BoundsSum bounds_;
  BoundsSum* sum_ = nullptr;  ///< of which its own box is a part

  std::weak_ptr<DisplayLists> home_;    ///< of the context that has the list
  GLuint name_ = 0;                     ///< of the list
  std::optional<TriangleCalls> calls_;  ///< in the list; none when it has to be compiled
};

}  // namespace zyn
