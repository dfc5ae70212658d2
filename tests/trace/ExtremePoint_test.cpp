#include "trace/ExtremePoint.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "trace/WindowMapping.h"

namespace zyn {
namespace {

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

TEST(ExtremeSearchTest, FindsWhatAScanFinds) {
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
      ExtremeSearch<AffineForm> search(points, boxes, form);
      EXPECT_EQ(search.among(0, count - 1), scan(points, form, 0, count - 1));
      for (int i = 0; i < 50; ++i) {
        const auto [first, last] = std::minmax({anywhere(random), anywhere(random)});
        EXPECT_EQ(search.among(first, last), scan(points, form, first, last))
            << first << " to " << last << " of " << count;
      }
    }
  }
}

}  // namespace
}  // namespace zyn
