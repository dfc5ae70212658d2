#include <cmath>

#include "support/ArrayVariant_win.h"
#include "support/Pickable_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

using Names = std::vector<long>;

/// A scene of 20 x 10 around the origin, which the view shows at 20 pixels a unit.
constexpr Bounds kScene = {-10, 10, -5, 5, -5, 5};

class View3DPicking : public HostTest {
 protected:
  View3DPicking() { startScene(host); }

  static void startScene(const View3DHost& view) {
    view.addBox(kScene);
    require(view->initView(0), "initView");
    require(view->VueXYp(0), "VueXYp");
  }

  static Plate atPixels(double left, double top, double right, double bottom, double z) {
    return {(left - 200) / 20, (right - 200) / 20, (100 - bottom) / 20, (100 - top) / 20, z};
  }
  ComPtr<ForeignObject> addSelectable(const std::vector<GLuint>& names, const Plate& plate) const {
    auto object = makePickable(names, plate);
    require(host->AddSelection(object->dispatch()), "AddSelection");
    return object;
  }
  Names pick(int x, int y) const {
    _variant_t found;
    EXPECT_EQ(host->getSelectionUnderMouse(x, y, &found), S_OK);
    return namesIn(found);
  }

  View3DHost host;
};

TEST_F(View3DPicking, NothingGivesNothing) {
  _variant_t found(5L);
  VariantClear(&found);
  EXPECT_EQ(host->getSelectionUnderMouse(200, 100, &found), S_OK);
  EXPECT_EQ(found.vt, VT_EMPTY) << "an empty list";
  addSelectable({1}, atPixels(100, 50, 200, 150, 0));
  EXPECT_EQ(host->getSelectionUnderMouse(250, 100, &found), S_OK);
  EXPECT_EQ(found.vt, VT_EMPTY) << "no hit";
  const View3DHost empty;
  const auto object = makePickable({1}, {-1, 1, -1, 1, 0});
  empty->AddSelection(object->dispatch());
  EXPECT_EQ(empty->getSelectionUnderMouse(200, 100, &found), S_OK);
  EXPECT_EQ(found.vt, VT_EMPTY) << "no camera";
}

TEST_F(View3DPicking, ARepaintAskedForWhilePickingComesAfterwards) {
  int painted = 0;
  const auto drawn = makeForeign<ForeignObject>();
  drawn->onDraw3D = [&](int) {
    ++painted;
    return S_OK;
  };
  host->Add(drawn->dispatch(), 0);
  host.paint();
  const auto object = addSelectable({7}, atPixels(100, 50, 300, 150, 0));
  int paintedMeanwhile = -1;
  object->onDraw3D = [&, draw = object->onDraw3D](int mode) {
    const int before = painted;
    host.paint();
    paintedMeanwhile = painted - before;
    return draw(mode);
  };
  const int before = painted;
  EXPECT_EQ(pick(200, 100), (Names{7}));
  EXPECT_EQ(paintedMeanwhile, 0);
  UpdateWindow(host.window());
  EXPECT_EQ(painted, before + 1);
}

TEST_F(View3DPicking, ThePixelIsTheOneThatIsSeen) {
  addSelectable({1}, atPixels(100, 50, 200, 90, 0));
  EXPECT_EQ(pick(150, 70), (Names{1}));
  EXPECT_EQ(pick(102, 52), (Names{1}));
  EXPECT_EQ(pick(197, 87), (Names{1}));
  EXPECT_TRUE(pick(97, 70).empty());
  EXPECT_TRUE(pick(203, 70).empty());
  EXPECT_TRUE(pick(150, 47).empty());
  EXPECT_TRUE(pick(150, 93).empty());
}

TEST_F(View3DPicking, CornersOfTheWindow) {
  addSelectable({1}, atPixels(0, 0, 4, 4, 0));
  addSelectable({2}, atPixels(396, 0, 400, 4, 0));
  addSelectable({3}, atPixels(0, 196, 4, 200, 0));
  addSelectable({4}, atPixels(396, 196, 400, 200, 0));
  EXPECT_EQ(pick(1, 1), (Names{1}));
  EXPECT_EQ(pick(398, 1), (Names{2}));
  EXPECT_EQ(pick(1, 198), (Names{3}));
  EXPECT_EQ(pick(398, 198), (Names{4}));
}

TEST_F(View3DPicking, TheNearestIsFound) {
  addSelectable({1}, atPixels(100, 50, 200, 150, 0));
  addSelectable({2}, atPixels(100, 50, 200, 150, 2));
  addSelectable({3}, atPixels(100, 50, 200, 150, 1));
  EXPECT_EQ(pick(150, 100), (Names{2}));
  // From behind, left and right are exchanged, and only plates that face this way are seen.
  addSelectable({4}, atPixels(200, 50, 100, 150, 1));
  addSelectable({5}, atPixels(200, 50, 100, 150, 0));
  host->VueXYm(0);
  EXPECT_EQ(pick(250, 100), (Names{5}));
}

