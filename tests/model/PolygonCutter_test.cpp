#include "model/PolygonCutter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zyn {
namespace {

/// The area covered, where nothing turns against `up`.
double coveredArea(const std::vector<Vector>& corners, const Vector& up) {
  PolygonCutter cutter;
  double area = 0.0;
  const auto triangles = cutter.cut(corners, up);
  EXPECT_EQ(triangles.size(), corners.size() - 2);
  for (const auto& [a, b, c] : triangles) {
    const double part = dot(cross(corners[b] - corners[a], corners[c] - corners[a]), up) / 2;
    EXPECT_GE(part, 0.0);
    area += part;
  }
  return area;
}

/// An L of area 3, whose corner 3 is re-entrant.
std::vector<Vector> ell() {
  return {{0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {1, 1, 0}, {1, 2, 0}, {0, 2, 0}};
}

std::vector<Vector> star(int tips) {
  std::vector<Vector> corners;
  for (int i = 0; i < 2 * tips; ++i) {
    const double angle = std::numbers::pi * i / tips;
    const double radius = i % 2 == 0 ? 2.0 : 1.0;
    corners.push_back({radius * std::cos(angle), radius * std::sin(angle), 3});
  }
  return corners;
}

double starArea(int tips) { return 2 * tips * std::sin(std::numbers::pi / tips); }

TEST(PolygonCutter, cutsAConvexPolygonIntoAFan) {
  PolygonCutter cutter;
  const std::vector<Vector> square = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
  const auto triangles = cutter.cut(square, {0, 0, 1});
  ASSERT_EQ(triangles.size(), 2u);
  EXPECT_EQ(triangles[1], (PolygonCutter::Triangle{0, 2, 3}));
}

TEST(PolygonCutter, coversAConcavePolygonOnceFromEveryFirstCorner) {
  std::vector<Vector> corners = ell();
  for (std::size_t i = 0; i < corners.size(); ++i) {
    EXPECT_NEAR(coveredArea(corners, {0, 0, 1}), 3.0, 1e-12) << "first corner " << i;
    std::rotate(corners.begin(), corners.begin() + 1, corners.end());
  }
}

TEST(PolygonCutter, keepsTheTurningDirectionInEveryPlane) {
  for (const double sign : {1.0, -1.0}) {
    std::vector<Vector> inX;
    std::vector<Vector> inY;
    for (const Vector& p : ell()) {
      inX.push_back({5, p.x, sign * p.y});
      inY.push_back({p.x, 5, sign * p.y});
    }
    EXPECT_NEAR(coveredArea(inX, {sign, 0, 0}), 3.0, 1e-12);
    EXPECT_NEAR(coveredArea(inY, {0, -sign, 0}), 3.0, 1e-12);
  }
}

TEST(PolygonCutter, coversStarsOfAnySize) {
  for (const int tips : {3, 20, 5000}) {
    EXPECT_NEAR(coveredArea(star(tips), {0, 0, 1}), starArea(tips), 1e-9) << tips;
  }
}

TEST(PolygonCutter, coversAHoleThatABridgeLeadsTo) {
  // A square of 4 x 4 with a hole of 2 x 2; the bridge is run through in both directions.
  const std::vector<Vector> frame = {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}, {0, 0, 0},
                                     {1, 1, 0}, {1, 3, 0}, {3, 3, 0}, {3, 1, 0}, {1, 1, 0}};
  EXPECT_NEAR(coveredArea(frame, {0, 0, 1}), 12.0, 1e-12);
}

TEST(PolygonCutter, cornersOnAStraightLineChangeNothing) {
  const std::vector<Vector> corners = {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {2, 1, 0},
                                       {1, 1, 0}, {1, 2, 0}, {0, 2, 0}, {0, 1, 0}};
  EXPECT_NEAR(coveredArea(corners, {0, 0, 1}), 3.0, 1e-12);
}

TEST(PolygonCutter, cutsWhatCrossesItselfSomehow) {
  PolygonCutter cutter;
  const std::vector<Vector> bow = {{0, 0, 0}, {2, 2, 0}, {2, 0, 0}, {0, 3, 0}, {-1, 1, 0}};
  EXPECT_EQ(cutter.cut(bow, {0, 0, 1}).size(), 3u);
}

/// Teeth beside each other, of many lengths, on a bar.
std::vector<Vector> comb(int teeth) {
  std::vector<Vector> corners = {{0, 0, 0}, {2.0 * teeth, 0, 0}};
  for (int i = teeth; i > 0; --i) {
    corners.push_back({2.0 * i, 10.0 + i * 37 % 100, 0});
    corners.push_back({2.0 * i - 1, 1.0 + i * 7 % 5, 0});
  }
  return corners;
}

/// Long teeth lie in a row of cells each; a quarter of all pairs of corners would be far more.
TEST(PolygonCutter, looksAtFewCornersForEach) {
  for (const int size : {1000, 4000, 16000}) {
    for (const std::vector<Vector>& corners : {star(size), comb(size)}) {
      PolygonCutter cutter;
      EXPECT_EQ(cutter.cut(corners, {0, 0, 1}).size(), corners.size() - 2);
      const auto count = static_cast<double>(corners.size());
      EXPECT_LT(static_cast<double>(cutter.looks()), 2 * count * std::sqrt(count)) << size;
    }
  }
  EXPECT_NEAR(coveredArea(star(16000), {0, 0, 1}), starArea(16000), 1e-9);
}

}  // namespace
}  // namespace zyn
