#include "objects/dimension/CoteLayout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/VectorMath.h"
#include "support/Screens.h"

namespace zyn {
namespace {

using test::orthographicScreen;

constexpr double kExact = 1e-12;
constexpr double kOvershoot = 5;  ///< of the extension lines, pixels
constexpr double kUnit = 4;       ///< pixels of a model unit
constexpr double kPixel = 1 / kUnit;

void expectPoint(const Point& actual, const Point& expected, double tolerance = kExact) {
  EXPECT_NEAR(actual.x, expected.x, tolerance);
  EXPECT_NEAR(actual.y, expected.y, tolerance);
  EXPECT_NEAR(actual.z, expected.z, tolerance);
}

void expectLine(const CoteLine& line, const Point& from, const Point& to) {
  expectPoint(line.from, from);
  expectPoint(line.to, to);
}

Point centreOf(const Quad& quad) { return quad[0] + 0.5 * (quad[2] - quad[0]); }

/// A dimension 100 units (400 pixels) wide, seen from the front.
class CoteLayoutTest : public testing::Test {
 protected:
  CoteLayoutTest() {
    shape.type = CoteShape::kHorizontal;
    shape.first = {10, 20, 3};
    shape.second = {110, 45, 3};
    shape.offset = 30;
    // Four ems wide, one and a half high: 80 by 30 pixels.
    content.text = {0.5, 4.5, -0.25, 1.25};
    content.size = {30, FontSize::kPixel};
  }

  CoteLayout layOut() const { return layOut(orthographicScreen(kUnit)); }
  CoteLayout layOut(const ScreenMap& screen) const {
    auto layout = layOutCote(shape, content, screen);
    if (!layout) {
      throw std::runtime_error("nothing was laid out");
    }
    return *layout;
  }

  /// The dimension line comes last.
  static const CoteLine& dimensionLine(const CoteLayout& layout) { return layout.lines.back(); }

