#include "objects/text/DimensionLayout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace zyn {
namespace {

using Limits = std::numeric_limits<double>;

constexpr double kExact = 1e-12;
constexpr double kHalfAngle = 3.1415 / 12;
constexpr double kPixel = 0.25;
// With the lengths of `between`, in units of the plane.
constexpr double kTextDistance = 15 * kPixel;
constexpr double kOvershoot = 5 * kPixel;
constexpr double kArrow = 8 * kPixel;
const double kBack = kArrow * std::cos(kHalfAngle);
const double kSide = kArrow * std::sin(kHalfAngle);

DimensionSettings between(std::int32_t type, PlanePoint first, PlanePoint second, double offset) {
  return {.type = type,
          .first = first,
          .second = second,
          .offset = offset,
          .textDistance = 15,
          .overshoot = 5,
          .arrowLength = 8};
}

DimensionShape layOut(const DimensionSettings& settings, PlaneScale scale = {}) {
  const auto shape = layOutDimension(settings, kPixel, scale);
  EXPECT_TRUE(shape);
  return shape.value_or(DimensionShape());
}

void expectPoint(const PlanePoint& actual, double x, double y) {
  EXPECT_NEAR(actual.x, x, kExact);
  EXPECT_NEAR(actual.y, y, kExact);
}

void expectLine(const Segment& line, PlanePoint from, PlanePoint to) {
  expectPoint(line.from, from.x, from.y);
  expectPoint(line.to, to.x, to.y);
}

/// Twice the area, positive when the corners run counter-clockwise.
double area(const Arrow& arrow) {
  return (arrow[1].x - arrow[0].x) * (arrow[2].y - arrow[0].y) -
         (arrow[2].x - arrow[0].x) * (arrow[1].y - arrow[0].y);
}

/// The corners in either order; OpenGL needs them counter-clockwise.
void expectArrow(const Arrow& arrow, PlanePoint tip, PlanePoint corner, PlanePoint otherCorner) {
  SCOPED_TRACE(testing::Message() << "arrow at " << tip.x << ", " << tip.y);
  EXPECT_GT(area(arrow), 0);
  expectPoint(arrow[0], tip.x, tip.y);
  const bool inOrder = std::hypot(arrow[1].x - corner.x, arrow[1].y - corner.y) < kExact;
  expectPoint(arrow[1], inOrder ? corner.x : otherCorner.x, inOrder ? corner.y : otherCorner.y);
  expectPoint(arrow[2], inOrder ? otherCorner.x : corner.x, inOrder ? otherCorner.y : corner.y);
}

TEST(DimensionLayout, AlongXAboveThePoints) {
  const auto shape = layOut(between(2, {10, 3}, {-2, 7}, 4));
  expectLine(shape.lines[0], {10, 3}, {10, 11 + kOvershoot});
  expectLine(shape.lines[1], {-2, 7}, {-2, 11 + kOvershoot});
  expectLine(shape.lines[2], {10, 11}, {-2, 11});
  expectPoint(shape.text, 4, 11 + kTextDistance);
  EXPECT_EQ(shape.reference, 5);
  EXPECT_TRUE(shape.alongAxis);
  ASSERT_EQ(shape.arrows.size(), 2U);
  expectArrow(shape.arrows[0], {10, 11}, {10 - kBack, 11 - kSide}, {10 - kBack, 11 + kSide});
  expectArrow(shape.arrows[1], {-2, 11}, {-2 + kBack, 11 - kSide}, {-2 + kBack, 11 + kSide});
}

TEST(DimensionLayout, AlongXBelowThePoints) {
  for (const double offset : {-4.0, 0.0}) {
    const double line = 3 + offset;
    const auto shape = layOut(between(2, {-2, 7}, {10, 3}, offset));
    expectLine(shape.lines[0], {-2, 7}, {-2, line - kOvershoot});
    expectLine(shape.lines[1], {10, 3}, {10, line - kOvershoot});
    expectLine(shape.lines[2], {-2, line}, {10, line});
    expectPoint(shape.text, 4, line - kTextDistance);
    EXPECT_EQ(shape.reference, 7);
    ASSERT_EQ(shape.arrows.size(), 2U);
    expectArrow(shape.arrows[0], {-2, line}, {-2 + kBack, line - kSide},
                {-2 + kBack, line + kSide});
    expectArrow(shape.arrows[1], {10, line}, {10 - kBack, line - kSide},
                {10 - kBack, line + kSide});
  }
}

TEST(DimensionLayout, AlongYRightOfThePoints) {
  const auto shape = layOut(between(1, {3, 10}, {7, -2}, 4));
  expectLine(shape.lines[0], {3, 10}, {11 + kOvershoot, 10});
  expectLine(shape.lines[1], {7, -2}, {11 + kOvershoot, -2});
  expectLine(shape.lines[2], {11, 10}, {11, -2});
  expectPoint(shape.text, 11 + kTextDistance, 4);
  EXPECT_EQ(shape.reference, 8);
  EXPECT_TRUE(shape.alongAxis);
  ASSERT_EQ(shape.arrows.size(), 2U);
  expectArrow(shape.arrows[0], {11, 10}, {11 - kSide, 10 - kBack}, {11 + kSide, 10 - kBack});
  expectArrow(shape.arrows[1], {11, -2}, {11 - kSide, -2 + kBack}, {11 + kSide, -2 + kBack});
}

TEST(DimensionLayout, AlongYLeftOfThePoints) {
  for (const double offset : {-4.0, 0.0}) {
    const double line = 3 + offset;
    const auto shape = layOut(between(1, {3, 10}, {7, -2}, offset));
    expectLine(shape.lines[0], {3, 10}, {line - kOvershoot, 10});
    expectLine(shape.lines[1], {7, -2}, {line - kOvershoot, -2});
    expectLine(shape.lines[2], {line, 10}, {line, -2});
    expectPoint(shape.text, line - kTextDistance, 4);
    EXPECT_EQ(shape.reference, 6);
    ASSERT_EQ(shape.arrows.size(), 2U);
    expectArrow(shape.arrows[0], {line, 10}, {line - kSide, 10 - kBack},
                {line + kSide, 10 - kBack});
  }
}

/// A frame along a direction, in which an aligned dimension looks like one along x.
struct Frame {
  PlanePoint along;
  PlanePoint away;
  PlanePoint origin;

