// Sprites in the 2D view and in exported graphs: natural size, place, picking.
#include <cmath>

#include "support/ArrayVariant_win.h"
#include "support/Pickable_win.h"
#include "support/Pictures_win.h"
#include "support/Scene_win.h"
#include "support/View2DHost_win.h"

namespace zyn::test {
namespace {

constexpr int kWidth = 20;
constexpr int kHeight = 12;
constexpr long kName = 5;

ComPtr<IZYNGLBitmap> makeSprite(double x, double y) {
  auto sprite = createObject<IZYNGLBitmap>(kSpriteProgId);
  sprite->putref_Picture(pictureOfBitmap24(makeQuarters(kWidth, kHeight)).Get());
  sprite->setPosition(x, y, 0);
  return sprite;
}

/// The quarters' first column and lowest row, rows from the top.
struct Corner {
  int left = 0;
  int bottom = 0;
};

class SpriteInGraphTest : public HostTest {
 protected:
  SpriteInGraphTest() {
    view_->Add(sprite_.Get(), 0);
    // In a selection pass the sprite pushes no name: these do around it.
    opener_->onDraw2D = [](int) {
      glPushName(kName);
      return S_OK;
    };
    closer_->onDraw2D = [](int) {
      glPopName();
      return S_OK;
    };
    for (IDispatch* object :
         {opener_->dispatch(), static_cast<IDispatch*>(sprite_.Get()), closer_->dispatch()}) {
      view_->AddSelection(object);
    }
    view_->put_Mode(-1);
    view_.look({-10, 10, -5, 5});
  }

  /// Where the sprite is to be seen, as the view maps its position to pixels.
  Corner corner() const {
    const VueParams params = view_.params();
    double x = 0;
    double y = 0;
    double z = 0;
    sprite_->getPosition(&x, &y, &z);
    const double right = ((x * xScale_ - params.x) / params.width + 0.5) * params.pixelWidth;
    const double down = (0.5 - (y * yScale_ - params.y) / params.height) * params.pixelHeight;
    return {static_cast<int>(std::ceil(right - 0.5)) - originX_,
            static_cast<int>(std::floor(down - 0.5)) + originY_};
  }

  void expectShown() const {
    const Image image = view_.scene();
    const Image quarters = makeQuarters(kWidth, kHeight);
    const auto [left, bottom] = corner();
    int seen = 0;
    for (int y = 0; y < kHeight; ++y) {
      for (int x = 0; x < kWidth; ++x) {
        const int column = left + x;
        const int row = bottom - kHeight + 1 + y;
        if (column < 0 || column >= image.width() || row < 0 || row >= image.height()) continue;
        ASSERT_EQ(image.at(column, row), quarters.at(x, y)) << column << ", " << row;
        ++seen;
      }
    }
    EXPECT_EQ(image.count(kRed) + image.count(kGreen) + image.count(kBlue) + image.count(kYellow),
              seen);
  }

  bool isPicked(int x, int y) {
    view_.forgetEvents();
    view_.send(WM_LBUTTONDOWN, x, y, MK_LBUTTON);
    view_.send(WM_LBUTTONUP, x, y);
    const auto selections = view_.events(GraphEvent::MouseSelection);
    EXPECT_EQ(selections.size(), 1U);
    return !selections.empty() &&
           namesIn(selections[0].arguments.at(0)) == std::vector<long>{kName};
  }

  /// Presses inside and outside of each corner of what is seen.
  void expectPickedWhereShown() {
    const auto [left, bottom] = corner();
    const int right = left + kWidth - 1;
    const int top = bottom - kHeight + 1;
    constexpr int kOff = 2;
    for (const int x : {left, right}) {
      for (const int y : {top, bottom}) {
        const int inX = x + (x == left ? kOff : -kOff);
        const int inY = y + (y == top ? kOff : -kOff);
        const int outX = x + (x == left ? -kOff : kOff);
        const int outY = y + (y == top ? -kOff : kOff);
        EXPECT_TRUE(isPicked(inX, inY)) << inX << ", " << inY;
        EXPECT_FALSE(isPicked(outX, inY)) << outX << ", " << inY;
        EXPECT_FALSE(isPicked(inX, outY)) << inX << ", " << outY;
      }
    }
  }