  CoteShape shape;
  CoteContent content;
};

// --- lines ---------------------------------------------------------------------------------------

TEST_F(CoteLayoutTest, AHorizontalOneAboveThePoints) {
  const CoteLayout layout = layOut();
  ASSERT_EQ(layout.lines.size(), 3U);
  expectLine(layout.lines[0], {10, 20, 3}, {10, 75 + kOvershoot * kPixel, 3});
  expectLine(layout.lines[1], {110, 45, 3}, {110, 75 + kOvershoot * kPixel, 3});
  expectLine(layout.lines[2], {10, 75, 3}, {110, 75, 3});
}

TEST_F(CoteLayoutTest, AHorizontalOneBelowThePoints) {
  for (const double offset : {-30.0, 0.0}) {
    shape.offset = offset;
    const CoteLayout layout = layOut();
    const double line = 20 + offset;
    expectLine(layout.lines[0], {10, 20, 3}, {10, line - kOvershoot * kPixel, 3});
    expectLine(layout.lines[1], {110, 45, 3}, {110, line - kOvershoot * kPixel, 3});
    expectLine(layout.lines[2], {10, line, 3}, {110, line, 3});
  }
}

TEST_F(CoteLayoutTest, AVerticalOneRightOfThePoints) {
  shape.type = CoteShape::kVertical;
  const CoteLayout layout = layOut();
  ASSERT_EQ(layout.lines.size(), 3U);
  expectLine(layout.lines[0], {10, 20, 3}, {140 + kOvershoot * kPixel, 20, 3});
  expectLine(layout.lines[1], {110, 45, 3}, {140 + kOvershoot * kPixel, 45, 3});
  expectLine(layout.lines[2], {140, 20, 3}, {140, 45, 3});
}

TEST_F(CoteLayoutTest, AVerticalOneLeftOfThePoints) {
  shape.type = CoteShape::kVertical;
  for (const double offset : {-30.0, 0.0}) {
    shape.offset = offset;
    const CoteLayout layout = layOut();
    const double line = 10 + offset;
    expectLine(layout.lines[0], {10, 20, 3}, {line - kOvershoot * kPixel, 20, 3});
    expectLine(layout.lines[1], {110, 45, 3}, {line - kOvershoot * kPixel, 45, 3});
    expectLine(layout.lines[2], {line, 20, 3}, {line, 45, 3});
  }
}

TEST_F(CoteLayoutTest, AnAlignedOneBesideThePoints) {
  shape.type = CoteShape::kAligned;
  shape.second = {90, 80, 3};  // direction (0.8, 0.6)
  for (const double offset : {25.0, -25.0, 0.0}) {
    shape.offset = offset;
    const double past = offset + (offset < 0 ? -kOvershoot : kOvershoot) * kPixel;
    const CoteLayout layout = layOut();
    expectLine(layout.lines[0], {10, 20, 3}, {10 - 0.6 * past, 20 + 0.8 * past, 3});
    expectLine(layout.lines[1], {90, 80, 3}, {90 - 0.6 * past, 80 + 0.8 * past, 3});
    expectLine(layout.lines[2], {10 - 0.6 * offset, 20 + 0.8 * offset, 3},
               {90 - 0.6 * offset, 80 + 0.8 * offset, 3});
    EXPECT_TRUE(layout.lines[2].isSlanted);
  }
}

TEST_F(CoteLayoutTest, TheOrderOfThePointsMovesNoLine) {
  const CoteLayout layout = layOut();
  std::swap(shape.first, shape.second);
  const CoteLayout swapped = layOut();
  expectLine(swapped.lines[0], layout.lines[1].from, layout.lines[1].to);
  expectLine(swapped.lines[1], layout.lines[0].from, layout.lines[0].to);
  expectLine(swapped.lines[2], layout.lines[2].to, layout.lines[2].from);
}

TEST_F(CoteLayoutTest, HorizontalAndVerticalLinesAreNotSlanted) {
  for (const CoteLine& line : layOut().lines) {
    EXPECT_FALSE(line.isSlanted);
  }
  for (const CoteLine& line : layOut(orthographicScreen(kUnit, test::rotation(0.5, 2))).lines) {
    EXPECT_TRUE(line.isSlanted);
  }
}

TEST_F(CoteLayoutTest, AGivenDirectionIsMeasuredAlong) {
  shape.direction = {0, 7, 0};
  shape.offset = 8;  // to the left of upwards
  const CoteLayout layout = layOut();
  expectLine(layout.lines[2], {2, 20, 3}, {2, 45, 3});
  shape.offset = -8;
  expectLine(layOut().lines[2], {118, 20, 3}, {118, 45, 3});
}

TEST_F(CoteLayoutTest, LiesInThePlaneOfTheFirstPoint) {
  shape.normal = {0, -1, 0};
  shape.second = {110, -7, 33};
  shape.offset = 10;
  const CoteLayout layout = layOut(orthographicScreen(kUnit, test::rotation(-M_PI / 2, 0)));
  ASSERT_EQ(layout.lines.size(), 4U);
  const double past = kOvershoot * kPixel;
  expectLine(layout.lines[0], {10, 20, 3}, {10, 20, 43 + past});
  expectLine(layout.lines[1], {110, -7, 33}, {110, 20, 33});
  expectLine(layout.lines[2], {110, 20, 33}, {110, 20, 43 + past});
  expectLine(layout.lines[3], {10, 20, 43}, {110, 20, 43});
}

TEST_F(CoteLayoutTest, AnyTypeButThreeIsATextOnly) {
  for (const std::int32_t type : {0, -1, 4, 2147483647, -2147483647}) {
    shape.type = type;
    const CoteLayout layout = layOut();
    EXPECT_TRUE(layout.lines.empty());
    EXPECT_TRUE(layout.arrows.empty());
    EXPECT_TRUE(layout.grips[0].empty());
    EXPECT_TRUE(layout.grips[1].empty());
    EXPECT_TRUE(layout.text);
  }
}

// --- arrows --------------------------------------------------------------------------------------

TEST_F(CoteLayoutTest, ArrowsLieInsideWhereThereIsRoom) {
  const CoteLayout layout = layOut();
  ASSERT_EQ(layout.arrows.size(), 2U);
  const double back = 15 * kPixel;
  const double half = 2.5 * kPixel;
  expectPoint(layout.arrows[0][0], {10, 75, 3});
  expectPoint(layout.arrows[0][1], {10 + back, 75 - half, 3});
  expectPoint(layout.arrows[0][2], {10 + back, 75 + half, 3});
  expectPoint(layout.arrows[1][0], {110, 75, 3});
  expectPoint(layout.arrows[1][1], {110 - back, 75 - half, 3});
  expectPoint(layout.arrows[1][2], {110 - back, 75 + half, 3});
}

TEST_F(CoteLayoutTest, ArrowsStandOutsideWithTailsWhereThereIsNone) {
  shape.second.x = 18;  // 32 pixels, where 2 x 15 + 5 are needed
  const CoteLayout layout = layOut();
  const double back = 15 * kPixel;
  expectPoint(layout.arrows[0][0], {10, 75, 3});
  EXPECT_NEAR(layout.arrows[0][1].x, 10 - back, kExact);
  EXPECT_NEAR(layout.arrows[0][2].x, 10 - back, kExact);
  expectPoint(layout.arrows[1][0], {18, 75, 3});
  EXPECT_NEAR(layout.arrows[1][1].x, 18 + back, kExact);
  expectLine(dimensionLine(layout), {10 - 2 * back, 75, 3}, {18 + 2 * back, 75, 3});
}

TEST_F(CoteLayoutTest, TheRoomIsTwoArrowsAndAWidth) {
  const auto isInside = [&](double pixels) {
    shape.second.x = shape.first.x + pixels * kPixel;
    return layOut().arrows[0][1].x > shape.first.x;
  };
  EXPECT_TRUE(isInside(35.01));
  EXPECT_FALSE(isInside(34.99));
  shape.arrowLength = 10;
  shape.arrowWidth = 8;
  EXPECT_TRUE(isInside(28.01));
  EXPECT_FALSE(isInside(27.99));
}

TEST_F(CoteLayoutTest, ArrowsMayBeKeptOutside) {
  shape.arrowsInside = false;
  EXPECT_LT(layOut().arrows[0][1].x, 10);
}

TEST_F(CoteLayoutTest, ArrowsOfEqualPointsFaceEachOther) {
  for (const std::int32_t type : {1, 2, 3}) {
    shape.type = type;
    shape.second = shape.first;
    const CoteLayout layout = layOut();
    ASSERT_EQ(layout.arrows.size(), 2U);
    expectPoint(layout.arrows[0][0], layout.arrows[1][0]);
    EXPECT_NEAR((layout.arrows[0][1] - layout.arrows[1][1]).norm(), 30 * kPixel, kExact);
  }
}

TEST_F(CoteLayoutTest, ThereAreNoArrowsOfNoLength) {
  for (const std::int32_t length : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
    shape.arrowLength = length;
    const CoteLayout layout = layOut();
    EXPECT_TRUE(layout.arrows.empty());
    expectLine(dimensionLine(layout), {10, 75, 3}, {110, 75, 3});
  }
}

TEST_F(CoteLayoutTest, AWidthBelowZeroCountsAsNone) {
  shape.arrowWidth = -40;
  const CoteLayout layout = layOut();
  expectPoint(layout.arrows[0][1], layout.arrows[0][2]);
}

// --- text ----------------------------------------------------------------------------------------

TEST_F(CoteLayoutTest, ATextOnlyIsHeldByItsAnchor) {
  shape.type = 0;
  shape.position = {50, 60, 7};
  const PlanePoint anchors[] = {{0, 0},       {0.5, -0.25}, {4.5, -0.25}, {4.5, 1.25}, {0.5, 1.25},
                                {2.5, -0.25}, {4.5, 0.5},   {2.5, 1.25},  {0.5, 0.5},  {2.5, 0.5}};
  const double em = 20 * kPixel;
  for (std::int32_t reference = 0; reference < 10; ++reference) {
    shape.reference = reference;
    const CoteLayout layout = layOut();
    ASSERT_TRUE(layout.text);
    const PlanePoint& anchor = anchors[reference];
    expectPoint(layout.text->origin, {50 - anchor.x * em, 60 - anchor.y * em, 7});
    expectPoint(layout.text->corners[0],
                {50 + (0.5 - anchor.x) * em, 60 + (-0.25 - anchor.y) * em, 7});
    expectPoint(layout.text->corners[2],
                {50 + (4.5 - anchor.x) * em, 60 + (1.25 - anchor.y) * em, 7});
    EXPECT_NEAR(layout.text->right.x, em, kExact);
    EXPECT_NEAR(layout.text->up.y, em, kExact);
    EXPECT_EQ(layout.text->height, 30);
  }
}

TEST_F(CoteLayoutTest, ALineIsAsHighOnTheScreenAsTheSizeTells) {
  const struct {
    std::int32_t unit;
    double value;
    double pixels;
  } sizes[] = {{FontSize::kPixel, 17, 17},
               {FontSize::kMillimetre, 25.4, 72},
               {FontSize::kInch, 0.25, 18},
               {FontSize::kPoint, 14, 14},
               {FontSize::kModelMillimetre, 5000, 20},
               {FontSize::kModelInch, 100, 10.16},
               {FontSize::kModel, 6, 24},
               {99, 40, 40}};
  for (const std::int32_t type : {0, 1, 2, 3}) {
    shape.type = type;
    for (const auto& size : sizes) {
      content.size = {size.value, size.unit};
      const CoteLayout layout = layOut();
      ASSERT_TRUE(layout.text);
      EXPECT_NEAR(layout.text->height, size.pixels, kExact) << size.unit;
      const Quad& corners = layout.text->corners;
      EXPECT_NEAR(corners[3].y - corners[0].y, size.pixels * kPixel, kExact) << size.unit;
    }
  }
}

TEST_F(CoteLayoutTest, TextStandsOverTheMiddleOfAHorizontalLine) {
  const Quad above = layOut().text->corners;
  expectPoint(above[0], {60 - 40 * kPixel, 75 + 15 * kPixel, 3});
  expectPoint(above[2], {60 + 40 * kPixel, 75 + 45 * kPixel, 3});
  shape.offset = -30;
  const Quad below = layOut().text->corners;
  expectPoint(below[0], {60 - 40 * kPixel, -10 - 45 * kPixel, 3});
  expectPoint(below[2], {60 + 40 * kPixel, -10 - 15 * kPixel, 3});
}

TEST_F(CoteLayoutTest, TextStandsBesideTheMiddleOfAVerticalLine) {
  shape.type = CoteShape::kVertical;
  const Quad right = layOut().text->corners;
  expectPoint(right[0], {140 + 15 * kPixel, 32.5 - 15 * kPixel, 3});
  expectPoint(right[2], {140 + 95 * kPixel, 32.5 + 15 * kPixel, 3});
  shape.offset = -30;
  const Quad left = layOut().text->corners;
  expectPoint(left[2], {-20 - 15 * kPixel, 32.5 + 15 * kPixel, 3});
}

TEST_F(CoteLayoutTest, TextClearsASlantedLine) {
  shape.type = CoteShape::kAligned;
  shape.second = {90, 80, 3};
  for (const double offset : {25.0, -25.0}) {
    shape.offset = offset;
    const CoteLayout layout = layOut();
    const Vecteur outward = (offset < 0 ? -1 : 1) * Vecteur{-0.6, 0.8, 0};
    const Point middle{50 - 0.6 * offset, 50 + 0.8 * offset, 3};
    // Opposite the middle of the line, its nearest corner at the distance asked for.
    const Vecteur way = centreOf(layout.text->corners) - middle;
    EXPECT_NEAR(cross(way, outward).norm(), 0, kExact);
    double nearest = std::numeric_limits<double>::max();
    for (const Point& corner : layout.text->corners) {
      nearest = std::min(nearest, dot(corner - middle, outward));
    }
    EXPECT_NEAR(nearest, 15 * kPixel, kExact);
  }
}

TEST_F(CoteLayoutTest, TheDistanceOfTheTextIsInPixels) {
  shape.textDistance = 40;
  EXPECT_NEAR(layOut().text->corners[0].y, 75 + 40 * kPixel, kExact);
  shape.textDistance = -10;
  EXPECT_NEAR(layOut().text->corners[0].y, 75 - 10 * kPixel, kExact);
}

TEST_F(CoteLayoutTest, PositionMovesTheTextTowardsTheSecondPoint) {
  shape.along = 20;
  EXPECT_NEAR(centreOf(layOut().text->corners).x, 80, kExact);
  std::swap(shape.first, shape.second);
  EXPECT_NEAR(centreOf(layOut().text->corners).x, 40, kExact);
  shape.type = CoteShape::kVertical;
  shape.along = -4;
  EXPECT_NEAR(centreOf(layOut().text->corners).y, 36.5, kExact);
}

TEST_F(CoteLayoutTest, TheLineReachesToATextOutside) {
  shape.along = 90;
  expectLine(dimensionLine(layOut()), {10, 75, 3}, {150, 75, 3});
  shape.along = -70;
  expectLine(dimensionLine(layOut()), {-10, 75, 3}, {110, 75, 3});
}

TEST_F(CoteLayoutTest, TextInThePlaneReadsAlongTheLine) {
  shape.alwaysReadable = false;
  shape.type = CoteShape::kVertical;
  const CoteLayout layout = layOut();
  // Reads upwards, with its top to the left; so on the right of the line its top is near.
  expectPoint(layout.text->corners[3], {140 + 15 * kPixel, 32.5 - 40 * kPixel, 3});
  expectPoint(layout.text->corners[1], {140 + 45 * kPixel, 32.5 + 40 * kPixel, 3});
  shape.type = CoteShape::kHorizontal;
  expectPoint(layOut().text->corners[0], {60 - 40 * kPixel, 75 + 15 * kPixel, 3});
}

TEST_F(CoteLayoutTest, TextInThePlaneTurnsWithTheView) {
  shape.alwaysReadable = false;
  const Quad front = layOut().text->corners;
  const GlMatrix turned = test::product(test::rotation(0.6, 0), test::rotation(0.9, 1));
  const Quad aside = layOut(orthographicScreen(kUnit, turned)).text->corners;
  for (std::size_t i = 0; i < 4; ++i) {
    expectPoint(aside[i], front[i], 1e-10);
  }
}

TEST_F(CoteLayoutTest, ReadableTextFacesTheViewerWhateverTheView) {
  for (const std::int32_t type : {0, 1, 2, 3}) {
    shape.type = type;
    shape.reference = 9;
    for (int i = 0; i < 60; ++i) {
      const GlMatrix turned =
          test::product(test::rotation(0.4 * i, 0),
                        test::product(test::rotation(1.1 * i, 1), test::scaling(2, 2, 2)));
      const ScreenMap screen = orthographicScreen(kUnit, turned);
      const Quad corners = layOut(screen).text->corners;
      const PlanePoint lower = screen.pixelOf(corners[0]);
      const PlanePoint upper = screen.pixelOf(corners[2]);
      EXPECT_NEAR(upper.x - lower.x, 80, 1e-9);
      EXPECT_NEAR(upper.y - lower.y, 30, 1e-9);
    }
  }
}

TEST_F(CoteLayoutTest, ReadableTextIsClearOfTheLineFromEverySide) {
  for (int i = 0; i < 60; ++i) {
    const GlMatrix turned = test::product(test::rotation(0.3 * i, 0), test::rotation(0.7 * i, 1));
    const ScreenMap screen = orthographicScreen(kUnit, turned);
    const CoteLayout layout = layOut(screen);
    const PlanePoint from = screen.pixelOf(dimensionLine(layout).from);
    const PlanePoint to = screen.pixelOf(dimensionLine(layout).to);
    const double length = std::hypot(to.x - from.x, to.y - from.y);
    double nearest = std::numeric_limits<double>::max();
    double farthest = 0;
    for (const Point& corner : layout.text->corners) {
      const PlanePoint p = screen.pixelOf(corner);
      const double distance =
          ((to.x - from.x) * (p.y - from.y) - (to.y - from.y) * (p.x - from.x)) / length;
      nearest = std::min(nearest, std::abs(distance));
      farthest = std::max(farthest, std::abs(distance));
    }
    EXPECT_NEAR(nearest, 15, 1e-6) << i;
    EXPECT_GE(farthest, 15 + 30 - 1e-6) << i;
  }
}

TEST_F(CoteLayoutTest, SeenEndOnTheTextStandsWhereTheLineLies) {
  // The line of sight is the dimension line's; its offset points up.
  const ScreenMap screen = orthographicScreen(kUnit, test::rotation(M_PI / 2, 1));
  const CoteLayout layout = layOut(screen);
  const PlanePoint foot = screen.pixelOf({60, 75, 3});
  const PlanePoint centre = screen.pixelOf(centreOf(layout.text->corners));
  EXPECT_NEAR(centre.x, foot.x, 1e-9);
  EXPECT_NEAR(centre.y, foot.y + 30, 1e-9);
}

TEST_F(CoteLayoutTest, SeenFromTheEdgeOfItsPlaneTheTextStandsOverTheLine) {
  const ScreenMap screen = orthographicScreen(kUnit, test::rotation(M_PI / 2, 0));
  const CoteLayout layout = layOut(screen);
  const PlanePoint foot = screen.pixelOf({60, 75, 3});
  const PlanePoint centre = screen.pixelOf(centreOf(layout.text->corners));
  EXPECT_NEAR(centre.x, foot.x, 1e-9);
  EXPECT_NEAR(centre.y, foot.y + 30, 1e-9);
}

TEST_F(CoteLayoutTest, InPerspectiveEverythingKeepsItsPixels) {
  const ScreenMap screen(test::translation(-60, -50, -200),
                         {test::perspective(0.4, 0.3, 1, 1000), test::kViewport});
  shape.second = {110, 20, -220};  // far behind the first
  shape.direction = {1, 0, -2};
  shape.normal = {2, 0, 1};
  shape.offset = 10;
  const CoteLayout layout = layOut(screen);
  const auto pixels = [&](const Point& a, const Point& b) {
    const PlanePoint p = screen.pixelOf(a);
    const PlanePoint q = screen.pixelOf(b);
    return std::hypot(q.x - p.x, q.y - p.y);
  };
  const Quad& corners = layout.text->corners;
  EXPECT_NEAR(pixels(corners[0], corners[1]), 80, 1e-9);
  EXPECT_NEAR(pixels(corners[0], corners[3]), 30, 1e-9);
  for (const CoteArrow& arrow : layout.arrows) {
    // Across the line of sight they show their width.
    EXPECT_NEAR(pixels(arrow[1], arrow[2]), 5, 0.5);
  }
  for (const auto& grips : layout.grips) {
    EXPECT_NEAR(pixels(grips[0][0], grips[0][1]), 10, 1e-9);
    EXPECT_NEAR(pixels(grips[0][1], grips[0][2]), 10, 1e-9);
    EXPECT_NEAR(pixels(grips[1][0], grips[1][1]), 15, 0.2);  // not as far away as its foot
  }
}

TEST_F(CoteLayoutTest, ArrowsKeepTheirPixelsWhereAxesDiffer) {
  const ScreenMap screen = orthographicScreen(1, test::scaling(2, 10, 1));
  const CoteLayout layout = layOut(screen);
  EXPECT_NEAR(layout.arrows[0][1].x - layout.arrows[0][0].x, 15 / 2.0, kExact);
  EXPECT_NEAR(layout.arrows[0][2].y - layout.arrows[0][1].y, 5 / 10.0, kExact);
  EXPECT_NEAR(layout.text->corners[0].y, 75 + 15 / 10.0, kExact);
  EXPECT_NEAR(layout.text->corners[1].x - layout.text->corners[0].x, 80 / 2.0, kExact);
}

TEST_F(CoteLayoutTest, AnEmptyTextIsLeftOut) {
  content.text.right = content.text.left;
  const CoteLayout layout = layOut();
  EXPECT_FALSE(layout.text);
  EXPECT_EQ(layout.lines.size(), 3U);
  expectPoint(layout.anchor, {60, 75, 3});
}

TEST_F(CoteLayoutTest, TextWithoutAHeightIsLeftOut) {
  for (const double size : {0.0, -5.0, std::numeric_limits<double>::quiet_NaN()}) {
    content.size.value = size;
    const CoteLayout layout = layOut();
    EXPECT_FALSE(layout.text);
    EXPECT_EQ(layout.lines.size(), 3U);
  }
}

// --- picture -------------------------------------------------------------------------------------

TEST_F(CoteLayoutTest, ThePictureStandsLeftOfTheText) {
  EXPECT_FALSE(layOut().picture);
  content.pictureWidth = 48;
  content.pictureHeight = 70;
  const CoteLayout layout = layOut();
  ASSERT_TRUE(layout.picture);
  // Together 132 pixels wide and 70 high.
  expectPoint(layout.picture->corners[0], {60 - 66 * kPixel, 75 + 15 * kPixel, 3});
  expectPoint(layout.picture->corners[2], {60 - 18 * kPixel, 75 + 85 * kPixel, 3});
  expectPoint(layout.text->corners[0], {60 - 14 * kPixel, 75 + 35 * kPixel, 3});
  expectPoint(layout.text->corners[2], {60 + 66 * kPixel, 75 + 65 * kPixel, 3});
  expectPoint(layout.picture->at, {60 - 14 * kPixel, 75 + 50 * kPixel, 3});
  EXPECT_EQ(layout.picture->offset.x, -52);
  EXPECT_EQ(layout.picture->offset.y, -35);
}

TEST_F(CoteLayoutTest, APictureMovesNoTextThatIsHeldByItsAnchor) {
  shape.type = 0;
  shape.reference = 9;
  const Quad alone = layOut().text->corners;
  content.pictureWidth = content.pictureHeight = 100;
  const CoteLayout layout = layOut();
  expectPoint(layout.text->corners[0], alone[0]);
  expectPoint(layout.picture->corners[2], {-44 * kPixel, 50 * kPixel, 0});
}

TEST_F(CoteLayoutTest, WithoutTextThePictureTakesItsPlace) {
  content.pictureWidth = 48;
  content.pictureHeight = 32;
  content.text.right = content.text.left;
  const CoteLayout layout = layOut();
  ASSERT_TRUE(layout.picture);
  expectPoint(layout.picture->at, {60 - 24 * kPixel, 75 + 15 * kPixel, 3});
  EXPECT_EQ(layout.picture->offset.x, 0);
  EXPECT_EQ(layout.picture->offset.y, 0);
  expectPoint(layout.picture->corners[2], {60 + 24 * kPixel, 75 + 47 * kPixel, 3});

  shape.type = 0;
  shape.position = {50, 60, 7};
  shape.reference = 3;
  expectPoint(layOut().picture->at, {50 - 48 * kPixel, 60 - 32 * kPixel, 7});
}

// --- what can be taken hold of -------------------------------------------------------------------

TEST_F(CoteLayoutTest, SquaresCoverPointsAndArrows) {
  const CoteLayout layout = layOut();
  const Point measured[] = {shape.first, shape.second};
  for (std::size_t end = 0; end < 2; ++end) {
    ASSERT_EQ(layout.grips[end].size(), 2U);
    expectPoint(centreOf(layout.grips[end][0]), measured[end]);
    EXPECT_NEAR(layout.grips[end][0][2].x - layout.grips[end][0][0].x, 10 * kPixel, kExact);
    const Quad& overArrow = layout.grips[end][1];
    for (const Point& corner : layout.arrows[end]) {
      EXPECT_GE(corner.x, overArrow[0].x - kExact);
      EXPECT_LE(corner.x, overArrow[2].x + kExact);
      EXPECT_GE(corner.y, overArrow[0].y);
      EXPECT_LE(corner.y, overArrow[2].y);
    }
  }
}

TEST_F(CoteLayoutTest, WithoutArrowsOnlyThePointsAreCovered) {
  shape.arrowLength = 0;
  EXPECT_EQ(layOut().grips[0].size(), 1U);
  EXPECT_EQ(layOut().grips[1].size(), 1U);
}

// --- what cannot be drawn ------------------------------------------------------------------------

TEST_F(CoteLayoutTest, NothingIsLaidOutOnAUselessScreen) {
  const Lens lens{test::orthographic(-1, 1, -1, 1, -1, 1), test::kViewport};
  for (const std::int32_t type : {0, 1, 2, 3}) {
    shape.type = type;
    EXPECT_FALSE(layOutCote(shape, content, ScreenMap(GlMatrix{}, lens)));
    EXPECT_FALSE(layOutCote(shape, content, ScreenMap(test::scaling(1, 1, 0), lens)));
    EXPECT_FALSE(layOutCote(shape, content, ScreenMap(test::identity(), {lens.projection, {}})));
  }
}

TEST_F(CoteLayoutTest, NothingIsLaidOutOfCoordinatesThatCannotBeDrawn) {
  const double bad[] = {std::numeric_limits<double>::quiet_NaN(),
                        std::numeric_limits<double>::infinity(),
                        -std::numeric_limits<double>::infinity(),
                        1e300,
                        -1e300,
                        1e20};
  const auto expectNothing = [&](CoteShape broken, double value) {
    for (const std::int32_t type : {1, 2, 3}) {
      broken.type = type;
      EXPECT_FALSE(layOutCote(broken, content, orthographicScreen(kUnit))) << type << ' ' << value;
    }
  };
  for (const double value : bad) {
    for (double Point::*coordinate : {&Point::x, &Point::y, &Point::z}) {
      CoteShape broken = shape;
      broken.first.*coordinate = value;
      expectNothing(broken, value);
      broken = shape;
      broken.second.*coordinate = value;
      expectNothing(broken, value);
      broken = shape;
      broken.type = 0;
      broken.position.*coordinate = value;
      EXPECT_FALSE(layOutCote(broken, content, orthographicScreen(kUnit))) << value;
    }
    CoteShape broken = shape;
    broken.offset = value;
    expectNothing(broken, value);
    broken = shape;
    broken.along = value;
    expectNothing(broken, value);
  }
}

TEST_F(CoteLayoutTest, ExtremePixelCountsAreDrawn) {
  shape.arrowLength = shape.arrowWidth = shape.textDistance =
      std::numeric_limits<std::int32_t>::max();
  EXPECT_EQ(layOut().arrows.size(), 2U);
}

}  // namespace
}  // namespace zyn
