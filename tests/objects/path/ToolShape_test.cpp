#include "objects/path/ToolShape.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>

#include "support/Random.h"

namespace zyn {
namespace {

using test::Random;
using Ring = ToolBand::Ring;

constexpr double kPi = std::numbers::pi;

/// Of the solid that bands of revolution enclose.
double volumeOf(const std::vector<ToolBand>& bands) {
  double sum = 0;
  for (const ToolBand& band : bands) {
    // From the axis to the band, negative where the band leads downwards: looks inwards.
    const auto& [a, b] = std::pair(band.low, band.high);
    sum += kPi / 3 * (b.height - a.height) *
           (a.radius * a.radius + a.radius * b.radius + b.radius * b.radius);
  }
  return sum;
}

double topOf(const std::vector<ToolBand>& bands) {
  double top = 0;
  for (const ToolBand& band : bands) top = std::max({top, band.low.height, band.high.height});
  return top;
}

double radiusAt(const std::vector<ToolBand>& bands, double height) {
  double radius = 0;
  for (const auto& [low, high, part] : bands) {
    if (low.height < height && height <= high.height) {
      const double share = (height - low.height) / (high.height - low.height);
      radius = std::max(radius, low.radius + share * (high.radius - low.radius));
    }
  }
  return radius;
}

/// A closed surface about the axis, from its tip at 0 upwards, that looks outwards everywhere.
void expectSolid(const std::vector<ToolBand>& bands) {
  std::map<std::pair<double, double>, int> ends;
  for (const ToolBand& band : bands) {
    for (const Ring& ring : {band.low, band.high}) {
      ASSERT_TRUE(std::isfinite(ring.radius) && std::isfinite(ring.height));
      EXPECT_GE(ring.radius, 0);
      EXPECT_GE(ring.height, 0);
      EXPECT_NEAR(std::hypot(ring.outwards, ring.upwards), 1, 1e-12);
      if (ring.radius > 0) ++ends[{ring.radius, ring.height}];
      // The front of what is drawn between the rings is where the normals look. Rounding may leave
      // nothing of a small corner at a large radius.
      const double height = band.high.height - band.low.height;
      const double width = band.low.radius - band.high.radius;
      const double facing = ring.outwards * height + ring.upwards * width;
      EXPECT_TRUE(facing > 0 || (facing == 0 && (height == 0 || width == 0)));
    }
  }
  for (const auto& [end, count] : ends) {
    EXPECT_EQ(count, 2) << "a gap at the radius " << end.first << ", height " << end.second;
  }
}

TEST(ToolShape, anEndMillIsACylinderWithAShank) {
  const auto bands = toolBands({.diameter = 10, .cutLength = 20, .length = 50});
  expectSolid(bands);
  EXPECT_NEAR(volumeOf(bands), kPi * 25 * 50, 1e-9);
  EXPECT_EQ(topOf(bands), 50);
  for (const ToolBand& band : bands) {
    EXPECT_EQ(band.part == ToolBand::kCutter, band.high.height <= 20) << band.high.height;
    EXPECT_NE(band.part, ToolBand::kHolder);
  }
}

TEST(ToolShape, aBallMillEndsInAHalfOfABall) {
  const auto bands = toolBands({.diameter = 10, .cornerRadius = 5, .cutLength = 20, .length = 50});
  expectSolid(bands);
  EXPECT_NEAR(volumeOf(bands), kPi * 25 * 45 + 2.0 / 3 * kPi * 125, 0.01 * kPi * 125);
  for (double height = 0.1; height < 5; height += 0.1) {
    const double exact = std::sqrt(25 - (5 - height) * (5 - height));
    EXPECT_NEAR(radiusAt(bands, height), exact, 0.15) << height;
    EXPECT_LE(radiusAt(bands, height), exact + 1e-9);
  }
}

TEST(ToolShape, aCornerRadiusLeavesAFlatInTheMiddle) {
  const auto bands = toolBands({.diameter = 12, .cornerRadius = 2, .cutLength = 20, .length = 40});
  expectSolid(bands);
  const auto flat = std::ranges::find_if(
      bands, [](const ToolBand& band) { return band.low.height == 0 && band.high.height == 0; });
  ASSERT_NE(flat, bands.end());
  EXPECT_EQ(std::max(flat->low.radius, flat->high.radius), 4);
  EXPECT_EQ(flat->low.upwards, -1);
  EXPECT_NEAR(radiusAt(bands, 2), 6, 1e-12);
  EXPECT_LT(radiusAt(bands, 1), 6);
}

TEST(ToolShape, holdersStandOnTheToolWiderOrNarrower) {
  for (const double holder : {4.0, 10.0, 30.0}) {
    const auto bands =
        toolBands({.diameter = 10, .length = 50, .holderDiameter = holder, .holderLength = 25});
    expectSolid(bands);
    EXPECT_EQ(topOf(bands), 75);
    EXPECT_NEAR(volumeOf(bands), kPi * 25 * 50 + kPi * holder * holder / 4 * 25, 1e-9);
    EXPECT_EQ(radiusAt(bands, 60), holder / 2);
  }
  for (const auto& [diameter, length] : {std::pair(0.0, 25.0), {30.0, 0.0}}) {
    const auto none = toolBands(
        {.diameter = 10, .length = 50, .holderDiameter = diameter, .holderLength = length});
    expectSolid(none);
    EXPECT_EQ(topOf(none), 50);
  }
}

TEST(ToolShape, whatContradictsIsClamped) {
  const auto sharp = toolBands({.diameter = 10, .cornerRadius = 99, .length = 50});
  const auto ball = toolBands({.diameter = 10, .cornerRadius = 5, .length = 50});
  EXPECT_EQ(volumeOf(sharp), volumeOf(ball));
  const auto longer = toolBands({.diameter = 10, .cutLength = 80, .length = 50});
  expectSolid(longer);
  EXPECT_EQ(topOf(longer), 50) << "it cuts along all of its length";
  const auto stub = toolBands({.diameter = 10, .cornerRadius = 5, .cutLength = 1, .length = 2});
  expectSolid(stub);
  EXPECT_EQ(topOf(stub), 2);
  EXPECT_NEAR(radiusAt(stub, 2), 5, 1e-12);
}

TEST(ToolShape, anyNumbersMakeASolid) {
  Random random(1);
  const double sizes[] = {0, 1e-9, 0.5, 3, 3, 7, 20, 1e6, 1e300};
  for (int i = 0; i < 3000; ++i) {
    SCOPED_TRACE(i);
    const auto any = [&] { return random.oneIn(3) ? random.pick(sizes) : random.between(0, 30); };
    const ToolShape shape{.diameter = std::max(any(), 1e-9),
                          .cornerRadius = any(),
                          .cutLength = any(),
                          .length = std::max(any(), 1e-9),
                          .holderDiameter = any(),
                          .holderLength = any()};
    const auto bands = toolBands(shape);
    expectSolid(bands);
    EXPECT_GE(topOf(bands), shape.length);
    EXPECT_LE(radiusAt(bands, topOf(bands)), std::max(shape.diameter, shape.holderDiameter) / 2);
    if (HasFailure()) break;
  }
}

}  // namespace
}  // namespace zyn