  void expectSeenAndPicked() {
    view_.paint();
    expectShown();
    expectPickedWhereShown();
  }

  View2DHost view_;
  ComPtr<IZYNGLBitmap> sprite_ = makeSprite(1.013, 0.511);
  ComPtr<ForeignObject> opener_ = makeForeign<ForeignObject>();
  ComPtr<ForeignObject> closer_ = makeForeign<ForeignObject>();
  double xScale_ = 1;
  double yScale_ = 1;
  int originX_ = 0;
  int originY_ = 0;
};

TEST_F(SpriteInGraphTest, IsSeenAndPickedInItsNaturalSizeAtEveryZoom) {
  for (const double half : {0.6, 5.0, 500.0}) {
    view_.look({-2 * half, 2 * half, -half, half});
    expectSeenAndPicked();
  }
  view_.resize({300, 260});
  expectSeenAndPicked();
}

TEST_F(SpriteInGraphTest, ItsOriginIsAtItsPosition) {
  originX_ = 7;
  originY_ = 9;
  sprite_->setOrigine(originX_, originY_);
  expectSeenAndPicked();
}

TEST_F(SpriteInGraphTest, IsSeenAndPickedAlikeInStretchedGraphs) {
  xScale_ = 0.125;
  yScale_ = 40;
  const _bstr_t none(L"");
  view_->GraphView(0, 0, 0, none, none, nullptr, 0, 100, 20, 10, xScale_, none, none, nullptr, 0,
                   0.25, 0.05, 0.01, yScale_);
  sprite_->setPosition(50.0, 0.125, 0);
  expectSeenAndPicked();
}

TEST_F(SpriteInGraphTest, IsSeenAsFarAsItReachesIntoTheView) {
  for (const double x : {-10.7, -10.2, 9.83}) {
    for (const double y : {-5.4, -5.1, 4.87}) {
      sprite_->setPosition(x, y, 0);
      expectShown();
    }
  }
}

TEST_F(SpriteInGraphTest, ASelectionPassUsesTheViewThatRunsIt) {
  view_.paint();
  // Another view draws it last, at another zoom.
  View2DHost other({300, 300});
  other->Add(sprite_.Get(), 0);
  other.look({-500, 500, -500, 500});
  other.paint();
  expectPickedWhereShown();
}

TEST_F(SpriteInGraphTest, PicksBeforeItHasBeenDrawnAgain) {
  view_.paint();
  view_.look({-1, 3, -0.5, 1.5});
  expectPickedWhereShown();
}

TEST(SpriteInGraphExport, IsExportedInItsNaturalSize) {
  const Apartment apartment;
  const TempFolder folder;
  const auto context = createObject<IZYN2DGLBitmapContext>(L"ZYNVue.ZYN2DGLBitmapContext");
  long made = 0;
  context->CreateContexte(160, 120, &made);
  context->ViewRect(makeArea({0, 16, 0, 12}).Get(), 0);
  context->Add(makeSprite(15.02, 11.52).Get(), 0);
  context->Add(makeSprite(5.02, 5.02).Get(), 0);
  ASSERT_EQ(context->CreateBitmap(bstr(folder.file(L"a.bmp"))), S_OK);
  const Image image = decodeBmp(readFile(folder.file(L"a.bmp")));
  EXPECT_EQ(image.at(50, 120 - 51), kBlue);
  EXPECT_EQ(image.at(69, 120 - 51), kYellow);
  EXPECT_EQ(image.at(50, 120 - 62), kRed);
  EXPECT_EQ(image.at(69, 120 - 62), kGreen);
  EXPECT_EQ(image.at(150, 4), kBlue);
  EXPECT_EQ(image.count(kYellow), kWidth * kHeight / 4);
}

}  // namespace
}  // namespace zyn::test
