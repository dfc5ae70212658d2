#include <gtest/gtest.h>

#include "support/CameraChecks.h"
#include "support/GeometryChecks.h"
#include "view3d/ViewState3D.h"

namespace zyn {
namespace {

constexpr Box3 kCube{-0.5, 0.5, -0.5, 0.5, -0.5, 0.5};
std::optional<Box3> cube() { return kCube; }

/// A view of a cube from +Z, and a camera to go to.
class ViewFlight3DTest : public testing::Test {
 protected:
  ViewFlight3DTest() {
    view.setClientSize({400, 200});
    view.initView(0, cube);
    view.showAxis(AxisView::kXYp, 0);
    aim.eye = {5, 1, 2};
    aim.target = {1, 1, 2};
    aim.up = {0, 0, 1};
    aim.width = 8;
    aim.height = 4;
    changes = view.changes();
    arrivals = view.arrivals();
  }

  CameraValue shown() const { return view.camera()->value(); }
  bool flyTo(const CameraValue& camera, double duration = 100) {
    return view.fly(1000, duration, [&] { return view.showCamera(camera); });
  }
  /// Since the start of the test or the last call.
  unsigned takeChanges() { return view.changes() - std::exchange(changes, view.changes()); }
  unsigned takeArrivals() { return view.arrivals() - std::exchange(arrivals, view.arrivals()); }

