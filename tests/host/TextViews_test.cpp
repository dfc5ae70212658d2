// Labels in the live 3D view: size, facing, picking, the state they leave, several views, many of
// them.
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "support/ArrayVariant_win.h"
#include "support/GlState_gl.h"
#include "support/Pickable_win.h"
#include "support/Texts_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

using Names = std::vector<long>;

/// A scene of 20 x 10 around the origin.
constexpr Bounds kScene = {-10, 10, -5, 5, -5, 5};

constexpr double kZooms[] = {1.0, 0.07, 30.0};
constexpr SIZE kSizes[] = {{400, 200}, {300, 260}};

class TextInView : public HostTest {
 protected:
  TextInView() { start(view_); }

  static void start(const View3DHost& view) {
    view->put_DrawCoordSys(VARIANT_FALSE);
    view.addBox(kScene);
    require(view->initView(0), "initView");
    require(view->VueXYp(0), "VueXYp");
  }

  ComPtr<IZYNGLTexte> add(const std::wstring& text, long height, long reference) const {
    auto label = makeText(text, height);
    label->setPosition(0, 0, 0, reference);
    require(view_->Add(label.Get(), 0), "Add");
    return label;
  }
  ComPtr<IZYNGLTexte> addSelectable(const std::wstring& text, long height, long reference) const {
    auto label = makeText(text, height);
    label->setPosition(0, 0, 0, reference);
    require(view_->AddSelection(label.Get()), "AddSelection");
    return label;
  }

  /// In pixels from the centre, y upwards.
  Names pick(int x, int y) const {
    const SIZE size = view_.clientSize();
    _variant_t found;
    EXPECT_EQ(view_->getSelectionUnderMouse(size.cx / 2 + x, size.cy / 2 - y, &found), S_OK);
    return namesIn(found);
  }
  bool isHit(int x, int y) const { return !pick(x, y).empty(); }
  /// Around what is seen, in the same pixels.
  Sides ink() const {
    const Image picture = view_.scene();
    const PixelBox box = inkBox(picture, kWhite);
    return {box.left - picture.width() / 2.0, box.right + 1 - picture.width() / 2.0,
            picture.height() / 2.0 - box.bottom - 1, picture.height() / 2.0 - box.top};
  }

  View3DHost view_;
};

TEST_F(TextInView, IsAsHighAsItSaysAtEveryZoomAndSize) {
  const auto label = add(L"0123456789", 20, 1);
  label->put_UseNumericSize(VARIANT_TRUE);
  for (const SIZE size : kSizes) {
    view_.resize(size);
    for (const double zoom : kZooms) {
      view_->VueXYp(0);
      view_->Zoom(zoom);
      const Sides found = ink();
      EXPECT_NEAR(found[0], 0, 1.5);
      EXPECT_NEAR(found[2], 0, 1);
      EXPECT_NEAR(found[3], 20, 1);
    }
  }
}

TEST_F(TextInView, IsHitExactlyInItsBoxAtEveryZoomAndSize) {
  const auto label = addSelectable(L"Abc", 20, 1);
  label->put_NomSelection(5);
  const int width = static_cast<int>(pixelRect(label.Get())[1]);
  for (const SIZE size : kSizes) {
    view_.resize(size);
    for (const double zoom : kZooms) {
      view_->VueXYp(0);
      view_->Zoom(zoom);
      // The picked square reaches half a pixel around.
      for (int y = -3; y <= 24; ++y) EXPECT_EQ(isHit(width / 2, y), y >= 0 && y <= 20) << y;
      EXPECT_FALSE(isHit(-1, 10));
      EXPECT_TRUE(isHit(0, 10));
      EXPECT_TRUE(isHit(width - 1, 10));
      EXPECT_FALSE(isHit(width + 1, 10));
    }
  }
}

TEST_F(TextInView, IsHitInItsRectangleByEveryAnchor) {
  for (long reference = 0; reference <= 9; ++reference) {
    const auto label = addSelectable(L"Wide", 25, reference);
    const Sides sides = pixelRect(label.Get());
    const int x = static_cast<int>(std::lround((sides[0] + sides[1]) / 2));
    const int y = static_cast<int>(std::lround((sides[2] + sides[3]) / 2));
    for (const auto& [side, inX, inY, outX, outY] :
         {std::tuple{"left", sides[0] + 1, y + 0.0, sides[0] - 1, y + 0.0},
          {"right", sides[1] - 1, y + 0.0, sides[1] + 1, y + 0.0},
          {"bottom", x + 0.0, sides[2] + 1, x + 0.0, sides[2] - 1},
          {"top", x + 0.0, sides[3] - 1, x + 0.0, sides[3] + 1}}) {
      EXPECT_TRUE(isHit(static_cast<int>(inX), static_cast<int>(inY))) << reference << side;
      EXPECT_FALSE(isHit(static_cast<int>(outX), static_cast<int>(outY))) << reference << side;
    }
    view_->RemoveAllSelection();
  }
}

