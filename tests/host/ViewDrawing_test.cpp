// How both views draw their objects, and what these may do meanwhile.
#include <algorithm>
#include <cmath>

#include "support/Pickable_win.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

constexpr Rgb kLightBlue = {51, 102, 204};

// The view shows -10..10 by -5..5 and nothing of its own.
void start(const View2DHost& host) {
  host.add();  // the first object of a view would show itself
  host.look({-10, 10, -5, 5});
}
void start(const View3DHost& host) {
  host->put_DrawCoordSys(VARIANT_FALSE);
  host.addBox({-10, 10, -5, 5, -5, 5});
  require(host->initView(0), "initView");
  require(host->VueXYp(0), "VueXYp");
}

/// Something that is drawn after the objects.
HRESULT decorate(const View2DHost& host) {
  return host->GraphView(0, 0, 0, nullptr, nullptr, nullptr, 0, 20, 2, 1, 1, nullptr, nullptr,
                         nullptr, 0, 10, 2, 1, 1);
}
HRESULT decorate(const View3DHost& host) { return host->put_DrawCoordSys(VARIANT_TRUE); }

HRESULT lookAgain(const View2DHost& host) { return host->initView(); }
HRESULT lookAgain(const View3DHost& host) { return host->VueXYp(0); }

template <class View>
class ViewDrawing : public HostTest {
 protected:
  ViewDrawing() { start(host); }

  ComPtr<ForeignObject> add(std::function<HRESULT(int)> draw = {}, int mode = 0) const {
    return host.add(std::move(draw), mode);
  }
  static size_t timesDrawn(const ComPtr<ForeignObject>& object) {
    return View::modes(object).size();
  }
  /// How much of the window is of that colour when it is drawn now.
  int shown(const Rgb& colour) const {
    host.paint();
    return host.shown().count(colour);
  }

  View host;
};

struct Names {
  template <class View>
  static std::string GetName(int) {
    return std::is_same_v<View, View2DHost> ? "View2D" : "View3D";
  }
};
using Views = testing::Types<View2DHost, View3DHost>;
TYPED_TEST_SUITE(ViewDrawing, Views, Names);

TYPED_TEST(ViewDrawing, ObjectsAreDrawnInTheirOrderWithTheirModes) {
  std::vector<std::pair<int, int>> drawn;
  std::vector<ComPtr<ForeignObject>> objects;
  for (const int mode : {5, 0, -3, 1 << 30}) {
    const int number = int(objects.size());
    objects.push_back(this->add(
        [&drawn, number](int given) {
          drawn.emplace_back(number, given);
          return S_OK;
        },
        mode));
  }
  this->host.paint();
  EXPECT_EQ(drawn, (std::vector<std::pair<int, int>>{{0, 5}, {1, 0}, {2, -3}, {3, 1 << 30}}));
  EXPECT_EQ(objects[0]->modes.size() + objects[0]->modes2D.size(), 1U) << "in one way only";
}

TYPED_TEST(ViewDrawing, ObjectsOfOtherKindsAreSkipped) {
  const auto stranger = makeForeign<ForeignObject>();
  stranger->refuse(__uuidof(IGLDraw));
  this->host->Add(stranger->dispatch(), 0);
  const auto after = this->add();
  this->host.paint();
  EXPECT_EQ(this->timesDrawn(stranger), 0U);
  EXPECT_EQ(this->timesDrawn(after), 1U);
}

TYPED_TEST(ViewDrawing, AFailingObjectEndsThatPassOnly) {
  const auto before = this->add();
  bool fails = true;
  this->add([&](int) { return fails ? E_FAIL : S_OK; });
  const auto after = this->add();
  this->host.paint();
  EXPECT_EQ(this->timesDrawn(before), 1U);
  EXPECT_EQ(this->timesDrawn(after), 0U);
  EXPECT_EQ(wglGetCurrentContext(), nullptr);
  EXPECT_FALSE(GetUpdateRect(this->host.window(), nullptr, FALSE)) << "no endless repainting";
  fails = false;
  this->host.paint();
  EXPECT_EQ(this->timesDrawn(after), 1U);
}

TYPED_TEST(ViewDrawing, ObjectsMayRemoveThemselves) {
  ComPtr<ForeignObject> leaving;
  leaving = this->add([&](int) {
    this->host->Remove(leaving->dispatch());
    return S_OK;
  });
  const auto after = this->add();
  this->host.paint();
  EXPECT_EQ(this->timesDrawn(after), 1U);
  this->host.paint();
  EXPECT_EQ(this->timesDrawn(leaving), 1U);
  EXPECT_EQ(this->timesDrawn(after), 2U);
  EXPECT_EQ(referencesOf(leaving.Get()), 1U);
}

