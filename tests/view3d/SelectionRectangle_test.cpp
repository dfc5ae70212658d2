#include "view3d/SelectionRectangle.h"

#include <gtest/gtest.h>

#include <optional>

namespace zyn {
namespace {

constexpr ClientSize kClient{400, 200};

/// Looks from +Z at the cube of side 1 about the origin: a view rectangle of 2 by 1.
CParamsVue3D cubeCamera() {
  CParamsVue3D camera;
  camera.fitAxis(AxisView::kXYp, Box3{-0.5, 0.5, -0.5, 0.5, -0.5, 0.5}, kClient, 0, 0);
  return camera;
}

TEST(SelectionRectangleTest, NormalisesAboutTheCentre) {
  const auto rectangle = SelectionRectangle::between({0, 200}, {400, 0}, kClient);
  EXPECT_EQ(rectangle, (SelectionRectangle{-0.5F, 0.5F, -0.5F, 0.5F, 1, 1}));
}

TEST(SelectionRectangleTest, SortsAndTellsTheDirections) {
  const SelectionRectangle upRight{-0.25F, 0.125F, -0.25F, 0.375F, 1, 1};
  SelectionRectangle expected = upRight;
  EXPECT_EQ(SelectionRectangle::between({100, 150}, {250, 25}, kClient), expected);
  expected.directionX = -1;
  EXPECT_EQ(SelectionRectangle::between({250, 150}, {100, 25}, kClient), expected);
  expected.directionY = -1;
  EXPECT_EQ(SelectionRectangle::between({250, 25}, {100, 150}, kClient), expected);
  expected.directionX = 1;
  EXPECT_EQ(SelectionRectangle::between({100, 25}, {250, 150}, kClient), expected);
}

TEST(SelectionRectangleTest, OddSizesHaveTheirCentreBetweenPixels) {
  const auto rectangle = SelectionRectangle::between({0, 0}, {1, 2}, {5, 3});
  EXPECT_EQ(rectangle, (SelectionRectangle{-2.5F / 5, -1.5F / 5, -0.5F / 3, 1.5F / 3, 1, -1}));
}

TEST(SelectionRectangleTest, ReachesBeyondTheClientArea) {
  const auto rectangle = SelectionRectangle::between({-200, 300}, {600, -100}, kClient);
  EXPECT_EQ(rectangle, (SelectionRectangle{-1, 1, -1, 1, 1, 1}));
}

TEST(SelectionRectangleTest, NeedsAPixelEachWay) {
  EXPECT_FALSE(SelectionRectangle::between({50, 50}, {50, 50}, kClient));
  EXPECT_FALSE(SelectionRectangle::between({50, 50}, {50, 90}, kClient));
  EXPECT_FALSE(SelectionRectangle::between({50, 50}, {90, 50}, kClient));
  EXPECT_TRUE(SelectionRectangle::between({50, 50}, {51, 49}, kClient));
}

TEST(SelectionRectangleTest, AOnePixelRectangleCountsAtAnySize) {
  for (int side = 1; side < 2000; ++side) {
    for (const int at : {0, side / 3, side - 1}) {
      EXPECT_TRUE(SelectionRectangle::between({at, at}, {at + 1, at + 1}, {side, side})) << side;
    }
  }
}

TEST(SelectionRectangleTest, NothingInAnEmptyClientArea) {
  EXPECT_FALSE(SelectionRectangle::between({0, 0}, {10, 10}, {0, 200}));
  EXPECT_FALSE(SelectionRectangle::between({0, 0}, {10, 10}, {400, 0}));
}

TEST(SelectionRectangleTest, CentresTheCamera) {
  const CParamsVue3D camera = cubeCamera();
  const SelectionRectangle rectangle{-0.25F, 0.125F, -0.25F, 0.375F, -1, 1};
  const CParamsVue3D moved = rectangle.centred(camera);
  EXPECT_DOUBLE_EQ(moved.target().x, -0.0625 * 2);
  EXPECT_DOUBLE_EQ(moved.target().y, 0.0625 * 1);
  EXPECT_DOUBLE_EQ(moved.eye().x, moved.target().x);
  EXPECT_DOUBLE_EQ(moved.eye().y, moved.target().y);
  EXPECT_EQ(moved.width(), 2);
  EXPECT_EQ(moved.height(), 1);
  EXPECT_EQ(camera.target(), Point());
}

TEST(SelectionRectangleTest, CentresTheRegion) {
  const SelectionRectangle rectangle{-0.25F, 0.125F, -0.25F, 0.375F, -1, 1};
  EXPECT_EQ(rectangle.centredRegion(kClient), (PickRegion{200, 100, 150, 125}));
  EXPECT_EQ(rectangle.centredRegion({401, 201}), (PickRegion{200.5, 100.5, 150.375, 125.625}));
}

TEST(PickRegionTest, IsASquareAboutThePixel) {
  EXPECT_EQ(PickRegion::around({30, 40}, 2.5), (PickRegion{30, 40, 2.5, 2.5}));
}

}  // namespace
}  // namespace zyn
