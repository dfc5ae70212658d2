#include "mesh/Triangulation.h"

#include <gtest/gtest.h>

#include <numbers>

namespace zyn::mesh {
namespace {

/// The area covered, counting what turns against `up` as negative.
double coveredArea(const std::vector<Vector>& corners, const Vector& up) {
  double area = 0.0;
  for (const auto& [a, b, c] : triangulate(corners)) {
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

TEST(Triangulation, cutsAConvexPolygonIntoAFan) {
  const std::vector<Vector> square = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
  const auto triangles = triangulate(square);
  ASSERT_EQ(triangles.size(), 2u);
  EXPECT_EQ(triangles[1], (std::array<std::size_t, 3>{0, 2, 3}));
}

TEST(Triangulation, coversAConcavePolygonOnceFromEveryFirstCorner) {
  std::vector<Vector> corners = ell();
  for (std::size_t i = 0; i < corners.size(); ++i) {
    EXPECT_EQ(triangulate(corners).size(), 4u);
    EXPECT_NEAR(coveredArea(corners, {0, 0, 1}), 3.0, 1e-12) << "first corner " << i;
    std::rotate(corners.begin(), corners.begin() + 1, corners.end());
  }
}

TEST(Triangulation, keepsTheTurningDirectionInEveryPlane) {
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

TEST(Triangulation, coversAStar) {
  std::vector<Vector> star;
  constexpr int kTips = 20;
  for (int i = 0; i < 2 * kTips; ++i) {
    const double angle = std::numbers::pi * i / kTips;
    const double radius = i % 2 == 0 ? 2.0 : 1.0;
    star.push_back({radius * std::cos(angle), radius * std::sin(angle), 0});
  }
  const double area = kTips * 2.0 * std::sin(std::numbers::pi / kTips);
  EXPECT_NEAR(coveredArea(star, {0, 0, 1}), area, 1e-9);
}

TEST(Triangulation, cutsWhatCrossesItselfSomehow) {
  const std::vector<Vector> bow = {{0, 0, 0}, {1, 1, 0}, {1, 0, 0}, {0, 1, 0}};
  EXPECT_EQ(triangulate(bow).size(), 2u);
  const std::vector<Vector> point(5, Vector{1, 1, 1});
  EXPECT_EQ(triangulate(point).size(), 3u);
}

TEST(Triangulation, refusesHugeConcavePolygonsButNotHugeConvexOnes) {
  std::vector<Vector> comb;
  for (std::size_t i = 0; i <= kMostConcaveCorners; ++i) {
    comb.push_back({static_cast<double>(i), i % 2 == 0 ? 0.0 : 1.0, 0});
  }
  comb.push_back({0, 5, 0});
  EXPECT_TRUE(triangulate(comb).empty());

  std::vector<Vector> circle;
  for (std::size_t i = 0; i <= kMostConcaveCorners; ++i) {
    const double angle = 2 * std::numbers::pi * static_cast<double>(i) / (kMostConcaveCorners + 1);
    circle.push_back({1e6 * std::cos(angle), 1e6 * std::sin(angle), 0});
  }
  EXPECT_EQ(triangulate(circle).size(), kMostConcaveCorners - 1);
}

}  // namespace
}  // namespace zyn::mesh
