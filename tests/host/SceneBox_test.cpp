// The box of a 3D view's scene through random changes: after each Add it is the box around all
// objects in the list, after UpdateParams likewise, and nothing else moves it. Compared with a view
// that is given the box expected.
#include <algorithm>
#include <memory>
#include <optional>

#include "support/ArrayVariant_win.h"
#include "support/ForeignBounds_win.h"
#include "support/Outer_win.h"
#include "support/RandomTriangles_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

using Box = std::optional<Bounds>;

void unite(Box& all, const Box& one) {
  if (!one) return;
  if (!all) {
    all = one;
    return;
  }
  all->xMin = std::min(all->xMin, one->xMin);
  all->xMax = std::max(all->xMax, one->xMax);
  all->yMin = std::min(all->yMin, one->yMin);
  all->yMax = std::max(all->yMax, one->yMax);
  all->zMin = std::min(all->zMin, one->zMin);
  all->zMax = std::max(all->zMax, one->zMax);
}

Bounds anyBounds(Random& rng) {
  const double x = rng.between(-20, 20);
  const double y = rng.between(-20, 20);
  const double z = rng.between(-20, 20);
  return {x, x + rng.between(0, 9), y, y + rng.between(0, 9), z, z + rng.between(0, 9)};
}

ComPtr<ForeignBox> boxObject(const Bounds& b) {
  return makeForeign<ForeignBox>(b.xMin, b.xMax, b.yMin, b.yMax, b.zMin, b.zMax);
}

/// An object and what the test knows of it.
struct Measured {
  ComPtr<IDispatch> object;
  ComPtr<IZYNGLTriangle> triangle;  ///< if it is or holds one
  ComPtr<IZYNPolyligne> trace;      ///< if it is one
  ComPtr<ForeignObject> outside;    ///< if it is one
  Box box;
  int asked = 0;  ///< how often the outside object has been asked for its box
};

class SceneBox : public HostTest {
 protected:
  SceneBox() {
    for (const View3DHost* view : {&host_, &expected_}) {
      view->get()->put_DrawCoordSys(VARIANT_FALSE);
      require(view->get()->initView(0), "initView");
    }
    require(expected_->Add(probe_->dispatch(), 0), "Add");
    probe_->onDraw3D = [this](int) {
      camera_ = currentCamera();
      return S_OK;
    };
  }

  using Measurable = std::unique_ptr<Measured>;

  void place(Measured& measured, Random& rng) const {
    const Bounds b = anyBounds(rng);
    measured.box = b;
    if (measured.triangle) {
      measured.triangle->setPoint(0, b.xMin, b.yMax, b.zMin);
      measured.triangle->setPoint(1, b.xMax, b.yMin, b.zMin);
      measured.triangle->setPoint(2, b.xMin, b.yMin, b.zMax);
    } else if (measured.trace) {
      require(
          measured.trace->setPoints3D(doubleArray({b.xMin, b.xMax}), doubleArray({b.yMax, b.yMin}),
                                      doubleArray({b.zMin, b.zMax})),
          "setPoints3D");
    }
  }
  Measurable makeTriangle(Random& rng) const {
    auto made = std::make_unique<Measured>();
    made->triangle = maker_.makeRandom(rng);
    made->object = made->triangle;
    place(*made, rng);
    return made;
  }
  Measurable makePart(Random& rng) const {
    auto made = std::make_unique<Measured>();
    const auto outer = makeForeign<Outer>();
    outer->inner = maker_.makePartOf(outer->dispatch());
    made->triangle = queryFor<IZYNGLTriangle>(outer->dispatch());
    made->object = outer->dispatch();
    place(*made, rng);
    return made;
  }
  Measurable makeTrace(Random& rng) const {
    auto made = std::make_unique<Measured>();
    made->trace = createObject<IZYNPolyligne>(L"ZYNModeleGeom.Polyligne");
    made->object = made->trace;
    if (!rng.oneIn(3)) place(*made, rng);  // else empty
    return made;
  }
  Measurable makeOther(Random& rng) const {
    auto made = std::make_unique<Measured>();
    made->outside = makeForeign<ForeignObject>();
    made->object = made->outside->dispatch();
    if (!rng.oneIn(3)) place(*made, rng);
    made->outside->onGetBox3D = [known = made.get()](IDispatch** box) {
      ++known->asked;
      return known->box ? handOut(boxObject(*known->box), box) : S_OK;
    };
    return made;
  }
  Measurable make(Random& rng) const {
    switch (rng.below(isWithOthers_ ? 7 : 4)) {
      case 0:
        return makeTrace(rng);
      case 4:
        return makePart(rng);
      case 5:
      case 6:
        return makeOther(rng);
      default:
        return makeTriangle(rng);
    }
  }

