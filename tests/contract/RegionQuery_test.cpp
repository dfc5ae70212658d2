#include "contract/RegionQuery.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/Random.h"

namespace zyn {
namespace {

/// Looks along -z from the origin: 10 units high and wide, depths from 1 to 21, on 100 x 100
/// pixels.
constexpr GlMatrix kFlatView = {0.2, 0, 0, 0, 0, 0.2, 0, 0, 0, 0, -0.1, 0, 0, 0, -1.1, 1};

/// The same with perspective: x and y of 1 at a depth of 1 are at the edge.
constexpr GlMatrix kDeepView = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1.1, -1, 0, 0, -2.1, 0};

PlaneRegion rectangle(double left, double top, double right, double bottom) {
  return PlaneRegion({{left, top}, {right, top}, {right, bottom}, {left, bottom}});
}

RegionQuery asking(const PlaneRegion& region, const GlMatrix& clip, bool whole = true) {
  return {region, clip, 100, 100, whole};
}

TEST(RegionQueryTest, PixelsAreCountedFromTheUpperLeftCorner) {
  const PlaneRegion region = rectangle(0, 0, 50, 50);
  const RegionQuery query = asking(region, kFlatView);
  EXPECT_EQ(query.ofPoint({-2, 2, -5}), Coverage::kWhole);
  EXPECT_EQ(query.ofPoint({2, 2, -5}), Coverage::kNone);
  EXPECT_EQ(query.ofPoint({-2, -2, -5}), Coverage::kNone);
  EXPECT_EQ(query.ofLine({-4, 4, -5}, {4, 4, -5}), Coverage::kPart);
  EXPECT_EQ(query.ofTriangle({-4, 4, -5}, {-1, 4, -5}, {-4, 1, -5}), Coverage::kWhole);
  const RegionQuery moved = query.moved({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 10, 0, 0, 1});
  EXPECT_EQ(moved.ofPoint({-12, 2, -5}), Coverage::kWhole);
  EXPECT_EQ(moved.ofPoint({-2, 2, -5}), Coverage::kNone);
}

TEST(RegionQueryTest, PlanesCutOff) {
  const PlaneRegion all = rectangle(0, 0, 100, 100);
  for (const GlMatrix& view : {kFlatView, kDeepView}) {
    const RegionQuery query = asking(all, view);
    EXPECT_EQ(query.ofPoint({0, 0, -0.9}), Coverage::kNothing);
    EXPECT_EQ(query.ofPoint({0, 0, -21.1}), Coverage::kNothing);
    EXPECT_EQ(query.ofPoint({0, 0, 5}), Coverage::kNothing) << "behind the eye";
    EXPECT_EQ(query.ofLine({0, 0, -0.5}, {0, 0, 3}), Coverage::kNothing);
    EXPECT_EQ(query.ofTriangle({0, 0, 5}, {1, 0, 6}, {0, 1, 6}), Coverage::kNothing);
    EXPECT_EQ(query.ofTriangle({0, 0, -30}, {1, 0, -30}, {0, 1, -30}), Coverage::kNothing);
    EXPECT_EQ(query.ofTriangle({0, 0, -2}, {0.1, 0, 9}, {0, 0.1, 9}), Coverage::kWhole)
        << "what leaves the view is behind the eye";
    EXPECT_EQ(query.ofTriangle({0, 0, -2}, {0, 0.5, -3}, {0, 900, -90}), Coverage::kPart)
        << "leaves it before the far plane";
  }
}

TEST(RegionQueryTest, PerspectiveMakesFarThingsSmall) {
  const PlaneRegion middle = rectangle(40, 40, 60, 60);
  const RegionQuery query = asking(middle, kDeepView);
  EXPECT_EQ(query.ofTriangle({-1, -1, -2}, {1, -1, -2}, {0, 1, -2}), Coverage::kPart);
  EXPECT_EQ(query.ofTriangle({-1, -1, -6}, {1, -1, -6}, {0, 1, -6}), Coverage::kWhole);
}

TEST(RegionQueryTest, WhatSettlesTheQuestion) {
  const PlaneRegion region = rectangle(0, 0, 50, 50);
  const RegionQuery whole = asking(region, kFlatView, true);
  const RegionQuery part = asking(region, kFlatView, false);
  using C = Coverage;
  const C all[] = {C::kNothing, C::kNone, C::kPart, C::kWhole};
  for (const C first : all) {
    EXPECT_EQ(whole.isMetBy(first), first == C::kWhole);
    EXPECT_EQ(part.isMetBy(first), first == C::kPart || first == C::kWhole);
    for (const C second : all) {
      for (const RegionQuery& query : {whole, part}) {
        if (query.isSettledBy(first)) {
          EXPECT_EQ(query.isMetBy(joined(first, second)), query.isMetBy(first));
        }
      }
    }
  }
}

TEST(RegionQueryTest, WhatIsNotFiniteLiesNowhere) {
  const PlaneRegion region = rectangle(0, 0, 100, 100);
  const double nan = std::nan("");
  const double far = std::numeric_limits<double>::infinity();
  for (const GlMatrix& view : {kFlatView, kDeepView}) {
    const RegionQuery query = asking(region, view, false);
    for (const Point& odd : {Point(nan, 0, -5), Point(0, far, -5), Point(0, 0, nan),
                             Point(0, 0, -far), Point(nan, nan, nan), Point(far, -far, far)}) {
      EXPECT_FALSE(query.isMetBy(query.ofTriangle({30, 30, -5}, odd, {30, 31, -5})));
      EXPECT_FALSE(query.isMetBy(query.ofPoint(odd)));
      query.ofLine({0, 0, -5}, odd);
    }
  }
}

/// A box says nothing that what is in it denies.
TEST(RegionQueryTest, BoxesAgreeWithWhatIsInThem) {
  int nones = 0;
  int wholes = 0;
  for (std::uint64_t seed = 0; seed < 20000; ++seed) {
    test::Random random(seed);
    std::vector<PlanePoint> corners(3 + random.below(5U));
    for (PlanePoint& corner : corners) {
      corner = {random.between(-20, 120), random.between(-20, 120)};
    }
    const PlaneRegion region(corners);
    const RegionQuery query = asking(region, random.oneIn(2) ? kFlatView : kDeepView);
    const Point low(random.between(-6, 5), random.between(-6, 5), random.between(-25, 2));
    const double size = random.pick(std::vector<double>{0.3, 2, 10});
    const Box3 box{low.x, low.x + random.between(0, size), low.y, low.y + random.between(0, size),
                   low.z, low.z + random.between(0, size)};
    const Coverage ofBox = query.ofBox(box);
    nones += ofBox == Coverage::kNone ? 1 : 0;
    wholes += ofBox == Coverage::kWhole ? 1 : 0;
    for (int i = 0; i < 10; ++i) {
      const auto within = [&] {
        return Point(random.between(box.xMin, box.xMax), random.between(box.yMin, box.yMax),
                     random.between(box.zMin, box.zMax));
      };
      const Coverage found = query.ofTriangle(within(), within(), within());
      if (ofBox != Coverage::kPart && found != Coverage::kNothing) {
        EXPECT_EQ(found, ofBox) << seed;
      }
    }
  }
  EXPECT_GT(nones, 2000);
  EXPECT_GT(wholes, 200);
}

}  // namespace
}  // namespace zyn
