#include "view/RegionSelection_com.h"

#include <algorithm>
#include <optional>

#include "glcontext/MovedSpace_gl.h"
#include "glcontext/StateGuards_gl.h"
#include "glcontext/StateQuery_gl.h"
#include "scene/SceneNest_com.h"
#include "view/FeedbackPass_gl.h"
#include "view/FeedbackShapes.h"
#include "view/PickPass_gl.h"

namespace zyn {

namespace {

using Name = std::optional<std::int32_t>;

/// The drawing mode that asks objects to draw themselves for picking.
constexpr std::uint32_t kSelectionMode = 0xFFFFFFFF;

/// Pixels around a region that are looked at with it: what is cut off shows that it leaves the
/// region.
constexpr double kMargin = 2.0;

/// How many times the view is looked at around it for what lies outside altogether.
constexpr double kAround = 1000.0;

/// Pixels beyond the view's edges that a region counts at most: single precision tells them apart.
constexpr double kFarthest = 1e5;

PlaneBox overlap(const PlaneBox& a, const PlaneBox& b) {
  return {std::max(a.xMin, b.xMin), std::min(a.xMax, b.xMax), std::max(a.yMin, b.yMin),
          std::min(a.yMax, b.yMax)};
}

bool isEmpty(const PlaneBox& box) { return box.xMin >= box.xMax || box.yMin >= box.yMax; }

PlaneBox grown(const PlaneBox& box, double by) {
  return {box.xMin - by, box.xMax + by, box.yMin - by, box.yMax + by};
}

bool holds(const PlaneBox& box, const PlanePoint& point) {
  return point.x >= box.xMin && point.x <= box.xMax && point.y >= box.yMin && point.y <= box.yMax;
}

/// What a query asks of what groups around it move.
struct Placed {
  RegionQuery query;
  std::optional<GlMatrix> place{};  ///< none without groups around it

  Placed within(const SceneNest& nest) const {
    return {query.moved(nest.place()), place ? product(*place, nest.place()) : nest.place()};
  }
};

/// What an element of a list has, which may go while it is drawn.
struct Held {
  explicit Held(const DrawElem& element) {
    copy.object = element.object;
    copy.own = element.own;
    copy.pickName = element.pickName;
    copy.drawingMode = kSelectionMode;  // also where a group around it has another
  }

  SceneNest* nest() const { return copy.own ? copy.own->nest() : nullptr; }

  DrawElem copy;
};

class RegionSearch {
 public:
  RegionSearch(const PlaneRegion& region, const RegionView& view)
      : view_(view),
        near_(overlap(grown(region.bounds(), kMargin),
                      grown({0, static_cast<double>(view.client.width), 0,
                             static_cast<double>(view.client.height)},
                            kFarthest))),
        around_(grown(near_, kAround * std::max(view.client.width, view.client.height))) {}

  /// Calls `found` with the names that are asked for. Groups without a name stand for the objects
  /// in them.
  template <class Found>
  void search(CListTrace& list, const Placed& at, const Found& found) {
    list.forEach([&](const DrawElem& element) {
      const Name told = element.own ? element.own->selectionName() : std::nullopt;
      const bool isNest = element.own && element.own->nest();
      if (isNest && !(told && *told >= 0)) {
        const Held held(element);
        if (held.nest()->isShown()) {
          search(held.nest()->list(), at.within(*held.nest()), found);
        }
      } else if (!told || *told >= 0) {
        if (const Name name = nameIfMet(element, told, at)) {
          found(*name);
        }
      }
    });
  }

 private:
  Name nameIfMet(const DrawElem& element, Name told, const Placed& at) {
    if (const auto coverage = toldCoverage(element, at)) {
      const Name name = told.value_or(element.pickName);
      return *name >= 0 && at.query.isMetBy(*coverage) ? name : std::nullopt;
    }
    Held held(element);
    const Name name = told ? told : drawnName(held, at);
    return name && at.query.isMetBy(coverageOf(held, at)) ? name : std::nullopt;
  }

  static std::optional<Coverage> toldCoverage(const DrawElem& element, const Placed& at) {
    return element.own ? element.own->coverage(at.query) : std::nullopt;
  }

  Coverage coverageOf(Held& held, const Placed& at) {
    SceneNest* const nest = held.nest();
    return !nest             ? drawnCoverage(held, at)
           : nest->isShown() ? coverageIn(nest->list(), at.within(*nest))
                             : Coverage::kNothing;
  }

