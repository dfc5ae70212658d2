#include "core/PlaneRegion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <span>
#include <vector>

#include "support/Random.h"

namespace zyn {
namespace {

using Shape = std::vector<PlanePoint>;

PlaneRegion square(double from, double to) {
  return PlaneRegion({{from, from}, {to, from}, {to, to}, {from, to}});
}

TEST(PlaneRegionTest, ContainsItsInsideAndItsEdge) {
  const PlaneRegion region = square(10, 20);
  EXPECT_TRUE(region.contains({15, 15}));
  EXPECT_TRUE(region.contains({10, 10}));
  EXPECT_TRUE(region.contains({20, 13}));
  EXPECT_FALSE(region.contains({9.99, 15}));
  EXPECT_FALSE(region.contains({15, 20.01}));
  EXPECT_FALSE(region.contains({std::nan(""), 15}));
  EXPECT_FALSE(region.contains({15, std::numeric_limits<double>::infinity()}));
}

TEST(PlaneRegionTest, PolygonsLieInItWhollyPartlyOrNot) {
  const PlaneRegion region = square(10, 20);
  EXPECT_EQ(region.ofPolygon(Shape{{11, 11}, {19, 11}, {15, 19}}), Coverage::kWhole);
  EXPECT_EQ(region.ofPolygon(Shape{{10, 10}, {20, 10}, {20, 20}, {10, 20}}), Coverage::kWhole)
      << "exactly filled";
  EXPECT_EQ(region.ofPolygon(Shape{{11, 11}, {11, 19}, {25, 15}}), Coverage::kPart);
  EXPECT_EQ(region.ofPolygon(Shape{{0, 0}, {60, 0}, {0, 60}}), Coverage::kPart) << "around it";
  EXPECT_EQ(region.ofPolygon(Shape{{0, 14}, {30, 14}, {30, 15}, {0, 15}}), Coverage::kPart)
      << "across it, no corner inside";
  EXPECT_EQ(region.ofPolygon(Shape{{20, 12}, {30, 12}, {30, 18}}), Coverage::kPart) << "touches";
  EXPECT_EQ(region.ofPolygon(Shape{{21, 12}, {30, 12}, {30, 18}}), Coverage::kNone);
  EXPECT_EQ(region.ofPolygon(Shape{{0, 25}, {25, 0}, {25.5, 25.5}}), Coverage::kPart);
  EXPECT_EQ(region.ofPolygon(Shape{{0, 45}, {45, 0}, {45, 45}}), Coverage::kNone)
      << "only the boxes meet";
}

TEST(PlaneRegionTest, PointsAndLinesAreShapesToo) {
  const PlaneRegion region = square(10, 20);
  EXPECT_EQ(region.ofPolygon({}), Coverage::kNothing);
  EXPECT_EQ(region.ofPolygon(Shape{{15, 15}}), Coverage::kWhole);
  EXPECT_EQ(region.ofPolygon(Shape{{25, 15}}), Coverage::kNone);
  EXPECT_EQ(region.ofLine({11, 11}, {19, 19}), Coverage::kWhole);
  EXPECT_EQ(region.ofLine({0, 15}, {30, 15}), Coverage::kPart);
  EXPECT_EQ(region.ofLine({15, 15}, {15, 30}), Coverage::kPart);
  EXPECT_EQ(region.ofLine({0, 25}, {25, 50}), Coverage::kNone);
  EXPECT_EQ(region.ofPolygon(Shape{{30, 30}, {40, 40}, {50, 50}}), Coverage::kNone)
      << "no area, and the corner (10, 10) on its line";
  EXPECT_EQ(region.ofPolygon(Shape{{0, 0}, {30, 30}, {15, 15}}), Coverage::kPart);
  EXPECT_EQ(region.ofPolygon(Shape{{15, 15}, {15, 15}, {15, 15}}), Coverage::kWhole);
}

TEST(PlaneRegionTest, WhatIsNotFiniteLiesNowhere) {
  const PlaneRegion region = square(10, 20);
  const double nan = std::nan("");
  const double far = std::numeric_limits<double>::infinity();
  EXPECT_EQ(region.ofPolygon(Shape{{nan, 15}, {16, 15}, {15, 16}}), Coverage::kNone);
  EXPECT_EQ(region.ofLine({15, 15}, {far, 15}), Coverage::kNone);
}

TEST(PlaneRegionTest, ALineThatLeavesAndComesBackIsNotWhollyInIt) {
  // A U: its arms are inside, what is between them is not.
  const PlaneRegion region(
      {{0, 0}, {30, 0}, {30, 30}, {20, 30}, {20, 10}, {10, 10}, {10, 30}, {0, 30}});
  EXPECT_EQ(region.ofLine({5, 20}, {25, 20}), Coverage::kPart);
  EXPECT_EQ(region.ofLine({5, 5}, {25, 5}), Coverage::kWhole);
  EXPECT_EQ(region.ofLine({5, 10}, {25, 10}), Coverage::kWhole) << "along its edge";
  EXPECT_EQ(region.ofPolygon(Shape{{5, 20}, {25, 20}, {15, 5}}), Coverage::kPart);
  EXPECT_EQ(region.ofPolygon(Shape{{12, 20}, {18, 20}, {15, 25}}), Coverage::kNone);
}

TEST(PlaneRegionTest, CrossingsChangeInsideAndOutside) {
  // A star with five points, drawn in one go: its middle is outside.
  Shape star;
  for (int i = 0; i < 5; ++i) {
    const double angle = 2 * std::numbers::pi * 2 * i / 5;
    star.push_back({100 * std::sin(angle), 100 * std::cos(angle)});
  }
  const PlaneRegion region(star);
  EXPECT_FALSE(region.contains({0, 0}));
  EXPECT_TRUE(region.contains({0, 70}));
  EXPECT_EQ(region.ofPolygon(Shape{{-3, 0}, {3, 0}, {0, 3}}), Coverage::kNone);
  EXPECT_EQ(region.ofPolygon(Shape{{-3, 60}, {3, 60}, {0, 65}}), Coverage::kWhole);
  EXPECT_EQ(region.ofPolygon(Shape{{0, -10}, {3, 60}, {-3, 60}}), Coverage::kPart);
}

TEST(PlaneRegionTest, HolesReachedByABridgeAreOutside) {
  // The bridge from (0, 0) to the hole is gone along and back.
  const PlaneRegion region({{0, 0},
                            {40, 40},
                            {60, 40},
                            {60, 60},
                            {40, 60},
                            {40, 40},
                            {0, 0},
                            {100, 0},
                            {100, 100},
                            {0, 100}});
  EXPECT_FALSE(region.contains({50, 50}));
  EXPECT_TRUE(region.contains({50, 20}));
  EXPECT_EQ(region.ofPolygon(Shape{{5, 95}, {5, 5}, {95, 50}}), Coverage::kPart)
      << "its sides lie inside, the hole in its middle";
  EXPECT_EQ(region.ofPolygon(Shape{{10, 5}, {5, 10}, {20, 25}, {25, 20}}), Coverage::kWhole)
      << "across the bridge";
}

TEST(PlaneRegionTest, RegionsWithoutAreaAreTheirLine) {
  const PlaneRegion line({{10, 10}, {20, 20}, {10, 10}});
  EXPECT_TRUE(line.contains({15, 15}));
  EXPECT_FALSE(line.contains({15, 16}));
  EXPECT_EQ(line.ofPolygon(Shape{{10, 20}, {20, 10}, {30, 30}}), Coverage::kPart);
  EXPECT_EQ(line.ofPolygon(Shape{{0, 0}, {50, 0}, {0, 50}}), Coverage::kPart);
  EXPECT_EQ(line.ofPolygon(Shape{{12, 18}, {10, 20}, {8, 18}}), Coverage::kNone);
  const PlaneRegion point({{10, 10}});
  EXPECT_EQ(point.ofPolygon(Shape{{0, 0}, {50, 0}, {0, 50}}), Coverage::kPart);
  EXPECT_EQ(point.ofPolygon(Shape{{10, 10}}), Coverage::kWhole);
}

TEST(PlaneRegionTest, HugeCoordinatesAreCut) {
  const double most = std::numeric_limits<double>::max();
  const PlaneRegion region = square(-most, most);
  EXPECT_TRUE(region.contains({1e6, -1e6}));
  EXPECT_EQ(region.ofPolygon(Shape{{-1e6, 0}, {1e6, 0}, {0, 1e6}}), Coverage::kWhole);
}

/// What many points of a shape say; none where they do not agree with what a point near the edge of
/// the region would.
class Sampled {
 public:
  Sampled(const Shape& corners, const Shape& shape) : corners_(corners), shape_(shape) {
    constexpr int kSteps = 24;
    for (int i = 0; i <= kSteps; ++i) {
      for (int j = 0; i + j <= kSteps; ++j) {
        const double u = static_cast<double>(i) / kSteps;
        const double v = static_cast<double>(j) / kSteps;
        take(shape_[0] + u * (shape_[1] - shape_[0]) + v * (shape_[2] - shape_[0]));
      }
    }
  }
  bool hasInside() const { return inside_; }
  bool hasOutside() const { return outside_; }

