#include "zynshot/Dimensions.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace zyn::shot {
namespace {

using host::Bounds;
using host::Vector;

constexpr Bounds kBounds{{-2, 0, 1}, {6, 2, 5}};  // 8 x 2 x 4

Frame frameFor(const char* view, const Bounds& bounds = kBounds) {
  return Frame(bounds, parseView(view), 400, 300, 0.3);
}

std::vector<double> lengthsIn(const char* view) {
  std::vector<double> lengths;
  for (const Dimension& dimension : overallDimensions(kBounds, frameFor(view))) {
    lengths.push_back(dimension.length);
  }
  return lengths;
}

using Lengths = std::vector<double>;

TEST(Dimensions, threeWhereAllCanBeRead) {
  EXPECT_EQ(lengthsIn("iso"), (Lengths{8, 2, 4}));
  EXPECT_EQ(lengthsIn("iso-y"), (Lengths{8, 2, 4}));
}

TEST(Dimensions, notAlongTheLineOfSight) {
  EXPECT_EQ(lengthsIn("xy+"), (Lengths{8, 2}));
  EXPECT_EQ(lengthsIn("xz-"), (Lengths{8, 4}));
  EXPECT_EQ(lengthsIn("yz+"), (Lengths{2, 4}));
}

TEST(Dimensions, noneOfWhatIsFlat) {
  const Bounds flat{{0, 0, 0}, {3, 4, 0}};
  EXPECT_EQ(overallDimensions(flat, frameFor("iso", flat)).size(), 2U);
  const Bounds point{{1, 1, 1}, {1, 1, 1}};
  EXPECT_TRUE(overallDimensions(point, frameFor("iso", point)).empty());
}

/// The direction in which a dimension line leaves the model.
Vector wayOut(const Dimension& dimension) {
  return normalised(cross(dimension.normal, dimension.second - dimension.first), {});
}

class DimensionsTest : public testing::TestWithParam<const char*> {
 protected:
  Frame frame_ = frameFor(GetParam());
  std::vector<Dimension> dimensions_ = overallDimensions(kBounds, frame_);
};

TEST_P(DimensionsTest, areEdgesOfTheBox) {
  for (const auto& [first, second, normal, size] : dimensions_) {
    EXPECT_NEAR(length(second - first), size, 1e-12);
    for (const Vector& end : {first, second}) {
      EXPECT_TRUE(end.x == kBounds.minimum.x || end.x == kBounds.maximum.x) << end.x;
      EXPECT_TRUE(end.y == kBounds.minimum.y || end.y == kBounds.maximum.y) << end.y;
      EXPECT_TRUE(end.z == kBounds.minimum.z || end.z == kBounds.maximum.z) << end.z;
    }
  }
}

/// How far a point is to the side of a dimension's edge on the screen, towards its way out.
double aside(const Frame& frame, const Dimension& dimension, const Vector& point) {
  const auto edge = frame.onScreen(normalised(dimension.second - dimension.first, {}));
  const auto out = frame.onScreen(wayOut(dimension));
  const auto from = frame.onScreen(point - dimension.first);
  const double turn = edge.right * out.up - edge.up * out.right;
  const double reach = edge.right * from.up - edge.up * from.right;
  return turn > 0 ? reach : -reach;
}

TEST_P(DimensionsTest, leadAwayFromTheModelOnTheScreen) {
  for (const Dimension& dimension : dimensions_) {
    EXPECT_GT(aside(frame_, dimension, dimension.first + wayOut(dimension)), 0.3);
    for (const double x : {kBounds.minimum.x, kBounds.maximum.x}) {
      for (const double y : {kBounds.minimum.y, kBounds.maximum.y}) {
        for (const double z : {kBounds.minimum.z, kBounds.maximum.z}) {
          EXPECT_LE(aside(frame_, dimension, {x, y, z}), 1e-12);
        }
      }
    }
  }
}

TEST_P(DimensionsTest, lieBelowOrAtTheRight) {
  for (const Dimension& dimension : dimensions_) {
    const auto [right, up] = frame_.onScreen(wayOut(dimension));
    EXPECT_TRUE(right > 1e-9 || up < -1e-9) << right << ", " << up;
  }
}

INSTANTIATE_TEST_SUITE_P(Views, DimensionsTest,
                         testing::Values("iso", "iso-y", "xy+", "xy-", "xz+", "xz-", "yz+", "yz-",
                                         "turning"));

TEST(Dimensions, takeTheirRoomInPixels) {
  for (const double scale : {1.0, 3.0}) {
    for (const int side : {800, 4000}) {
      const double model = side / (1 + roomForDimensions(2 * side, side, scale));
      EXPECT_NEAR((side - model) / 2, 80 * scale, 1e-9);
      EXPECT_EQ(roomForDimensions(side, 2 * side, scale), roomForDimensions(2 * side, side, scale));
    }
  }
  EXPECT_NEAR(100 / (1 + roomForDimensions(100, 100, 1)), 30, 1e-9) << "the model is to be seen";
}

using Texts = std::vector<std::string>;

TEST(Dimensions, haveAsManyDecimalsInOnePicture) {
  EXPECT_EQ(lengthTexts(Lengths{0.92, 3.244, 1.516}), (Texts{"0.920", "3.244", "1.516"}));
  EXPECT_EQ(lengthTexts(Lengths{80, 12.5, 6.25}), (Texts{"80.00", "12.50", "6.25"}));
  EXPECT_EQ(lengthTexts(Lengths{12.34567, 1}), (Texts{"12.35", "1.00"}));
  EXPECT_EQ(lengthTexts(Lengths{9999.4, 12345.6}), (Texts{"9999", "12346"}));
  EXPECT_EQ(lengthTexts(Lengths{0.0123456}), (Texts{"0.01235"}));
}

TEST(Dimensions, haveNoMoreDecimalsThanOneOfThemNeeds) {
  EXPECT_EQ(lengthTexts(Lengths{100, 50, 30}), (Texts{"100", "50", "30"}));
  EXPECT_EQ(lengthTexts(Lengths{100, 50.5, 30}), (Texts{"100.0", "50.5", "30.0"}));
  EXPECT_EQ(lengthTexts(Lengths{2, 0.1 + 0.2}), (Texts{"2.0", "0.3"}));
  EXPECT_TRUE(lengthTexts({}).empty());
}

TEST(Dimensions, haveTwoDigitsBesideLargeOnes) {
  EXPECT_EQ(lengthTexts(Lengths{3000, 0.5}), (Texts{"3000.0", "0.5"}));
  EXPECT_EQ(lengthTexts(Lengths{3000, 0.1234}), (Texts{"3000.00", "0.12"}));
}

TEST(Dimensions, ofUnusualSizesHavePowersOfTen) {
  EXPECT_EQ(lengthTexts(Lengths{1.5e12, 3}), (Texts{"1.5e+12", "3"}));
  EXPECT_EQ(lengthTexts(Lengths{1.5e-9, 12.34567}), (Texts{"1.5e-09", "12.35"}));
}

}  // namespace
}  // namespace zyn::shot