  /// Of all objects of a group.
  Coverage coverageIn(CListTrace& list, const Placed& at) {
    Coverage covered = Coverage::kNothing;
    list.forEach([&](const DrawElem& element) {
      if (at.query.isSettledBy(covered)) {
        return;
      }
      const auto told = toldCoverage(element, at);
      if (told) {
        covered = joined(covered, *told);
      } else {
        Held held(element);
        covered = joined(covered, coverageOf(held, at));
      }
    });
    return covered;
  }

  PicturePart partOf(const PlaneBox& box) const {
    const double width = view_.client.width;
    const double height = view_.client.height;
    return {box.xMin / width, box.xMax / width, 1 - box.yMax / height, 1 - box.yMin / height};
  }

  void draw(Held& held, const Placed& at, const PicturePart& part) const {
    const PushedAttributes enabled(GL_ENABLE_BIT | GL_POLYGON_BIT);
    glDisable(GL_CULL_FACE);
    view_.look(part);
    ListPass pass = view_.pass;
    ViewAxes around;
    std::optional<MovedSpace> space;
    if (at.place) {
      around = {matrixState(GL_MODELVIEW_MATRIX), enumState(GL_FRONT_FACE)};
      pass.axes = &around;
      space.emplace(*at.place, false);
    }
    if (!space || space->isUsable()) {
      CListTrace::draw3D(held.copy, pass);
    }
  }

  /// The outermost name under which an object shows something about the region; that of its
  /// attribute where it pushes none.
  Name drawnName(Held& held, const Placed& at) const {
    if (isEmpty(near_)) {
      return std::nullopt;
    }
    const PickRegion region{(near_.xMin + near_.xMax) / 2, (near_.yMin + near_.yMax) / 2,
                            near_.xMax - near_.xMin, near_.yMax - near_.yMin};
    const PickRecords records =
        runPickPass({.region = region}, [&](const PicturePart& part) { draw(held, at, part); });
    for (const PickRecord& record : records.all()) {
      if (!record.names.empty()) {
        return record.names.front();
      }
    }
    const bool hasName = !records.all().empty() && held.copy.pickName >= 0;
    return hasName ? Name(held.copy.pickName) : std::nullopt;
  }

  Coverage drawnCoverage(Held& held, const Placed& at) const {
    Coverage covered = Coverage::kNothing;
    if (isEmpty(near_)) {
      return covered;
    }
    forEachShape(held, at, near_, [&](std::span<const PlanePoint> shape) {
      covered = joined(covered, at.query.region().ofPolygon(shape));
    });
    if (at.query.asksForWhole() && at.query.isMetBy(covered)) {
      forEachShape(held, at, around_, [&](std::span<const PlanePoint> shape) {
        const bool isNear = std::all_of(shape.begin(), shape.end(),
                                        [&](const PlanePoint& p) { return holds(near_, p); });
        covered = isNear ? covered : Coverage::kPart;
      });
    }
    return covered;
  }

  /// Calls `visit` with what an object shows within a rectangle, in pixels of the view.
  template <class Visit>
  void forEachShape(Held& held, const Placed& at, const PlaneBox& box, Visit visit) const {
    GLint viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    const double xScale = (box.xMax - box.xMin) / viewport[2];
    const double yScale = (box.yMax - box.yMin) / viewport[3];
    const std::vector<float> buffer =
        runFeedbackPass(partOf(box), [&](const PicturePart& part) { draw(held, at, part); });
    FeedbackShapes shapes(buffer);
    std::vector<PlanePoint> pixels;
    while (const auto shape = shapes.next()) {
      pixels.clear();
      for (const PlanePoint& corner : *shape) {
        pixels.push_back({box.xMin + (corner.x - viewport[0]) * xScale,
                          box.yMax - (corner.y - viewport[1]) * yScale});
      }
      visit(std::span<const PlanePoint>(pixels));
    }
  }

  const RegionView& view_;
  const PlaneBox near_;
  const PlaneBox around_;
};

}  // namespace

std::vector<std::int32_t> namesInRegion(CListTrace& list, const RegionQuery& query,
                                        const RegionView& view) {
  RegionSearch search(query.region(), view);
  std::vector<std::int32_t> names;
  search.search(list, Placed{query}, [&](std::int32_t name) { names.push_back(name); });
  return names;
}

}  // namespace zyn