TEST_F(View3DPicking, OfEqualDepthsTheFirstIsFound) {
  addSelectable({5}, atPixels(100, 50, 200, 150, 1));
  addSelectable({4}, atPixels(100, 50, 200, 150, 1));
  EXPECT_EQ(pick(150, 100), (Names{5}));
}

TEST_F(View3DPicking, EveryNameOfAnObjectComesInOrder) {
  addSelectable({42, 7, 4000000000U, 1}, atPixels(100, 50, 200, 150, 0));
  EXPECT_EQ(pick(150, 100), (Names{42, 7, static_cast<int>(4000000000U), 1}));
}

TEST_F(View3DPicking, ObjectsAreDrawnForPickingOnly) {
  const auto object = addSelectable({1}, atPixels(100, 50, 200, 150, 0));
  host.paint();
  EXPECT_TRUE(object->modes.empty());
  pick(150, 100);
  EXPECT_EQ(object->modes, (std::vector<int>{-1}));
}

TEST_F(View3DPicking, PickSizeWidensThePick) {
  const auto line = makeForeign<ForeignObject>();
  line->onDraw3D = [](int) {
    glPushName(9);
    glBegin(GL_LINES);
    glVertex3d(0.025, -5, 0);  // through the centre of the pixels at x = 200
    glVertex3d(0.025, 5, 0);
    glEnd();
    glPopName();
    return S_OK;
  };
  host->AddSelection(line->dispatch());
  EXPECT_TRUE(pick(202, 100).empty());
  host->put_PickSize(5);
  EXPECT_EQ(pick(202, 100), (Names{9}));
  EXPECT_EQ(pick(198, 100), (Names{9}));
  EXPECT_TRUE(pick(206, 100).empty());
}

TEST_F(View3DPicking, OddPickSizesDoNoHarm) {
  addSelectable({1}, atPixels(0, 0, 400, 200, 0));
  for (const double size : {0.0, -5.0, 1e300, double(NAN), double(INFINITY)}) {
    host->put_PickSize(size);
    pick(150, 100);
    host.paint();
  }
  host->put_PickSize(1);
  EXPECT_EQ(pick(150, 100), (Names{1}));
}

TEST_F(View3DPicking, ManyHitsAreNotLost) {
  // Each hit takes four entries: 500 of them do not fit into 512.
  for (GLuint i = 0; i < 500; ++i) {
    addSelectable({i + 1}, atPixels(100, 50, 200, 150, i == 431 ? 3.0 : -i * 0.001));
  }
  EXPECT_EQ(pick(150, 100), (Names{432}));
  EXPECT_TRUE(pick(50, 50).empty());
}

TEST_F(View3DPicking, AnObjectThatFailsEndsThePickOnly) {
  const auto failing = makeForeign<ForeignObject>();
  failing->onDraw3D = [](int) { return E_FAIL; };
  host->AddSelection(failing->dispatch());
  _variant_t found;
  host->getSelectionUnderMouse(150, 100, &found);
  host->RemoveSelection(failing->dispatch());
  addSelectable({1}, atPixels(100, 50, 200, 150, 0));
  EXPECT_EQ(pick(150, 100), (Names{1}));
  host.camera();
}

TEST_F(View3DPicking, NoContextIsLeftCurrent) {
  addSelectable({1}, atPixels(100, 50, 200, 150, 0));
  pick(150, 100);
  EXPECT_EQ(wglGetCurrentContext(), nullptr);
  EXPECT_EQ(wglGetCurrentDC(), nullptr);
}

TEST_F(View3DPicking, PickingFollowsTheCamera) {
  addSelectable({1}, {-1, 1, -1, 1, 0});
  host->RotateH(40);
  host->RotateV(25);
  host->RotateA(15);
  host->TranslateH(3);
  host->TranslateV(-2);
  const auto at = host.camera().pixelOf({0, 0, 0});
  EXPECT_EQ(pick(int(at[0]), int(at[1])), (Names{1}));
  EXPECT_TRUE(pick(200, 100).empty());
}

class View3DPlane : public View3DPicking {
 protected:
  static std::vector<double> pointAt(const View3DHost& view, int x, int y, const VARIANT& plane) {
    _variant_t point;
    EXPECT_EQ(view->getPixelPlanIntersection(x, y, plane, &point), S_OK);
    return point.vt == VT_EMPTY ? std::vector<double>{} : doublesIn(point);
  }
};

