#include "model/files/PointWelder.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <tuple>

namespace zyn {
namespace {

TEST(PointWelder, numbersPointsInTheOrderOfTheirFirstCorners) {
  std::vector<double> points;
  PointWelder welder(points, 2);
  EXPECT_EQ(welder.number({1, 2, 3}), 0u);
  EXPECT_EQ(welder.number({1, 2, 4}), 1u);
  EXPECT_EQ(welder.number({1, 2, 3}), 0u);
  EXPECT_EQ(welder.number({3, 2, 1}), 2u);
  EXPECT_EQ(points, (std::vector<double>{1, 2, 3, 1, 2, 4, 3, 2, 1}));
}

TEST(PointWelder, takesBothZerosAsOne) {
  std::vector<double> points;
  PointWelder welder(points, 0);
  EXPECT_EQ(welder.number({0.0, 1, 0.0}), welder.number({-0.0, 1, -0.0}));
}

TEST(PointWelder, agreesWithATreeWhateverWasExpected) {
  std::mt19937 random(1);
  std::uniform_int_distribution<int> coordinate(-12, 12);
  std::vector<double> points;
  PointWelder welder(points, 3);
  std::map<std::tuple<double, double, double>, std::uint32_t> known;
  for (int i = 0; i < 50000; ++i) {
    const double x = coordinate(random) / 7.0;
    const double y = coordinate(random) * 1e-30;
    const double z = coordinate(random) * 1e300;
    const auto next = static_cast<std::uint32_t>(known.size());
    const std::uint32_t number = known.emplace(std::tuple{x, y, z}, next).first->second;
    ASSERT_EQ(welder.number({x, y, z}), number);
  }
  EXPECT_EQ(points.size(), 3 * known.size());
}

TEST(PointWelder, numbersManyAsOneAfterTheOther) {
  std::vector<double> points;
  std::vector<double> others;
  PointWelder welder(points, 1);
  PointWelder other(others, 1000);
  std::vector<PointWelder::Point> batch(PointWelder::kBatch);
  std::vector<std::uint32_t> numbers(batch.size());
  for (int round = 0; round < 50; ++round) {
    for (std::size_t i = 0; i < batch.size(); ++i) {
      batch[i] = {static_cast<double>(i * i % 41), static_cast<double>(round / 2), 0.5};
    }
    welder.number(batch, numbers.data());
    for (std::size_t i = 0; i < batch.size(); ++i) {
      ASSERT_EQ(numbers[i], other.number(batch[i]));
    }
  }
  EXPECT_EQ(points, others);
}

}  // namespace
}  // namespace zyn