  ViewState3D view;
  CameraValue aim;
  unsigned changes;
  unsigned arrivals;
};

TEST_F(ViewFlight3DTest, ACameraIsShownAtOnceAndKeptInTheHistory) {
  const CameraValue before = shown();
  const std::size_t entries = view.history().count();
  EXPECT_TRUE(view.showCamera(aim));
  EXPECT_EQ(shown(), aim);
  EXPECT_EQ(view.history().count(), entries + 1);
  EXPECT_EQ(takeChanges(), 1U);
  view.showCamera(aim);
  EXPECT_EQ(takeChanges(), 0U);
  view.lastView();
  view.lastView();
  EXPECT_EQ(shown(), before);
}

TEST_F(ViewFlight3DTest, ACameraIsTheFirstOneOfAView) {
  ViewState3D empty;
  EXPECT_TRUE(empty.showCamera(aim));
  EXPECT_EQ(empty.camera()->value(), aim);
  EXPECT_EQ(empty.history().count(), 0U);
  empty.setClientSize({100, 100});
  empty.fitWindow();
  EXPECT_EQ(empty.camera()->height(), 8);
}

TEST_F(ViewFlight3DTest, FliesSmoothlyToTheAim) {
  const CameraValue before = shown();
  EXPECT_TRUE(flyTo(aim));
  EXPECT_TRUE(view.isFlying());
  EXPECT_EQ(shown(), before);
  EXPECT_EQ(takeChanges(), 0U);
  EXPECT_TRUE(view.advance(1050));
  expectNear(shown().target, Point(0.5, 0.5, 1));
  EXPECT_DOUBLE_EQ(shown().width, std::sqrt(before.width * 8));
  EXPECT_EQ(takeChanges(), 1U);
  EXPECT_TRUE(view.isFlying());
  EXPECT_EQ(takeArrivals(), 0U);
  EXPECT_TRUE(view.advance(1100));
  EXPECT_EQ(shown(), aim);
  EXPECT_FALSE(view.isFlying());
  EXPECT_EQ(takeArrivals(), 1U);
  EXPECT_FALSE(view.advance(1200));
  EXPECT_EQ(takeArrivals(), 0U);
}

TEST_F(ViewFlight3DTest, StartsAndEndsGently) {
  flyTo(aim);
  view.advance(1010);
  const double early = shown().target.x;
  EXPECT_GT(early, 0);
  EXPECT_LT(early, 0.05);
  view.advance(1090);
  EXPECT_GT(shown().target.x, 0.95);
  EXPECT_LT(shown().target.x, 1);
}

TEST_F(ViewFlight3DTest, APublishedFitIsReachedToTheLastBit) {
  ViewState3D direct;
  direct.setClientSize({400, 200});
  direct.initView(0, cube);
  direct.showAxis(AxisView::kXYp, 0);
  direct.showAxis(AxisView::kYZm, 0.1);
  view.fly(1000, 100, [&] { return view.showAxis(AxisView::kYZm, 0.1); });
  view.advance(1030);
  view.advance(5000);
  expectSameView(*view.camera(), *direct.camera());
}

TEST_F(ViewFlight3DTest, InputStopsItWhereItIs) {
  flyTo(aim);
  view.advance(1050);
  const CameraValue halfway = shown();
  view.stop();
  EXPECT_FALSE(view.isFlying());
  EXPECT_EQ(shown(), halfway);
  EXPECT_EQ(takeArrivals(), 1U);
  view.stop();
  EXPECT_EQ(takeArrivals(), 0U);
}

TEST_F(ViewFlight3DTest, SettlesAtTheAim) {
  flyTo(aim);
  view.advance(1050);
  EXPECT_TRUE(view.settle());
  EXPECT_EQ(shown(), aim);
  EXPECT_EQ(takeArrivals(), 1U);
  EXPECT_FALSE(view.settle());
}

TEST_F(ViewFlight3DTest, TheNextFlightStartsWhereItIsAndAimsFromTheAim) {
  flyTo(aim);
  view.advance(1050);
  const CameraValue halfway = shown();
  view.fly(1050, 100, [&] {
    EXPECT_EQ(shown(), aim);
    return view.zoomTotal(0, cube);
  });
  EXPECT_EQ(shown(), halfway);
  view.advance(2000);
  expectNear(shown().target, Point());
  expectNear(view.camera()->direction(), Vecteur(-1, 0, 0));
}

TEST_F(ViewFlight3DTest, WithoutATimeItIsThereAtOnce) {
  EXPECT_TRUE(flyTo(aim, 0));
  EXPECT_FALSE(view.isFlying());
  EXPECT_EQ(shown(), aim);
  EXPECT_EQ(takeArrivals(), 1U);
  EXPECT_TRUE(flyTo(aim, 100));
  EXPECT_FALSE(view.isFlying());
  EXPECT_EQ(takeArrivals(), 1U);
}

TEST_F(ViewFlight3DTest, NothingToDoIsNoFlight) {
  EXPECT_FALSE(view.fly(1000, 100, [] { return false; }));
  EXPECT_EQ(takeArrivals(), 0U);
  EXPECT_EQ(takeChanges(), 0U);
}

TEST_F(ViewFlight3DTest, AResizeOnTheWayAppliesToTheEnd) {
  flyTo(aim);
  view.advance(1050);
  view.resize({200, 200});
  EXPECT_NEAR(shown().width / shown().height, 1, 1e-12);
  view.advance(1060);
  EXPECT_NEAR(shown().width / shown().height, 1, 1e-12);
  view.advance(1100);
  EXPECT_EQ(shown().width, 4);
  EXPECT_EQ(shown().height, 4);
}

TEST_F(ViewFlight3DTest, TheSceneIsHeldOnTheWay) {
  flyTo(aim);
  view.advance(1050);
  view.setSceneBox(Box3{-500, 500, -500, 500, -500, 500});
  EXPECT_GT(view.camera()->drawnRange().zFar, 400);
  view.advance(1060);
  EXPECT_GT(view.camera()->drawnRange().zFar, 400);
}

TEST_F(ViewFlight3DTest, NextViewTakesLastViewBack) {
  const CameraValue before = shown();
  view.showCamera(aim);
  view.translateH(0.25);
  const CameraValue panned = shown();
  view.lastView();
  EXPECT_EQ(shown(), before);
  EXPECT_TRUE(view.nextView());
  EXPECT_EQ(shown(), panned);
  EXPECT_FALSE(view.nextView());
  view.lastView();
  EXPECT_EQ(shown(), before);
}

TEST_F(ViewFlight3DTest, AMoveDropsWhatWasUndone) {
  view.showCamera(aim);
  view.lastView();
  view.rotateH(10);
  EXPECT_FALSE(view.nextView());
  view.lastView();
  view.pushHistory();  // as a press of the mouse does
  view.resize({300, 200});
  EXPECT_TRUE(view.nextView());
}

TEST_F(ViewFlight3DTest, ZoomsToARectangleAndToABox) {
  const std::size_t entries = view.history().count();
  EXPECT_TRUE(view.zoomRectangle(100, 50, 300, 150));
  EXPECT_DOUBLE_EQ(shown().width, 1);
  expectNear(shown().target, Point());
  EXPECT_TRUE(view.zoomBox({1, 2, 1, 2, 1, 2}, 0.5));
  expectNear(shown().target, Point(1.5, 1.5, 1.5));
  EXPECT_DOUBLE_EQ(shown().height, 1.5);
  EXPECT_EQ(view.history().count(), entries + 2);
}

TEST_F(ViewFlight3DTest, TellsWhatIsAsFarAwayAsTheTarget) {
  expectNear(*view.pointBeside({0, 0}), Point(-0.9975, 0.4975, 0));
  EXPECT_FALSE(ViewState3D().pointBeside({0, 0}));
}

}  // namespace
}  // namespace zyn