TEST_F(TextInView, IsHitWhileItIsDrawnToo) {
  const auto label = add(L"Abc", 20, 1);
  view_->AddSelection(label.Get());
  for (const double zoom : kZooms) {
    view_->VueXYp(0);
    view_->Zoom(zoom);
    EXPECT_TRUE(isHit(5, 20)) << "before the picture";
    EXPECT_FALSE(isHit(5, 22));
    view_.paint();
    EXPECT_TRUE(isHit(5, 20));
    EXPECT_FALSE(isHit(5, 22));
  }
}

TEST_F(TextInView, GivesItsNames) {
  const auto label = addSelectable(L"Abc", 20, 1);
  EXPECT_EQ(pick(5, 5), (Names{0}));
  label->put_NomSelection(42);
  label->put_TypeSelection(7);
  EXPECT_EQ(pick(5, 5), (Names{42}));
  label->put_PushTypeSelection(VARIANT_TRUE);
  EXPECT_EQ(pick(5, 5), (Names{7, 42}));
  label->put_NomSelection(-1);
  EXPECT_EQ(pick(5, 5), (Names{}));
}

TEST_F(TextInView, AWindowSelectionFindsIt) {
  const auto label = addSelectable(L"Abc", 20, 1);
  label->put_NomSelection(42);
  _variant_t found;
  EXPECT_EQ(queryFor<IGLDraw>(label.Get())->Draw3D(-2), S_OK) << "without a context";
  view_.paint();
  EXPECT_EQ(pick(5, 5), (Names{42}));
}

// --- facing --------------------------------------------------------------------------------------

TEST_F(TextInView, FacesTheViewerAfterEveryRotation) {
  add(L"Facing", 30, 9);
  const Image before = view_.scene();
  EXPECT_GT(inkOf(before, kWhite), 100);
  view_->RotateA(33);
  EXPECT_LT(meanDifference(view_.scene(), before), 1e-2);
  view_->RotateH(77);
  EXPECT_LT(meanDifference(view_.scene(), before), 1e-2);
  view_->RotateV(-140);
  EXPECT_LT(meanDifference(view_.scene(), before), 1e-2);
  view_->VueYZm(0);
  EXPECT_GT(inkOf(view_.scene(), kWhite), 100);
}

TEST_F(TextInView, IsHitOnTheScreenAfterEveryRotation) {
  addSelectable(L"Facing", 30, 1);
  view_->RotateH(120);
  view_->RotateV(35);
  view_->RotateA(80);
  for (int y = -2; y <= 33; ++y) EXPECT_EQ(isHit(20, y), y >= 0 && y <= 30) << y;
}

TEST_F(TextInView, LiesInTheSceneWhenItIsNotAlwaysReadable) {
  const auto label = add(L"M", 60, 1);
  label->put_ToujoursLisible(VARIANT_FALSE);
  view_->AddSelection(label.Get());
  view_->RotateA(90);
  const Sides turned = ink();
  EXPECT_NEAR(std::abs(turned[1] - turned[0]), 60 / 1.22 * 0.77, 6) << "the letter's height";
  const bool left = turned[0] < -10;
  EXPECT_TRUE(isHit(left ? -30 : 30, left ? 10 : -10));
  view_->VueXZp(0);  // seen from the side: at most a line
  const Sides edge = ink();
  EXPECT_LE(edge[3] - edge[2], 2);
}

// --- state ---------------------------------------------------------------------------------------

class TextState : public TextInView {
 protected:
  /// Draws a label after `prepare`, and tells what it changed.
  std::vector<std::string> changedBy(IZYNGLTexte* label, int mode,
                                     const std::function<void()>& prepare) {
    GlState before;
    GlState after;
    const auto first = makeForeign<ForeignObject>();
    first->onDraw3D = [&](int) {
      prepare();
      before = readGlState();
      return S_OK;
    };
    const auto last = makeForeign<ForeignObject>();
    last->onDraw3D = [&](int) {
      after = readGlState();
      return S_OK;
    };
    view_->Add(first->dispatch(), 0);
    view_->Add(label, mode);
    view_->Add(last->dispatch(), 0);
    view_.paint();
    view_->Remove(first->dispatch());
    view_->Remove(label);
    view_->Remove(last->dispatch());
    depthTestAfter_ = after.at("GL_DEPTH_TEST").at(0) != 0;
    before["GL_DEPTH_TEST"] = after["GL_DEPTH_TEST"];
    return differences(before, after);
  }

  bool depthTestAfter_ = false;
};

TEST_F(TextState, TheDepthTestIsOnAfterwardsAndAllElseAsBefore) {
  const auto label = makeText(L"State", 20);
  const auto everythingElse = [] {
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glDisable(GL_BLEND);
    glDepthMask(GL_FALSE);
    glLineWidth(3);
    glListBase(99);
    glColor4f(0.125F, 0.25F, 0.5F, 1);
    glNormal3f(1, 0, 0);
    glBlendFunc(GL_ONE, GL_ZERO);
    glEnable(GL_LINE_SMOOTH);
  };
  for (const VARIANT_BOOL readable : {VARIANT_TRUE, VARIANT_FALSE}) {
    label->put_ToujoursLisible(readable);
    for (const int mode : {0, 1, 5, -1}) {
      EXPECT_EQ(changedBy(label.Get(), mode, [] {}), kNone) << mode;
      EXPECT_TRUE(depthTestAfter_);
      EXPECT_EQ(changedBy(label.Get(), mode, everythingElse), kNone) << mode;
      EXPECT_TRUE(depthTestAfter_);
    }
  }
}

