#include "core/Ray.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "core/ShearedRay.h"
#include "core/VectorMath.h"
#include "support/Random.h"

namespace zyn {
namespace {

TEST(RayTest, MeetsTrianglesFromBothSides) {
  const Point a(0, 0, 5);
  const Point b(4, 0, 5);
  const Point c(0, 4, 5);
  EXPECT_EQ(ShearedRay({{1, 1, 0}, {0, 0, 2}}).meet(a, b, c), 2.5);
  EXPECT_EQ(ShearedRay({{1, 1, 9}, {0, 0, -1}}).meet(a, b, c), 4);
  EXPECT_EQ(ShearedRay({{1, 1, 0}, {0, 0, -1}}).meet(a, b, c), -5) << "behind its origin";
  EXPECT_EQ(ShearedRay({{3, 3, 0}, {0, 0, 1}}).meet(a, b, c), std::nullopt);
  EXPECT_EQ(ShearedRay({{1, 1, 0}, {1, 0, 0}}).meet(a, b, c), std::nullopt) << "parallel";
  EXPECT_EQ(ShearedRay({{1, 1, 0}, {0, 0, 1}}).meet(a, a, c), std::nullopt) << "no area";
  EXPECT_EQ(ShearedRay({{1, 1, 0}, {0, 0, 1}}).meet(a, b, Point(0, std::nan(""), 5)), std::nullopt);
}

/// Rays exactly at the common corner and sides of a fan, from near and from far away.
TEST(RayTest, NothingSlipsThroughBetweenTriangles) {
  for (const double offset : {0.0, 1e6}) {
    test::Random random(7);
    const Point centre(offset + 0.1, 0.2 - offset, 0.3);
    std::vector<Point> rim;
    for (int i = 0; i < 12; ++i) {
      rim.emplace_back(centre.x + std::cos(i * 0.5236), centre.y + std::sin(i * 0.5236),
                       centre.z + random.between(-0.3, 0.3));
    }
    for (int i = 0; i < 2000; ++i) {
      const Point& corner = rim[random.below(rim.size())];
      const Point seen = centre + random.between(0, 0.9) * (corner - centre);
      const Vecteur direction(random.between(-0.3, 0.3), random.between(-0.3, 0.3), -1);
      const ShearedRay ray({seen - random.between(1, 1e4) * direction, direction});
      const bool isMet = std::any_of(rim.begin(), rim.end(), [&](const Point& p) {
        const Point& next = rim[static_cast<std::size_t>(&p - rim.data() + 1) % rim.size()];
        return ray.meet(centre, p, next).has_value();
      });
      EXPECT_TRUE(isMet) << offset << " " << i;
    }
  }
}

TEST(RayTest, MayMeetBoxes) {
  const Box3 box{-1, 1, -1, 1, -1, 1};
  EXPECT_TRUE(mayMeet({{0, 0, 5}, {0, 0, -1}}, box));
  EXPECT_TRUE(mayMeet({{0, 0, 0}, {0, 0, -1}}, box)) << "from within";
  EXPECT_TRUE(mayMeet({{5, 5, 5}, {-1, -1, -1}}, box));
  EXPECT_FALSE(mayMeet({{0, 0, 5}, {0, 0, 1}}, box)) << "behind its origin";
  EXPECT_FALSE(mayMeet({{2, 0, 5}, {0, 0, -1}}, box));
  EXPECT_FALSE(mayMeet({{5, 0, 5}, {-1, 0, 0.1}}, box));
  const Box3 flat{-1, 1, -1, 1, 0.1, 0.1};
  EXPECT_TRUE(mayMeet({{0, 0, 5}, {0.01, 0.01, -1}}, flat));
  EXPECT_TRUE(mayMeet({{0, 0, 0.1}, {1, 0, 0}}, flat)) << "in its plane";
}

/// What a ray meets in a box, it may meet of the box.
TEST(RayTest, NoBoxHidesATriangle) {
  int met = 0;
  for (std::uint64_t seed = 0; seed < 20000; ++seed) {
    test::Random random(seed);
    const double offset = random.oneIn(2) ? 1e6 : 0;
    const auto point = [&] {
      return Point(offset + random.between(-1, 1), random.between(-1, 1), random.between(-1, 1));
    };
    const Point a = point();
    const Point b = point();
    const Point c = random.oneIn(4) ? Point(a.x, b.y, a.z) : point();
    const Ray ray{point(), {random.between(-1, 1), random.between(-1, 1), random.below(3) - 1.0}};
    const auto distance = ShearedRay(ray).meet(a, b, c);
    if (distance && *distance >= 0) {
      Box3 box{a.x, a.x, a.y, a.y, a.z, a.z};
      box.unite({b.x, b.x, b.y, b.y, b.z, b.z});
      box.unite({c.x, c.x, c.y, c.y, c.z, c.z});
      EXPECT_TRUE(mayMeet(ray, box)) << seed;
      ++met;
    }
  }
  EXPECT_GT(met, 500);
}

}  // namespace
}  // namespace zyn