  /// By the angle under which the region's line is seen, odd turns inside.
  static bool isInside(const Shape& corners, const PlanePoint& p) {
    int crossings = 0;
    for (std::size_t i = 0; i < corners.size(); ++i) {
      const PlanePoint& a = corners[i];
      const PlanePoint& b = corners[(i + 1) % corners.size()];
      if ((a.x > p.x) != (b.x > p.x)) {
        crossings += p.y < a.y + (p.x - a.x) / (b.x - a.x) * (b.y - a.y) ? 1 : 0;
      }
    }
    return crossings % 2 == 1;
  }
  static double distance(const Shape& corners, const PlanePoint& p) {
    double nearest = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < corners.size(); ++i) {
      const PlanePoint a = corners[i];
      const PlanePoint step = corners[(i + 1) % corners.size()] - a;
      const double square = step.x * step.x + step.y * step.y;
      const PlanePoint to = p - a;
      const double t =
          square > 0 ? std::min(1.0, std::max(0.0, (to.x * step.x + to.y * step.y) / square)) : 0;
      nearest = std::min(nearest, lengthOf(p - (a + t * step)));
    }
    return nearest;
  }

 private:
  void take(const PlanePoint& p) {
    if (distance(corners_, p) < 2 * PlaneRegion::kTouch) return;
    (isInside(corners_, p) ? inside_ : outside_) = true;
  }

