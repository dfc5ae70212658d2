// The boxes of groups, and the views that follow them: where what a group holds is shown, exactly,
// and nothing of what it hides.
#include <cmath>

#include "support/ForeignBounds_win.h"
#include "support/Groups_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

class GroupeBoxes : public HostTest {
 protected:
  using Box = std::vector<double>;  ///< x, y and z, least and greatest; empty for none

  static Box box3D(IUnknown* object) {
    ComPtr<IDispatch> found;
    require(queryFor<IGLDraw>(object)->GetBox3D(&found), "GetBox3D");
    if (!found) return {};
    const auto box = queryFor<IZYNBox3D>(found.Get());
    Box sides(6);
    box->get_XMin(&sides[0]);
    box->get_XMax(&sides[1]);
    box->get_YMin(&sides[2]);
    box->get_YMax(&sides[3]);
    box->get_ZMin(&sides[4]);
    box->get_ZMax(&sides[5]);
    return sides;
  }
  static Box box2D(IUnknown* object) {
    ComPtr<IDispatch> found;
    require(queryFor<IGLDraw>(object)->GetBox2D(&found), "GetBox2D");
    if (!found) return {};
    const auto box = queryFor<IZYNBox2D>(found.Get());
    Box sides(4);
    box->get_XMin(&sides[0]);
    box->get_XMax(&sides[1]);
    box->get_YMin(&sides[2]);
    box->get_YMax(&sides[3]);
    return sides;
  }
  static void expectNear(const Box& found, const Box& expected) {
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
      EXPECT_NEAR(found[i], expected[i], 1e-12) << "side " << i;
    }
  }
  static ComPtr<ForeignObject> makeBoxed(const Bounds& b) {
    auto object = makeForeign<ForeignObject>();
    object->onGetBox3D = [b](IDispatch** box) {
      const auto made = makeForeign<ForeignBox>(b.xMin, b.xMax, b.yMin, b.yMax, b.zMin, b.zMax);
      *box = ComPtr<IDispatch>(made->dispatch()).Detach();
      return S_OK;
    };
    return object;
  }

  /// A triangle whose box is twice as large as what it covers.
  static std::vector<ComPtr<IDispatch>> makeContent() {
    MovedObjects objects;
    objects.triangle({0, 0, 0}, {2, 0, 0}, {2, 2, 1}, kRed);
    return objects.all();
  }
};

TEST_F(GroupeBoxes, NothingHasNone) {
  const auto group = makeGroup();
  EXPECT_EQ(box3D(group.Get()), Box());
  EXPECT_EQ(box2D(group.Get()), Box());
  addTo(group.Get(), makeGroup().Get());
  addTo(group.Get(), makeForeign<ForeignObject>()->dispatch());
  EXPECT_EQ(box3D(group.Get()), Box());
}

TEST_F(GroupeBoxes, AreExactlyAroundTheMovedPoints) {
  const auto group = makeGroup(makeContent());
  EXPECT_EQ(box3D(group.Get()), (Box{0, 2, 0, 2, 0, 1}));
  EXPECT_EQ(box2D(group.Get()), (Box{0, 2, 0, 2}));
  move(group.Get(), translation(10, -5, 0.5));
  EXPECT_EQ(box3D(group.Get()), (Box{10, 12, -5, -3, 0.5, 1.5}));
  EXPECT_EQ(box2D(group.Get()), (Box{10, 12, -5, -3}));
  move(group.Get(), scaling(-3, 1, 2));
  EXPECT_EQ(box3D(group.Get()), (Box{-6, 0, 0, 2, 0, 2}));
  // The box of the moved box would reach to y = 2 * sqrt(2) and x = -sqrt(2).
  const double root = std::sqrt(2.0);
  move(group.Get(), rotation({0, 0, 1}, 45));
  expectNear(box3D(group.Get()), {0, root, 0, 2 * root, 0, 1});
  expectNear(box2D(group.Get()), {0, root, 0, 2 * root});
}

TEST_F(GroupeBoxes, OfTracesAreExactToo) {
  MovedObjects objects;
  objects.trace({{0, 0, 0}, {1, 1, 0}, {2, 2, 0}}, kRed);
  const auto group = makeGroup(objects.all(), rotation({0, 0, 1}, -45));
  expectNear(box3D(group.Get()), {0, 2 * std::sqrt(2.0), 0, 0, 0, 0});
}

TEST_F(GroupeBoxes, OfGroupsInGroups) {
  const auto inner = makeGroup(makeContent(), rotation({0, 0, 1}, 20));
  const auto outer = makeGroup({ComPtr<IDispatch>(inner.Get())}, rotation({0, 0, 1}, 25));
  const double root = std::sqrt(2.0);
  expectNear(box3D(outer.Get()), {0, root, 0, 2 * root, 0, 1});
  move(inner.Get(), rotation({0, 0, 1}, -25));
  expectNear(box3D(outer.Get()), {0, 2, 0, 2, 0, 1});
  addTo(outer.Get(), makeContent()[0].Get());
  addTo(outer.Get(), inner.Get());
  EXPECT_GT(box3D(outer.Get())[3], 2.5);
}