TEST_F(View3DPlane, ThePointLiesInThePlane) {
  for (const auto& [x, y] : {std::pair{0, 0}, {399, 0}, {0, 199}, {399, 199}, {123, 45}}) {
    const auto point = pointAt(host, x, y, doubleArray({0, 0, 1, 0}));
    ASSERT_EQ(point.size(), 3U);
    EXPECT_NEAR(point[2], 0, 1e-12);
    // Somewhere in the pixel.
    EXPECT_NEAR(point[0], (x + 0.5 - 200) / 20, 0.5 / 20 + 1e-9);
    EXPECT_NEAR(point[1], (100 - y - 0.5) / 20, 0.5 / 20 + 1e-9);
  }
  const auto inclined = pointAt(host, 300, 50, doubleArray({1, 2, 3, -4}));
  ASSERT_EQ(inclined.size(), 3U);
  EXPECT_NEAR(inclined[0] + 2 * inclined[1] + 3 * inclined[2], 4, 1e-9);
}

TEST_F(View3DPlane, ParallelPlanesHaveNoPoint) {
  host->VueXZp(0);
  EXPECT_TRUE(pointAt(host, 100, 100, doubleArray({0, 0, 1, 0})).empty());
  EXPECT_FALSE(pointAt(host, 100, 100, doubleArray({0, 1, 1, 0})).empty());
  EXPECT_TRUE(pointAt(host, 100, 100, doubleArray({1, 0, 0, 0})).empty());
  EXPECT_TRUE(pointAt(host, 100, 100, doubleArray({0, 0, 0, 1})).empty());
  EXPECT_TRUE(pointAt(host, 100, 100, doubleArray({0, 1e-9, 0, 1})).empty());
  EXPECT_FALSE(pointAt(host, 100, 100, doubleArray({0, 1e-7, 0, 1})).empty());
}

TEST_F(View3DPlane, OnlyFourNumbersAreAPlane) {
  for (const auto& wrong :
       {doubleArray({0, 0, 1}), doubleArray({0, 0, 1, 0, 0}), _variant_t(), _variant_t(1.0),
        variantArray({0.0, 0.0, 1.0, L"0"}), nullArray(VT_R8)}) {
    EXPECT_TRUE(pointAt(host, 100, 100, wrong).empty());
  }
  EXPECT_EQ(pointAt(host, 100, 100, variantArray({0L, 0L, 1.0, 0L})).size(), 3U);
}

TEST_F(View3DPlane, WithoutACameraThereIsNoPoint) {
  const View3DHost empty;
  EXPECT_TRUE(pointAt(empty, 100, 100, doubleArray({0, 0, 1, 0})).empty());
}

/// A small plate drawn where a pixel is said to look must appear in that pixel.
TEST_F(View3DPlane, ThePointAppearsInItsPixel) {
  const struct {
    double h, v, a;
  } turns[] = {{0, 0, 0}, {30, 20, 0}, {-120, 65, 40}, {200, -30, -75}};
  for (const SIZE size : {SIZE{400, 200}, SIZE{301, 173}, SIZE{150, 301}, SIZE{1, 1}}) {
    View3DHost view(size);
    startScene(view);
    view->put_DrawCoordSys(VARIANT_FALSE);
    for (const auto& turn : turns) {
      view->VueXYp(0);
      view->RotateH(turn.h);
      view->RotateV(turn.v);
      view->RotateA(turn.a);
      const int right = size.cx - 1;
      const int bottom = size.cy - 1;
      for (const auto& [x, y] : {std::pair{0, 0},
                                 {right, 0},
                                 {0, bottom},
                                 {right, bottom},
                                 {size.cx / 2, size.cy / 2}}) {
        const auto point = pointAt(view, x, y, doubleArray({0.3, 0.2, 1, 0.1}));
        ASSERT_EQ(point.size(), 3U);
        const auto seen = view.camera().pixelOf({point[0], point[1], point[2]});
        const double blur = 1e-4 * (1 + size.cx);
        EXPECT_GE(seen[0], x - blur);
        EXPECT_LE(seen[0], x + 1 + blur);
        EXPECT_GE(seen[1], y - blur);
        EXPECT_LE(seen[1], y + 1 + blur);
      }
    }
  }
}

TEST_F(View3DPlane, TheDrawnPointHasThatPixel) {
  host->RotateH(25);
  host->RotateV(-15);
  for (const auto& [x, y] : {std::pair{3, 3}, {396, 4}, {5, 195}, {396, 196}, {200, 100}}) {
    const auto point = pointAt(host, x, y, doubleArray({0, 0, 1, 0}));
    ASSERT_EQ(point.size(), 3U);
    const auto mark = makeForeign<ForeignObject>();
    mark->onDraw3D = [&](int) {
      glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_POINT_BIT);
      glDisable(GL_LIGHTING);
      glDisable(GL_DEPTH_TEST);
      glColor3ub(255, 0, 0);
      glPointSize(3);
      glBegin(GL_POINTS);
      glVertex3d(point[0], point[1], point[2]);
      glEnd();
      glPopAttrib();
      return S_OK;
    };
    host->Add(mark->dispatch(), 0);
    EXPECT_EQ(host.scene().at(x, y), kRed);
    host->Remove(mark->dispatch());
  }
}

}  // namespace
}  // namespace zyn::test
