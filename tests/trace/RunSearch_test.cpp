#include "trace/RunSearch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace zyn {
namespace {

constexpr WindowMapping kPixels = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}};

std::size_t scan(const PointSequence& points, const AffineForm& form, std::size_t first,
                 std::size_t last) {
  std::size_t best = first;
  for (std::size_t i = first; i <= last; ++i) {
    if (form.at(points.x(i), points.y(i), points.z(i)) >
        form.at(points.x(best), points.y(best), points.z(best))) {
      best = i;
    }
  }
  return best;
}

TEST(RunSearchTest, FindsTheHighestAsAScanDoes) {
  std::mt19937 random(3);
  std::normal_distribution<double> normal;
  for (const std::size_t count : {1U, 2U, 16U, 17U, 18U, 257U, 258U, 4097U, 5000U}) {
    std::vector<double> x(count);
    std::vector<double> y(count);
    for (std::size_t i = 0; i < count; ++i) {
      x[i] = normal(random);
      y[i] = normal(random);
    }
    const PointSequence points(x, y);
    const RunBoxes boxes(points);
    std::uniform_int_distribution<std::size_t> anywhere(0, count - 1);
    for (const AffineForm& form :
         {AffineForm{1, 0, 0, 0}, AffineForm{0, -1, 0, 4}, AffineForm{0.5, 0.25, 1, 0}}) {
      const TraceInWindow trace{points, boxes, kPixels};
      RunSearch search(trace, form);
      EXPECT_EQ(search.highest({0, count - 1}), scan(points, form, 0, count - 1));
      for (int i = 0; i < 50; ++i) {
        const auto [first, last] = std::minmax({anywhere(random), anywhere(random)});
        EXPECT_EQ(search.highest({first, last}), scan(points, form, first, last))
            << first << " to " << last << " of " << count;
      }
    }
  }
}

TEST(RunSearchTest, FindsThoseAboveAsAScanDoes) {
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
      EXPECT_TRUE(RunSearch(trace, kPixels.y).allAbove(value, {first, last}, [&](std::size_t k) {
        found.push_back(k);
        return true;
      }));
      EXPECT_EQ(found, expected) << first << " to " << last << " of " << count;
    }
  }
}

TEST(RunSearchTest, EndsWithTheFirstThatFails) {
  const PointSequence points(std::vector<double>(1000, 0.0), std::vector<double>(1000, 5.0));
  const RunBoxes boxes(points);
  const TraceInWindow trace{points, boxes, kPixels};
  const RunSearch search(trace, kPixels.y);
  int count = 0;
  EXPECT_FALSE(search.allAbove(4, {0, 999}, [&](std::size_t) { return ++count < 20; }));
  EXPECT_EQ(count, 20);
  EXPECT_TRUE(search.allAbove(5, {0, 999}, [](std::size_t) { return false; }));
}

}  // namespace
}  // namespace zyn