TEST_F(GroupeBoxes, FollowTheirObjects) {
  const auto triangle = makeTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0});
  const auto inner = makeGroup({ComPtr<IDispatch>(triangle.Get())}, translation(1, 0, 0));
  const auto outer = makeGroup({ComPtr<IDispatch>(inner.Get())}, translation(0, 1, 0));
  EXPECT_EQ(box3D(outer.Get()), (Box{1, 2, 1, 2, 0, 0}));
  triangle->setPoint(0, -4, 0, 0);
  EXPECT_EQ(box3D(outer.Get()), (Box{-3, 2, 1, 2, 0, 0}));
  require(inner->RemoveAll(), "RemoveAll");
  EXPECT_EQ(box3D(outer.Get()), Box());
}

TEST_F(GroupeBoxes, WhatIsHiddenHasNone) {
  const auto inner = makeGroup(makeContent());
  addTo(inner.Get(), makeBoxed({5, 6, 5, 6, 5, 6})->dispatch());
  const auto outer = makeGroup({ComPtr<IDispatch>(inner.Get())});
  EXPECT_EQ(box3D(outer.Get()), (Box{0, 6, 0, 6, 0, 6}));
  inner->put_Visible(VARIANT_FALSE);
  EXPECT_EQ(box3D(outer.Get()), Box());
  inner->put_Visible(VARIANT_TRUE);
  EXPECT_EQ(box3D(outer.Get()), (Box{0, 6, 0, 6, 0, 6}));
  outer->put_Visible(VARIANT_FALSE);
  EXPECT_EQ(box3D(outer.Get()), Box());
}

TEST_F(GroupeBoxes, OfOtherComponentsAreTheMovedCornersOfTheirs) {
  const auto inner = makeGroup({ComPtr<IDispatch>(makeBoxed({0, 2, 0, 2, 0, 1})->dispatch())},
                               rotation({0, 0, 1}, 20));
  const auto outer = makeGroup({ComPtr<IDispatch>(inner.Get())}, rotation({0, 0, 1}, 25));
  const double root = std::sqrt(2.0);
  expectNear(box3D(outer.Get()), {-root, root, 0, 2 * root, 0, 1});
}

TEST_F(GroupeBoxes, AnObjectThatHoldsTheGroupIsNotAskedForEver) {
  const auto group = makeGroup(makeContent());
  const auto holder = makeForeign<ForeignObject>();
  int asked = 0;
  holder->onGetBox3D = [&](IDispatch** box) {
    ++asked;
    return asked < 100 ? queryFor<IGLDraw>(group.Get())->GetBox3D(box) : E_FAIL;
  };
  addTo(group.Get(), holder->dispatch());
  EXPECT_EQ(box3D(group.Get()), (Box{0, 2, 0, 2, 0, 1}));
  EXPECT_EQ(asked, 1);
  holder->onGetBox3D = {};
}

// --- views ---------------------------------------------------------------------------------------

class GroupeBoxesInViews : public GroupeBoxes {
 protected:
  GroupeBoxesInViews() {
    require(host->Add(group.Get(), 0), "Add");
    require(host->initView(0), "initView");
    require(host->VueXYp(0), "VueXYp");
  }
  /// Least and greatest z that the view shows.
  std::array<double, 2> depth() {
    const DrawnCamera camera = host.camera();
    return {camera.ahead(camera.zFar).z, camera.ahead(camera.zNear).z};
  }

  ComPtr<IZYNGroupe> group = makeGroup(makeContent());
  View3DHost host;
};

TEST_F(GroupeBoxesInViews, TheNextFrameHoldsWhatHasMoved) {
  EXPECT_LT(depth()[1], 50);
  move(group.Get(), translation(0, 0, 100));
  EXPECT_LE(depth()[0], 100);
  EXPECT_GE(depth()[1], 101);
  MovedObjects distant(translation(0, 0, -300));
  distant.triangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, kBlue);
  const auto inner = makeGroup();
  addTo(group.Get(), inner.Get());
  addTo(inner.Get(), distant.all()[0].Get());
  EXPECT_LE(depth()[0], -200);
  EXPECT_GE(depth()[1], 101);
  inner->put_Visible(VARIANT_FALSE);
  EXPECT_GE(depth()[0], -150);
  addTo(group.Get(), makeBoxed({0, 1, 0, 1, 900, 1000})->dispatch());
  EXPECT_GE(depth()[1], 1100) << "of another component";
}

TEST_F(GroupeBoxesInViews, FitsShowWhatHasMoved) {
  move(group.Get(), translation(50, 60, 0) * scaling(10, 10, 10));
  require(host->ZoomTotal(0), "ZoomTotal");
  const auto pixel = host.camera().pixelOf({60, 70, 5});
  EXPECT_NEAR(pixel[0], 200, 1);
  EXPECT_NEAR(pixel[1], 100, 1);
}

}  // namespace
}  // namespace zyn::test
