#include "trace/PointSequence.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace zyn {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

PointSequence steps(std::size_t count) {
  std::vector<double> x(count);
  std::vector<double> y(count);
  std::vector<double> z(count);
  for (std::size_t i = 0; i < count; ++i) {
    const auto value = static_cast<double>(i);
    x[i] = value;
    y[i] = std::sin(value);
    z[i] = -value;
  }
  return {x, y, z};
}

TEST(RunBoxesTest, WithoutPointsThereIsNothing) {
  const RunBoxes boxes{PointSequence()};
  EXPECT_EQ(boxes.levels(), 0U);
  EXPECT_TRUE(boxes.all().isEmpty());
}

TEST(RunBoxesTest, OnePointIsABoxOfItsOwn) {
  const RunBoxes boxes(PointSequence({1}, {2}, {3}));
  EXPECT_EQ(boxes.levels(), 1U);
  EXPECT_EQ(boxes.all().box, (Box3{1, 1, 2, 2, 3, 3}));
  EXPECT_TRUE(boxes.all().whole);
}

TEST(RunBoxesTest, WithoutZThePointsLieInThePlane) {
  EXPECT_EQ(RunBoxes(PointSequence({1, 4}, {2, 0})).all().box, (Box3{1, 4, 0, 2, 0, 0}));
}

TEST(RunBoxesTest, EveryRunHoldsItsSegmentsOnEveryLevel) {
  for (const std::size_t count : {2U, 16U, 17U, 18U, 32U, 33U, 256U, 257U, 258U, 5000U}) {
    const PointSequence points = steps(count);
    const RunBoxes boxes(points);
    ASSERT_EQ(boxes.endRun(boxes.levels() - 1), 1U) << count;
    for (std::size_t level = 0; level < boxes.levels(); ++level) {
      const std::size_t length = RunBoxes::length(level);
      ASSERT_EQ(boxes.endRun(level), std::max<std::size_t>(1, (count - 1 + length - 1) / length));
      for (std::size_t i = 0; i < boxes.endRun(level); ++i) {
        const auto first = static_cast<double>(i * length);
        const auto last = static_cast<double>(std::min(i * length + length, count - 1));
        const Box3& box = boxes.run(level, i).box;
        EXPECT_EQ(box.xMin, first);
        EXPECT_EQ(box.xMax, last);
        EXPECT_EQ(box.zMin, -last);
        EXPECT_EQ(box.zMax, -first);
        EXPECT_TRUE(boxes.run(level, i).whole);
      }
    }
  }
}

TEST(RunBoxesTest, APointWithAnyCoordinateThatIsNotFiniteIsAGap) {
  for (const double bad : {std::nan(""), kInfinity, -kInfinity}) {
    EXPECT_EQ(RunBoxes(PointSequence({1, bad, 3}, {4, 5, 6}, {7, 8, 9})).all().box,
              (Box3{1, 3, 4, 6, 7, 9}));
    EXPECT_EQ(RunBoxes(PointSequence({1, 2, 3}, {4, 5, bad}, {7, 8, 9})).all().box,
              (Box3{1, 2, 4, 5, 7, 8}));
    EXPECT_EQ(RunBoxes(PointSequence({1, 2, 3}, {4, 5, 6}, {bad, 8, 9})).all().box,
              (Box3{2, 3, 5, 6, 8, 9}));
    EXPECT_FALSE(RunBoxes(PointSequence({1, bad, 3}, {4, 5, 6})).all().whole);
  }
}

TEST(RunBoxesTest, AGapSpoilsTheRunsThatHoldIt) {
  std::vector<double> x(600, 1.0);
  x[32] = std::nan("");  // shared by the second and the third run
  const RunBoxes boxes(PointSequence(x, x));
  for (std::size_t i = 0; i < boxes.endRun(0); ++i) {
    EXPECT_EQ(boxes.run(0, i).whole, i != 1 && i != 2) << i;
  }
  EXPECT_FALSE(boxes.run(1, 0).whole);
  EXPECT_TRUE(boxes.run(1, 1).whole);
}

TEST(RunBoxesTest, GapsAloneHaveNoBox) {
  const std::vector<double> gaps(100, std::nan(""));
  const RunBoxes boxes(PointSequence(gaps, gaps));
  EXPECT_TRUE(boxes.all().isEmpty());
  EXPECT_TRUE(boxes.run(0, 3).isEmpty());
}

}  // namespace
}  // namespace zyn
