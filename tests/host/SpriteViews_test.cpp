// Sprites in the 3D view and in exported pictures: natural size, place, hidden parts.
#include <cmath>

#include "support/Pictures_win.h"
#include "support/Scene_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

constexpr int kWidth = 20;
constexpr int kHeight = 12;
constexpr Bounds kBounds = {-1, 1, -1, 1, -1, 1};
constexpr ViewAxes kFromTheFront = {{0, 0, -1}, {0, 1, 0}};

ComPtr<IZYNGLBitmap> makeSprite(const Vec& position) {
  auto sprite = createObject<IZYNGLBitmap>(kSpriteProgId);
  sprite->putref_Picture(pictureOfBitmap24(makeQuarters(kWidth, kHeight)).Get());
  sprite->setPosition(position.x, position.y, position.z);
  return sprite;
}

/// The quarters' first column and lowest row, wherever their origin is, rows from the top.
struct Corner {
  int left = 0;
  int bottom = 0;
};

/// Looks for the quarters as far as they reach into the picture.
void expectQuarters(const Image& image, const Corner& corner, int scale = 1) {
  const Image quarters = makeQuarters(scale * kWidth, scale * kHeight);
  int seen = 0;
  for (int y = 0; y < quarters.height(); ++y) {
    for (int x = 0; x < quarters.width(); ++x) {
      const int column = corner.left + x;
      const int row = corner.bottom - quarters.height() + 1 + y;
      if (column < 0 || column >= image.width() || row < 0 || row >= image.height()) continue;
      ASSERT_EQ(image.at(column, row), quarters.at(x, y)) << column << ", " << row;
      ++seen;
    }
  }
  EXPECT_EQ(image.count(kRed) + image.count(kGreen) + image.count(kBlue) + image.count(kYellow),
            seen);
}

Corner cornerAt(double x, double y) {
  // A pixel belongs to the picture from the middle of the pixel on.
  return {static_cast<int>(std::ceil(x - 0.5)), static_cast<int>(std::ceil(y - 0.5)) - 1};
}

class SpriteInViewTest : public HostTest {
 protected:
  SpriteInViewTest() {
    view_.addBox(kBounds);
    view_->put_DrawCoordSys(VARIANT_FALSE);
    view_->ZoomTotal(0.1);
  }

  /// The sprite's place as the camera that has just drawn says.
  void expectShownAt(const Vec& position) {
    const DrawnCamera camera = view_.camera();
    const auto [x, y] = camera.pixelOf(position);
    expectQuarters(view_.scene(), cornerAt(x, y));
  }

  View3DHost view_;
};

TEST_F(SpriteInViewTest, HasItsNaturalSizeAtEveryZoom) {
  const Vec at{0.013, 0.027, 0.1};
  view_->Add(makeSprite(at).Get(), 0);
  for (const double surplus : {0.0, 3.0, 50.0}) {
    view_->VueXYp(surplus);
    expectShownAt(at);
  }
  for (const SIZE size : {SIZE{300, 260}, SIZE{611, 303}}) {
    view_.resize(size);
    expectShownAt(at);
  }
}

TEST_F(SpriteInViewTest, StaysUprightAsTheViewTurns) {
  const Vec at{0.5, 0.25, -0.75};
  view_->Add(makeSprite(at).Get(), 0);
  view_->VueXZp(0.1);
  expectShownAt(at);
  view_->VueYZm(0.1);
  expectShownAt(at);
  view_.drag({{100, 100}, {130, 90}, {180, 140}});
  expectShownAt(at);
}

TEST_F(SpriteInViewTest, IsSeenAsFarAsItReachesIntoTheView) {
  view_->VueXYp(0);
  const DrawnCamera camera = view_.camera();
  const double pixel = camera.height / camera.pixelHeight;
  const auto sprite = makeSprite({});
  view_->Add(sprite.Get(), 0);
  view_->VueXYp(0);
  for (const double right : {-30.3, -12.3, 0.3, camera.pixelWidth - 5.3}) {
    for (const double up : {-20.3, -7.3, 0.3, camera.pixelHeight - 5.3}) {
      const Vec at = camera.ahead((camera.zNear + camera.zFar) / 2) +
                     (right - camera.pixelWidth / 2.0) * pixel * camera.right +
                     (up - camera.pixelHeight / 2.0) * pixel * camera.up;
      sprite->setPosition(at.x, at.y, at.z);
      expectShownAt(at);
    }
  }
}

TEST_F(SpriteInViewTest, LiesOverWhatIsInFrontOfIt) {
  const auto wall = makeRectangle(-1, 1, -1, 1, 1, kWhite);
  for (const auto& triangle : wall) view_->Add(triangle.Get(), 0);
  const Vec at{0, 0, -1};
  view_->Add(makeSprite(at).Get(), 0);
  view_->VueXYp(0);
  expectShownAt(at);
}

