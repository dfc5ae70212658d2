#include "view/FeedbackShapes.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "support/Random.h"

namespace zyn {
namespace {

constexpr float kPassThrough = 0x0700;
constexpr float kPoint = 0x0701;
constexpr float kLine = 0x0702;
constexpr float kPolygon = 0x0703;
constexpr float kBitmap = 0x0704;
constexpr float kLineReset = 0x0707;

std::vector<std::vector<double>> shapesIn(const std::vector<float>& buffer) {
  FeedbackShapes shapes(buffer);
  std::vector<std::vector<double>> found;
  while (const auto shape = shapes.next()) {
    found.emplace_back();
    for (const PlanePoint& corner : *shape) {
      found.back().insert(found.back().end(), {corner.x, corner.y});
    }
  }
  EXPECT_FALSE(shapes.next());
  return found;
}

using Shapes = std::vector<std::vector<double>>;

TEST(FeedbackShapesTest, EveryKindOfShape) {
  EXPECT_EQ(shapesIn({}), Shapes());
  EXPECT_EQ(shapesIn({kPoint, 1, 2, kLine,        3, 4,       5, 6, kPolygon,   3, 1, 1, 2,
                      2,      3, 3, kPassThrough, 9, kBitmap, 7, 8, kLineReset, 1, 2, 3, 4}),
            (Shapes{{1, 2}, {3, 4, 5, 6}, {1, 1, 2, 2, 3, 3}, {7, 8}, {1, 2, 3, 4}}));
}

TEST(FeedbackShapesTest, EndsWhereSomethingIsMissing) {
  EXPECT_EQ(shapesIn({kPoint, 1, 2, kLine, 3, 4, 5}), (Shapes{{1, 2}}));
  EXPECT_EQ(shapesIn({kPolygon}), Shapes());
  EXPECT_EQ(shapesIn({kPolygon, 3, 1, 1, 2, 2, 3}), Shapes());
  EXPECT_EQ(shapesIn({kPassThrough}), Shapes());
  EXPECT_EQ(shapesIn({kPoint, 1, 2, 0, kPoint, 1, 2}), (Shapes{{1, 2}}));
  for (const float count : {-1.0F, 0.0F, 1e30F, std::numeric_limits<float>::quiet_NaN()}) {
    EXPECT_EQ(shapesIn({kPolygon, count, 1, 1, 2, 2}), Shapes()) << count;
  }
}

TEST(FeedbackShapesTest, AnyNumbers) {
  for (std::uint64_t seed = 0; seed < 2000; ++seed) {
    test::Random random(seed);
    std::vector<float> buffer(random.below(60U));
    for (float& value : buffer) {
      value = random.oneIn(3) ? static_cast<float>(random.between(-5, 20))
                              : static_cast<float>(0x06FF + random.below(10));
    }
    shapesIn(buffer);
  }
}

}  // namespace
}  // namespace zyn