TYPED_TEST(ViewDrawing, ObjectsMayClearTheView) {
  const auto clearing = this->add([&](int) {
    this->host->RemoveAll();
    return S_OK;
  });
  const auto after = this->add();
  this->host.paint();
  EXPECT_EQ(this->timesDrawn(after), 0U);
  long count = -1;
  this->host->Count(&count);
  EXPECT_EQ(count, 0);
  this->host.paint();
  EXPECT_EQ(this->timesDrawn(clearing), 1U);
}

TYPED_TEST(ViewDrawing, ObjectsMayAddOthers) {
  ComPtr<ForeignObject> added;
  this->add([&](int) {
    if (!added) added = this->add();
    return S_OK;
  });
  this->host.paint();
  this->host.paint();
  EXPECT_GE(this->timesDrawn(added), 1U);
  EXPECT_LE(this->timesDrawn(added), 2U);
}

TYPED_TEST(ViewDrawing, ARepaintAskedForWhileDrawingComesAfterwards) {
  int depth = 0;
  int deepest = 0;
  int drawn = 0;
  this->add([&](int) {
    deepest = std::max(deepest, ++depth);
    if (++drawn == 1) {
      this->host->Repaint();
      UpdateWindow(this->host.window());
      SendMessageW(this->host.window(), WM_PAINT, 0, 0);
    }
    --depth;
    return S_OK;
  });
  this->host.paint();
  EXPECT_EQ(deepest, 1) << "painting does not nest";
  UpdateWindow(this->host.window());
  EXPECT_GE(drawn, 2);
}

TYPED_TEST(ViewDrawing, ObjectsMayCloseTheWindow) {
  EXPECT_EQ(decorate(this->host), S_OK);
  this->add([&](int) {
    this->host.close();
    return S_OK;
  });
  this->host.paint();
  EXPECT_FALSE(this->host.hasWindow());
  EXPECT_EQ(lookAgain(this->host), S_OK);
  EXPECT_EQ(wglGetCurrentContext(), nullptr);
}

TYPED_TEST(ViewDrawing, ObjectsMayReleaseTheView) {
  const ComPtr<ForeignObject> last = this->add([&](int) {
    this->host.release();
    this->host.close();
    return S_OK;
  });
  this->host.paint();
  EXPECT_FALSE(this->host.hasWindow());
  EXPECT_EQ(referencesOf(last.Get()), 1U) << "the view is gone and has let go of its objects";
  EXPECT_EQ(wglGetCurrentContext(), nullptr);
}

TYPED_TEST(ViewDrawing, BackgroundTakesColoursOnly) {
  constexpr int kAll = 400 * 200;
  EXPECT_EQ(this->shown(kWhite), kAll) << "white at first";
  this->host->setBackground(0.2F, 0.4F, 0.8F);
  EXPECT_EQ(this->shown(kLightBlue), kAll);
  for (const float wrong : {1.01F, 1.5F, -0.1F, float(NAN)}) {
    EXPECT_EQ(this->host->setBackground(wrong, 0, 0), S_OK);
    EXPECT_EQ(this->host->setBackground(0, wrong, 0), S_OK);
    EXPECT_EQ(this->host->setBackground(0, 0, wrong), S_OK);
  }
  EXPECT_EQ(this->shown(kLightBlue), kAll);
  EXPECT_EQ(this->host.scene().count(kLightBlue), kAll);
  this->host->setBackground(0, 0, 0);
  EXPECT_EQ(this->shown(kBlack), kAll);
}

TYPED_TEST(ViewDrawing, SmoothingReachesTheContext) {
  bool line = false;
  bool point = false;
  this->add([&](int) {
    line = glIsEnabled(GL_LINE_SMOOTH);
    point = glIsEnabled(GL_POINT_SMOOTH);
    return S_OK;
  });
  this->host.paint();
  constexpr bool kSmoothAtFirst = std::is_same_v<TypeParam, View2DHost>;
  EXPECT_EQ(line, kSmoothAtFirst);
  EXPECT_EQ(point, kSmoothAtFirst);
  for (const VARIANT_BOOL lines : {VARIANT_FALSE, VARIANT_TRUE, VARIANT_BOOL{1}}) {
    for (const VARIANT_BOOL points : {VARIANT_TRUE, VARIANT_BOOL{1}, VARIANT_FALSE}) {
      this->host->put_LineAntialiasing(lines);
      this->host->put_PointAntialiasing(points);
      this->host.paint();
      EXPECT_EQ(line, lines == VARIANT_TRUE) << lines << ", " << points;
      EXPECT_EQ(point, points == VARIANT_TRUE) << lines << ", " << points;
    }
  }
}

}  // namespace
}  // namespace zyn::test