  /// Does it, and tells how often each outside object was asked for its box meanwhile.
  template <class Action>
  void expectAsked(int times, const Action& action) {
    for (const Measurable& each : pool_) each->asked = 0;
    action();
    for (const Measurable& each : pool_) {
      if (!each->outside) continue;
      const auto elements = std::count(list_.begin(), list_.end(), each.get());
      EXPECT_EQ(each->asked, times * elements);
    }
  }
  void measure() {
    box_.reset();
    for (const Measured* each : list_) unite(box_, each->box);
  }

  void add(Measured& measured) {
    list_.push_back(&measured);
    expectAsked(1, [&] { require(host_->Add(measured.object.Get(), 0), "Add"); });
    measure();
  }
  void remove(Measured& measured) {
    const auto found = std::find(list_.begin(), list_.end(), &measured);
    if (found != list_.end()) list_.erase(found);
    expectAsked(0, [&] { require(host_->Remove(measured.object.Get()), "Remove"); });
  }
  void change(Random& rng) {
    switch (rng.below(10)) {
      case 0:
      case 1:
      case 2:
        pool_.push_back(make(rng));
        return add(*pool_.back());
      case 3:
        return add(*pool_[rng.below(pool_.size())]);
      case 4:
      case 5:
        return remove(*pool_[rng.below(pool_.size())]);
      case 6:
        if (rng.oneIn(4)) {
          expectAsked(0, [&] { require(host_->RemoveAll(), "RemoveAll"); });
          list_.clear();
          require(host_->Add(probe_->dispatch(), 0), "Add");
          measure();
        }
        return;
      case 7:
        expectAsked(1, [&] { require(host_->UpdateParams(), "UpdateParams"); });
        return measure();
      default:
        // Not seen before the box is made again.
        place(*pool_[rng.below(pool_.size())], rng);
    }
  }

  /// What the axis views make of the scene's box.
  std::vector<double> seenBy(const View3DHost& view) {
    std::vector<double> seen;
    const auto note = [&] {
      _variant_t frame;
      require(view->XFormView(&frame), "XFormView");
      const auto values = doublesIn(frame);
      seen.insert(seen.end(), values.begin(), values.end());
    };
    view->VueXYp(0);
    note();
    view->VueXZm(0);
    note();
    view->VueYZp(0);
    note();
    view.paint();
    seen.insert(seen.end(), {camera_.zNear, camera_.zFar, camera_.width, camera_.height});
    return seen;
  }
  void compare() {
    std::vector<double> seen;
    expectAsked(0, [&] { seen = seenBy(host_); });
    if (!box_) {
      EXPECT_EQ(seen[12], 0) << "of an empty scene";
      return;
    }
    require(expected_->setViewBox(boxObject(*box_).Get()), "setViewBox");
    EXPECT_EQ(seen, seenBy(expected_));
  }

  void play(std::uint64_t seed) {
    Random rng(seed);
    pool_.clear();
    list_.clear();
    isWithOthers_ = rng.oneIn(2);
    pool_.push_back(make(rng));
    startOver(*pool_.back());
    for (std::size_t changes = 4 + rng.below(std::size_t{40}); changes > 0; --changes) {
      change(rng);
      if (rng.oneIn(4)) compare();
    }
    compare();
  }

  View3DHost host_{{60, 40}};
  View3DHost expected_{{60, 40}};

 private:
  /// A list of this object and the one that finds the camera out, which has no box.
  void startOver(Measured& first) {
    require(host_->RemoveAll(), "RemoveAll");
    require(host_->Add(probe_->dispatch(), 0), "Add");
    measure();
    add(first);
  }

  TriangleMaker maker_;
  std::vector<Measurable> pool_;
  std::vector<Measured*> list_;
  Box box_;                                                     ///< expected
  ComPtr<ForeignObject> probe_ = makeForeign<ForeignObject>();  ///< has no box
  DrawnCamera camera_;                                          ///< that it has seen last
  bool isWithOthers_ = true;
};

TEST_F(SceneBox, IsTheOneOfTheLastAdd) {
  for (std::uint64_t seed = 1; seed <= 60 && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    play(seed);
  }
}

}  // namespace
}  // namespace zyn::test