  PlanePoint at(double u, double n) const {
    return {origin.x + u * along.x + n * away.x, origin.y + u * along.y + n * away.y};
  }
};

TEST(DimensionLayout, AlignedWithThePoints) {
  for (int degrees = 5; degrees < 360; degrees += 10) {
    SCOPED_TRACE(degrees);
    const double angle = degrees * 3.14159265358979323846 / 180;
    const Frame frame{.along = {std::cos(angle), std::sin(angle)},
                      .away = {-std::sin(angle), std::cos(angle)},
                      .origin = {3, -2}};
    const auto shape = layOut(between(3, frame.at(0, 0), frame.at(9, 0), 4));
    expectLine(shape.lines[0], frame.at(0, 0), frame.at(0, 4 + kOvershoot));
    expectLine(shape.lines[1], frame.at(9, 0), frame.at(9, 4 + kOvershoot));
    expectLine(shape.lines[2], frame.at(0, 4), frame.at(9, 4));
    const PlanePoint text = frame.at(4.5, 4 + kTextDistance);
    expectPoint(shape.text, text.x, text.y);
    EXPECT_FALSE(shape.alongAxis);
    ASSERT_EQ(shape.arrows.size(), 2U);
    expectArrow(shape.arrows[0], frame.at(0, 4), frame.at(kBack, 4 - kSide),
                frame.at(kBack, 4 + kSide));
    expectArrow(shape.arrows[1], frame.at(9, 4), frame.at(9 - kBack, 4 - kSide),
                frame.at(9 - kBack, 4 + kSide));
  }
}

TEST(DimensionLayout, AlignedOnTheOtherSideWithoutArrows) {
  const auto shape = layOut(between(3, {0, 0}, {6, 8}, -5));
  // Along (0.6, 0.8), to the right of it (0.8, -0.6).
  expectLine(shape.lines[0], {0, 0}, {0.8 * (5 + kOvershoot), -0.6 * (5 + kOvershoot)});
  expectLine(shape.lines[2], {4, -3}, {10, 5});
  expectPoint(shape.text, 7 + 0.8 * kTextDistance, 1 - 0.6 * kTextDistance);
  EXPECT_EQ(shape.reference, 4);
  EXPECT_TRUE(shape.arrows.empty());
}

TEST(DimensionLayout, AlignedWithoutOffset) {
  const auto shape = layOut(between(3, {0, 0}, {6, 8}, 0));
  expectLine(shape.lines[2], {0, 0}, {6, 8});
  expectPoint(shape.text, 3 - 0.8 * kTextDistance, 4 + 0.6 * kTextDistance);
  EXPECT_TRUE(shape.arrows.empty());
}

TEST(DimensionLayout, AlignedTextLiesBeyondTheLine) {
  const struct {
    PlanePoint second;
    double offset;
    std::int32_t reference;
  } cases[] = {
      {{1, -1}, 1, 1},  {{-1, -1}, 1, 4}, {{1, 1}, 1, 2},  {{-1, 1}, 1, 3},
      {{-1, 1}, -1, 1}, {{1, 1}, -1, 4},  {{1, 0}, 1, 2},  {{-1, 0}, 1, 3},
      {{0, -1}, 1, 4},  {{0, 1}, 1, 3},   {{0, 1}, -1, 4},
  };
  for (const auto& [second, offset, reference] : cases) {
    EXPECT_EQ(layOut(between(3, {0, 0}, second, offset)).reference, reference)
        << second.x << ", " << second.y << ", " << offset;
  }
}

TEST(DimensionLayout, OtherTypesAreNone) {
  for (const std::int32_t type : {0, 4, -1, 100, std::numeric_limits<std::int32_t>::min()}) {
    EXPECT_FALSE(layOutDimension(between(type, {0, 0}, {1, 1}, 1), kPixel));
  }
}

TEST(DimensionLayout, EqualPoints) {
  const auto shape = layOut(between(2, {2, 3}, {2, 3}, 1));
  expectLine(shape.lines[2], {2, 4}, {2, 4});
  expectPoint(shape.text, 2, 4 + kTextDistance);
  EXPECT_TRUE(layOutDimension(between(1, {2, 3}, {2, 3}, 1), kPixel));
  EXPECT_FALSE(layOutDimension(between(3, {2, 3}, {2, 3}, 1), kPixel));
  EXPECT_FALSE(layOutDimension(between(3, {2, 3}, {2, 3}, 0), kPixel));
}

TEST(DimensionLayout, OfWhatIsNotFinite) {
  for (const double odd : {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity()}) {
    for (const std::int32_t type : {1, 2, 3}) {
      EXPECT_FALSE(layOutDimension(between(type, {odd, 0}, {1, 2}, 1), kPixel));
      EXPECT_FALSE(layOutDimension(between(type, {0, odd}, {1, 2}, 1), kPixel));
      EXPECT_FALSE(layOutDimension(between(type, {0, 0}, {odd, 2}, 1), kPixel));
      EXPECT_FALSE(layOutDimension(between(type, {0, 0}, {1, odd}, 1), kPixel));
      EXPECT_FALSE(layOutDimension(between(type, {0, 0}, {1, 2}, odd), kPixel));
      EXPECT_FALSE(layOutDimension(between(type, {0, 0}, {1, 2}, 1), odd));
      EXPECT_FALSE(layOutDimension(between(type, {0, 0}, {1, 2}, 1), kPixel, {odd, 1}));
      EXPECT_FALSE(layOutDimension(between(type, {0, 0}, {1, 2}, 1), kPixel, {1, odd}));
    }
  }
}

TEST(DimensionLayout, OfHugeAndTinyValues) {
  for (const std::int32_t type : {1, 2, 3}) {
    EXPECT_FALSE(layOutDimension(
        between(type, {0, 0}, {Limits::max(), Limits::max()}, Limits::max()), kPixel));
    EXPECT_TRUE(layOutDimension(between(type, {0, 0}, {1e300, 1e300}, 1e300), kPixel));
    EXPECT_TRUE(layOutDimension(between(type, {0, 0}, {1e-300, 1e-300}, 1), kPixel));
  }
  DimensionSettings settings = between(2, {0, 0}, {1, 0}, 1);
  settings.textDistance = std::numeric_limits<std::int32_t>::min();
  settings.overshoot = std::numeric_limits<std::int32_t>::max();
  settings.arrowLength = std::numeric_limits<std::int32_t>::max();
  expectPoint(layOut(settings).text, 0.5, 1 + kPixel * std::numeric_limits<std::int32_t>::min());
}

TEST(DimensionLayout, InAScaledPlane) {
  const PlaneScale scale{2, 10};
  const auto alongX = layOut(between(2, {10, 3}, {-2, 7}, 4), scale);
  expectLine(alongX.lines[0], {20, 30}, {20, 110 + kOvershoot});
  expectLine(alongX.lines[2], {20, 110}, {-4, 110});
  expectPoint(alongX.text, 8, 110 + kTextDistance);
  expectArrow(alongX.arrows[0], {20, 110}, {20 - kBack, 110 - kSide}, {20 - kBack, 110 + kSide});

  const auto alongY = layOut(between(1, {3, 10}, {7, -2}, 4), scale);
  expectLine(alongY.lines[2], {22, 100}, {22, -20});
  expectPoint(alongY.text, 22 + kTextDistance, 40);
}

TEST(DimensionLayout, AlignedInAScaledPlane) {
  const PlaneScale scale{2, 1};
  const DimensionSettings settings = between(3, {0, 0}, {3, 8}, 5);
  const auto shape = layOut(settings, scale);
  // In the plane the points are (0, 0) and (6, 8). The dimension line is the image of the parallel
  // at distance 5 from (0, 0)-(3, 8), and the extension lines stand upright on it.
  const double distance = 5 * 2 * std::hypot(3, 8) / 10;
  expectLine(shape.lines[2], {-0.8 * distance, 0.6 * distance},
             {6 - 0.8 * distance, 8 + 0.6 * distance});
  const double normal = std::hypot(3, 8);
  const PlanePoint onParallel{2 * (-8 / normal * 5), 1 * (3 / normal * 5)};
  EXPECT_NEAR(-0.8 * onParallel.x + 0.6 * onParallel.y, distance, kExact);
  ASSERT_EQ(shape.arrows.size(), 2U);
  EXPECT_NEAR(std::hypot(shape.arrows[0][1].x - shape.arrows[0][0].x,
                         shape.arrows[0][1].y - shape.arrows[0][0].y),
              kArrow, kExact);
}

}  // namespace
}  // namespace zyn