  const Shape& corners_;
  const Shape& shape_;
  bool inside_ = false;
  bool outside_ = false;
};

/// Random lassos of many forms against points of random triangles: what these show must be told.
TEST(PlaneRegionTest, AgreesWithPointsOfTheShape) {
  int wholes = 0;
  int parts = 0;
  int nones = 0;
  for (std::uint64_t seed = 0; seed < 3000; ++seed) {
    test::Random random(seed);
    const bool isCoarse = random.oneIn(3);  // corners that coincide and lines that overlap
    const auto coordinate = [&] {
      const double value = random.between(-50, 50);
      return isCoarse ? 10 * std::round(value / 10) : value;
    };
    Shape corners(3 + random.below(9U));
    for (PlanePoint& corner : corners) corner = {coordinate(), coordinate()};
    const PlaneRegion region(corners);
    for (int i = 0; i < 5; ++i) {
      const double size = random.pick(std::vector<double>{1, 10, 60});
      const PlanePoint at{coordinate(), coordinate()};
      Shape shape(3);
      for (PlanePoint& corner : shape) {
        corner = at + PlanePoint{random.between(-size, size), random.between(-size, size)};
      }
      const Coverage coverage = region.ofPolygon(shape);
      const Sampled sampled(corners, shape);
      if (sampled.hasInside()) {
        EXPECT_NE(coverage, Coverage::kNone) << seed << " " << i;
      }
      if (sampled.hasOutside()) {
        EXPECT_NE(coverage, Coverage::kWhole) << seed << " " << i;
      }
      if (coverage == Coverage::kPart && !sampled.hasInside()) {
        // Only a little, or the edge alone, lies in it: some corner or side is near the region.
        double nearest = std::numeric_limits<double>::infinity();
        for (const PlanePoint& corner : shape) {
          nearest = std::min(nearest, Sampled::distance(corners, corner));
        }
        for (const PlanePoint& corner : corners) {
          nearest = std::min(nearest, Sampled::distance(shape, corner));
          nearest = Sampled::isInside(shape, corner) ? 0 : nearest;
        }
        EXPECT_LT(nearest, size / 2) << seed << " " << i;
      }
      wholes += coverage == Coverage::kWhole ? 1 : 0;
      parts += coverage == Coverage::kPart ? 1 : 0;
      nones += coverage == Coverage::kNone ? 1 : 0;
    }
  }
  EXPECT_GT(wholes, 500);
  EXPECT_GT(parts, 500);
  EXPECT_GT(nones, 500);
}

/// A rectangle, of which everything is known in another way.
TEST(PlaneRegionTest, AgreesWithIntervalsForRectangles) {
  const PlaneRegion region({{10, 20}, {50, 20}, {50, 40}, {10, 40}});
  for (std::uint64_t seed = 0; seed < 5000; ++seed) {
    test::Random random(seed);
    const double x1 = random.between(0, 60);
    const double y1 = random.between(10, 50);
    const double x2 = x1 + random.between(0.1, 30);
    const double y2 = y1 + random.between(0.1, 30);
    const auto isNear = [](double value, double edge) { return std::abs(value - edge) < 0.01; };
    if (isNear(x1, 10) || isNear(x1, 50) || isNear(x2, 10) || isNear(x2, 50) || isNear(y1, 20) ||
        isNear(y1, 40) || isNear(y2, 20) || isNear(y2, 40)) {
      continue;
    }
    const bool isWhole = x1 >= 10 && x2 <= 50 && y1 >= 20 && y2 <= 40;
    const bool meets = x1 <= 50 && x2 >= 10 && y1 <= 40 && y2 >= 20;
    const Coverage expected = isWhole ? Coverage::kWhole
                              : meets ? Coverage::kPart
                                      : Coverage::kNone;
    EXPECT_EQ(region.ofPolygon(Shape{{x1, y1}, {x2, y1}, {x2, y2}, {x1, y2}}), expected) << seed;
    EXPECT_EQ(region.ofPolygon(Shape{{x1, y1}, {x1, y2}, {x2, y2}, {x2, y1}}), expected) << seed;
  }
}

/// Lassos with as many corners as a hand draws, and more.
TEST(PlaneRegionTest, ManyCorners) {
  for (const int count : {100, 5000, 200000}) {
    Shape corners;
    for (int i = 0; i < count; ++i) {
      const double angle = 2 * std::numbers::pi * i / count;
      const double radius = 100 + 20 * std::sin(7 * angle);
      corners.push_back({radius * std::cos(angle), radius * std::sin(angle)});
    }
    const PlaneRegion region(corners);
    test::Random random(static_cast<std::uint64_t>(count));
    for (int i = 0; i < 300; ++i) {
      const PlanePoint p{random.between(-130, 130), random.between(-130, 130)};
      const double radius = 100 + 20 * std::sin(7 * std::atan2(p.y, p.x));
      if (std::abs(lengthOf(p) - radius) > 0.2) {
        EXPECT_EQ(region.contains(p), lengthOf(p) < radius) << p.x << " " << p.y;
      }
    }
    EXPECT_EQ(region.ofPolygon(Shape{{-50, -50}, {50, -50}, {0, 50}}), Coverage::kWhole);
    EXPECT_EQ(region.ofPolygon(Shape{{-50, -50}, {500, -50}, {0, 50}}), Coverage::kPart);
    EXPECT_EQ(region.ofPolygon(Shape{{-500, -500}, {500, -500}, {0, 500}}), Coverage::kPart);
    EXPECT_EQ(region.ofPolygon(Shape{{125, 125}, {130, 125}, {130, 130}}), Coverage::kNone);
  }
}

}  // namespace
}  // namespace zyn
