// What shows behind the scene of the 3D bitmap context: background colour and gradient.
#include "support/Scene_win.h"

namespace zyn::test {
namespace {

constexpr int kWidth = 40;
constexpr int kHeight = 100;

#define EXPECT_NEAR_COLOUR(actual, expected, tolerance)    \
  EXPECT_LE(difference((actual), (expected)), (tolerance)) \
      << (actual) << " instead of " << (expected)

class BackgroundTest : public HostTest {
 protected:
  OffscreenScene scene_{kWidth, kHeight};

  /// The colour at the top of the gradient drawn after these values were put.
  Rgb topAfter(float r, float g, float b) {
    EXPECT_EQ(scene_->setGradientColor(r, g, b), S_OK);
    return scene_.render().at(kWidth / 2, 0);
  }
};

TEST_F(BackgroundTest, EmptySceneIsAllBackground) {
  const Image image = scene_.render();
  EXPECT_EQ(image.width(), kWidth);
  EXPECT_EQ(image.height(), kHeight);
  EXPECT_EQ(image.count(kBackground), kWidth * kHeight);
}

TEST_F(BackgroundTest, BackColorIsTakenWhenTheSurfaceIsCreated) {
  scene_->put_BackColor(colourArray(kRed));
  EXPECT_EQ(scene_.render().at(5, 5), kBackground);
  scene_.resize(kWidth, kHeight);
  EXPECT_EQ(scene_.render().count(kRed), kWidth * kHeight);
}

TEST_F(BackgroundTest, SceneIsDrawnOverTheBackground) {
  scene_.addAll(makeRectangle(0, 1, 0, 1, 0, kGreen));
  const Image image = scene_.render();
  EXPECT_EQ(image.at(kWidth / 2, kHeight / 2), kGreen);
  EXPECT_EQ(image.at(kWidth / 2, 1), kBackground);
  EXPECT_EQ(image.at(kWidth / 2, kHeight - 2), kBackground);
}

TEST_F(BackgroundTest, NothingOfAnEarlierPictureRemains) {
  scene_.addAll(makeRectangle(0, 1, 0, 1, 0, kGreen));
  EXPECT_GT(scene_.render().count(kGreen), 0);
  scene_->RemoveAll();
  EXPECT_EQ(scene_.render().count(kBackground), kWidth * kHeight);
}

// The gradient's colour runs from white at the bottom to the gradient colour at the top while its
// opacity runs from 0 to 1.
TEST_F(BackgroundTest, GradientFadesFromTheBackgroundIntoItsColour) {
  scene_->setGradientColor(1.0f, 0.5f, 0.0f);
  scene_->put_GradientBackground(VARIANT_TRUE);
  const Image image = scene_.render();
  const Vec white = {1, 1, 1};
  const Vec top = {1, 0.5, 0};
  const Vec behind = {0, 0.2, 0.4};
  for (int y = 0; y < kHeight; ++y) {
    const double t = 1.0 - (y + 0.5) / kHeight;
    const Vec drawn = (1 - t) * white + t * top;
    const Rgb expected = toRgb(t * drawn + (1 - t) * behind);
    EXPECT_NEAR_COLOUR(image.at(0, y), expected, 4) << " row " << y;
    EXPECT_NEAR_COLOUR(image.at(kWidth - 1, y), expected, 4) << " row " << y;
  }
  EXPECT_NEAR_COLOUR(image.at(3, kHeight - 1), kBackground, 4);
  EXPECT_NEAR_COLOUR(image.at(3, 0), (Rgb{255, 128, 0}), 4);
}

TEST_F(BackgroundTest, GradientIsStraightAndOffByDefault) {
  scene_->setGradientColor(1, 0, 0);
  EXPECT_EQ(scene_.render().at(5, 0), kBackground);
  scene_->put_GradientBackground(VARIANT_TRUE);
  EXPECT_NEAR_COLOUR(scene_.render().at(5, 0), kRed, 4);
  scene_->put_GradientBackground(VARIANT_FALSE);
  EXPECT_EQ(scene_.render().at(5, 0), kBackground);
}

TEST_F(BackgroundTest, GradientLiesBehindTheSceneAndLeavesItsDepth) {
  scene_->setGradientColor(1, 0, 0);
  scene_->put_GradientBackground(VARIANT_TRUE);
  scene_.addAll(makeRectangle(0, 1, 0, 1, 0, kGreen));
  const Image image = scene_.render();
  EXPECT_EQ(image.at(kWidth / 2, kHeight / 2), kGreen);
  EXPECT_NEAR_COLOUR(image.at(kWidth / 2, 0), kRed, 4);
}

TEST_F(BackgroundTest, GradientLeavesTheLightingOfTheScene) {
  auto triangles = makeRectangle(0, 1, 0, 1, 0, kWhite);
  for (auto& triangle : triangles) triangle->setColor(0, 0, 0, 1);
  scene_.addAll(triangles);
  const Rgb without = scene_.render().at(kWidth / 2, kHeight / 2);
  scene_->put_GradientBackground(VARIANT_TRUE);
  EXPECT_EQ(scene_.render().at(kWidth / 2, kHeight / 2), without);
}

TEST_F(BackgroundTest, GradientColourScales) {
  scene_->put_GradientBackground(VARIANT_TRUE);
  EXPECT_NEAR_COLOUR(topAfter(0.5f, 0.5f, 0.5f), (Rgb{128, 128, 128}), 4);
  EXPECT_NEAR_COLOUR(topAfter(255, 0, 128), (Rgb{255, 0, 128}), 4);
  EXPECT_NEAR_COLOUR(topAfter(1, 1, 1), kWhite, 4);
  // One component above 1 puts all of them on the scale to 255.
  EXPECT_NEAR_COLOUR(topAfter(0.5f, 200, 0.5f), (Rgb{0, 200, 0}), 5);
  EXPECT_NEAR_COLOUR(topAfter(1, 128, 0), (Rgb{1, 128, 0}), 5);
  EXPECT_NEAR_COLOUR(topAfter(0, 0, 255), kBlue, 5);
}

TEST_F(BackgroundTest, GradientColourOutOfRangeIsIgnored) {
  scene_->put_GradientBackground(VARIANT_TRUE);
  const Rgb kept = topAfter(0, 1, 0);
  EXPECT_NEAR_COLOUR(kept, kGreen, 4);
  EXPECT_EQ(topAfter(300, 0, 0), kept);
  EXPECT_EQ(topAfter(0, 0, 255.5f), kept);
  EXPECT_EQ(topAfter(-1, 0, 0), kept);
  EXPECT_EQ(topAfter(0, -0.001f, 0), kept);
  EXPECT_EQ(topAfter(300, -1, 300), kept);
}

}  // namespace
}  // namespace zyn::test