// --- several views -------------------------------------------------------------------------------

TEST_F(TextInView, OneLabelInTwoViews) {
  const auto label = add(L"Two", 30, 9);
  auto other = std::make_unique<View3DHost>(SIZE{300, 240});
  start(*other);
  (*other)->Add(label.Get(), 0);
  (*other)->Zoom(0.2);
  const int first = inkOf(view_.scene(), kWhite);
  const int second = inkOf(other->scene(), kWhite);
  EXPECT_GT(first, 100);
  EXPECT_NEAR(second, first, first / 8.0);
  // Each picks by its own measures, whichever drew last.
  view_->AddSelection(label.Get());
  EXPECT_TRUE(isHit(0, 14));
  EXPECT_FALSE(isHit(0, 17));
  other.reset();
  EXPECT_EQ(inkOf(view_.scene(), kWhite), first);
  for (int i = 0; i < 3; ++i) {
    View3DHost another({300, 240});
    start(another);
    another->Add(label.Get(), 0);
    EXPECT_NEAR(inkOf(another.scene(), kWhite), first, first / 8.0);
  }
  EXPECT_EQ(inkOf(view_.scene(), kWhite), first);
}

TEST_F(TextInView, DrawnByAnObjectOfAnotherComponent) {
  const auto label = makeText(L"Inner", 30);
  label->setPosition(0, 0, 0, 9);
  const auto outer = makeForeign<ForeignObject>();
  outer->onDraw3D = [&](int mode) { return queryFor<IGLDraw>(label.Get())->Draw3D(mode); };
  view_->Add(outer->dispatch(), 0);
  const int drawn = inkOf(view_.scene(), kWhite);
  EXPECT_GT(drawn, 100);
  view_->Remove(outer->dispatch());
  view_->Add(label.Get(), 0);
  EXPECT_EQ(inkOf(view_.scene(), kWhite), drawn);
  // Picks go by the last picture.
  view_->AddSelection(outer->dispatch());
  EXPECT_TRUE(isHit(0, 14));
  EXPECT_FALSE(isHit(0, 17));
}

TEST_F(TextInView, TheWindowShowsIt) {
  add(L"Shown", 40, 9);
  view_.paint();
  EXPECT_GT(inkOf(view_.shown(), kWhite), 200);
}

TEST_F(TextInView, ThePictureForAContainerShowsIt) {
  add(L"Container", 30, 9);
  view_.paint();
  EXPECT_GT(inkOf(view_.picture({200, 100}), kWhite), 100);
}

TEST_F(TextInView, AMovedLabelIsMeasuredAgain) {
  View3DHost alone;
  const auto left = makeText(L"L");
  const auto right = makeText(L"R");
  left->setPosition(-5, 0, 0, 0);
  right->setPosition(5, 2, 4, 0);
  // The point in the middle, read without any other object in the scene.
  const auto middle = [&] {
    _variant_t point;
    alone->VueXYp(0);
    EXPECT_EQ(alone->getPixelPlanIntersection(200, 100, doubleArray({0, 0, 1, 0}), &point), S_OK);
    return doublesIn(point).at(0);
  };
  alone->Add(left.Get(), 0);
  alone->Add(right.Get(), 0);
  alone->initView(0);
  EXPECT_NEAR(middle(), 0, 0.1);
  right->setPosition(15, 2, 4, 0);
  alone->Add(makeText(L"M").Get(), 0);
  EXPECT_NEAR(middle(), 5, 0.1);
}

// --- many ----------------------------------------------------------------------------------------

TEST_F(TextInView, TenThousandLabelsAreDrawnAndPicked) {
  constexpr int kColumns = 125;
  constexpr int kRows = 80;
  std::vector<ComPtr<IZYNGLTexte>> labels;
  for (int row = 0; row < kRows; ++row) {
    for (int column = 0; column < kColumns; ++column) {
      auto label = makeText(std::to_wstring(labels.size()), 8);
      label->setPosition(-10 + 20.0 * column / kColumns, -5 + 10.0 * row / kRows, 0, 1);
      label->put_NomSelection(static_cast<long>(labels.size()));
      view_->Add(label.Get(), 0);
      view_->AddSelection(label.Get());
      labels.push_back(std::move(label));
    }
  }
  EXPECT_GT(inkOf(view_.scene(), kWhite), 400 * 200 / 20);
  // Of those at the pixel, the first was added first: all are at one depth.
  const Names found = pick(1, 1);
  ASSERT_EQ(found.size(), 1U);
  EXPECT_NEAR(static_cast<double>(found[0] / kColumns), kRows / 2.0 - 3, 4);
}

}  // namespace
}  // namespace zyn::test
