#include "trace/PointsAbove.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace zyn {
namespace {

constexpr WindowMapping kPixels = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}};

TEST(PointsAboveTest, FindsWhatAScanFinds) {
  std::mt19937 random(3);
  std::normal_distribution<double> normal;
  for (const std::size_t count : {1U, 2U, 16U, 17U, 18U, 257U, 258U, 4097U, 5000U}) {
    std::vector<double> x(count);
    std::vector<double> y(count);
    std::generate(x.begin(), x.end(), [&] { return normal(random); });
    std::generate(y.begin(), y.end(), [&] { return normal(random); });
    const PointSequence points(x, y);
    const RunBoxes boxes(points);
    const TraceInWindow trace{points, boxes, kPixels};
    std::uniform_int_distribution<std::size_t> anywhere(0, count - 1);
    for (int i = 0; i < 50; ++i) {
      const auto [first, last] = std::minmax({anywhere(random), anywhere(random)});
      const double value = normal(random);
      std::vector<std::size_t> expected;
      for (std::size_t k = first; k <= last; ++k) {
        if (y[k] > value) expected.push_back(k);
      }
      std::vector<std::size_t> found;
      EXPECT_TRUE(PointsAbove(trace, kPixels.y, value).all({first, last}, [&](std::size_t k) {
        found.push_back(k);
        return true;
      }));
      EXPECT_EQ(found, expected) << first << " to " << last << " of " << count;
    }
  }
}

TEST(PointsAboveTest, EndsWithTheFirstThatFails) {
  const PointSequence points(std::vector<double>(1000, 0.0), std::vector<double>(1000, 5.0));
  const RunBoxes boxes(points);
  int count = 0;
  EXPECT_FALSE(PointsAbove({points, boxes, kPixels}, kPixels.y, 4).all({0, 999}, [&](std::size_t) {
    return ++count < 20;
  }));
  EXPECT_EQ(count, 20);
  EXPECT_TRUE(PointsAbove({points, boxes, kPixels}, kPixels.y, 5).all({0, 999}, [](std::size_t) {
    return false;
  }));
}

}  // namespace
}  // namespace zyn