TEST_F(SpriteInViewTest, ItsKeyColourShowsWhatIsBehind) {
  const auto sprite = makeSprite({0, 0, 0});
  sprite->setTransparentColor(255, 0, 0);
  sprite->put_Transparent(VARIANT_TRUE);
  view_->Add(sprite.Get(), 0);
  view_->setBackground(1, 0, 1);
  view_->VueXYp(0);
  const Image image = view_.scene();
  EXPECT_EQ(image.count(kRed), 0);
  EXPECT_EQ(image.count(kGreen), kWidth * kHeight / 4);
  EXPECT_EQ(image.count({255, 0, 255}), image.width() * image.height() - 3 * kWidth * kHeight / 4);
}

TEST_F(SpriteInViewTest, OneSpriteIsDrawnByAllThatHoldIt) {
  const Vec at{0.1, 0.2, 0.3};
  const auto sprite = makeSprite(at);
  view_->Add(sprite.Get(), 0);
  view_->VueXYp(0);
  expectShownAt(at);
  View3DHost other({200, 300});
  other->put_DrawCoordSys(VARIANT_FALSE);
  other.addBox(kBounds);
  other->Add(sprite.Get(), 0);
  other->ZoomTotal(0.5);
  other->VueXZm(0.5);
  const auto [x, y] = other.camera().pixelOf(at);
  expectQuarters(other.scene(), cornerAt(x, y));
  expectShownAt(at);

  OffscreenScene fine(100, 100);
  double resolution = 0;
  fine->get_DPIResolution(&resolution);
  fine->put_DPIResolution(2 * resolution);
  fine.look(kFromTheFront, 1);
  fine.addAll(makeRectangle(0, 1, 0, 1, 0, kWhite));
  fine.add(sprite.Get());
  EXPECT_EQ(fine.render().count(kRed), kWidth * kHeight);
  expectShownAt(at);
}

constexpr int kPictureWidth = 160;
constexpr int kPictureHeight = 120;

class SpriteExportTest : public HostTest {
 protected:
  SpriteExportTest() {
    box_->put_XMin(0);
    box_->put_XMax(kPictureWidth);
    box_->put_YMin(0);
    box_->put_YMax(kPictureHeight);
    box_->put_ZMin(-1);
    box_->put_ZMax(1);
    scene_.look(kFromTheFront, 0, box_.Get());
  }

  /// One unit is a pixel.
  OffscreenScene scene_{kPictureWidth, kPictureHeight};
  ComPtr<IZYNBox3D> box_ = createObject<IZYNBox3D>(kBox3DProgId);
};

TEST_F(SpriteExportTest, IsExportedInItsNaturalSize) {
  scene_.add(makeSprite({50.25, 70.25, 0}).Get());
  expectQuarters(scene_.render(), {50, kPictureHeight - 1 - 70});
  scene_.look(kFromTheFront, 9, box_.Get());  // tenfold, about the middle
  expectQuarters(scene_.render(), cornerAt(80 - 29.75 / 10, 60 - 10.25 / 10));
}

TEST_F(SpriteExportTest, IsExportedAsFarAsItReachesIntoThePicture) {
  const auto sprite = makeSprite({});
  scene_.add(sprite.Get());
  for (const int x : {-13, 151}) {
    for (const int y : {-4, 113}) {
      sprite->setPosition(x + 0.25, y + 0.25, 0);
      expectQuarters(scene_.render(), {x, kPictureHeight - 1 - y});
    }
  }
}

TEST_F(SpriteExportTest, InFineExportsItGrowsWithTheResolution) {
  double resolution = 0;
  ASSERT_EQ(scene_->get_DPIResolution(&resolution), S_OK);
  scene_->put_DPIResolution(3 * resolution);
  const auto sprite = makeSprite({50.25, 70.25, 0});
  sprite->setOrigine(10, 6);
  scene_.add(sprite.Get());
  expectQuarters(scene_.render(), {50 - 30, kPictureHeight - 1 - (70 - 18)}, 3);
  scene_->put_DPIResolution(resolution);
  expectQuarters(scene_.render(), {50 - 10, kPictureHeight - 1 - (70 - 6)});
}

// Two rows of sprites without a gap, shifted against each other: any seam crosses one.
TEST_F(SpriteExportTest, CrossesTheTilesOfALargePicture) {
  constexpr int kWide = 9000;
  constexpr int kShift = 7;
  scene_.resize(kWide, 2 * kHeight);
  box_->put_XMax(kWide);
  box_->put_YMax(2 * kHeight);
  scene_.look(kFromTheFront, 0, box_.Get());
  for (int left = 0; left <= kWide; left += kWidth) {
    scene_.add(makeSprite({left + 0.25, 0.25, 0}).Get());
    scene_.add(makeSprite({left - kShift + 0.25, kHeight + 0.25, 0}).Get());
  }
  const Image image = scene_.render();
  const Image quarters = makeQuarters(kWidth, kHeight);
  for (int x = 0; x < kWide; ++x) {
    for (int y = 0; y < kHeight; ++y) {
      ASSERT_EQ(image.at(x, y), quarters.at((x + kShift) % kWidth, y)) << x << ", " << y;
      ASSERT_EQ(image.at(x, kHeight + y), quarters.at(x % kWidth, y)) << x << ", " << kHeight + y;
    }
  }
}

}  // namespace
}  // namespace zyn::test
