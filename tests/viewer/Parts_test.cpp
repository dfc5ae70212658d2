#include "viewer/Parts.h"

#include <gtest/gtest.h>

namespace zyn::viewer {
namespace {

mesh::Triangle facet(mesh::Vector a, mesh::Vector b, mesh::Vector c) { return {{a, b, c}, {}}; }

TEST(PartsTest, NothingHasNoParts) { EXPECT_TRUE(connectedParts({}).empty()); }

TEST(PartsTest, FacetsThatShareOneCornerHangTogether) {
  const mesh::Mesh mesh{
      {facet({0, 0, 0}, {1, 0, 0}, {0, 1, 0}), facet({1, 0, 0}, {2, 0, 0}, {2, 1, 0})}};
  EXPECT_EQ(connectedParts(mesh), (std::vector<Part>{{0, 1}}));
}

TEST(PartsTest, LargestPartComesFirst) {
  const mesh::Mesh mesh{{facet({9, 9, 9}, {8, 9, 9}, {9, 8, 9}),
                         facet({0, 0, 0}, {1, 0, 0}, {0, 1, 0}),
                         facet({0, 0, 0}, {0, 1, 0}, {0, 0, 1})}};
  EXPECT_EQ(connectedParts(mesh), (std::vector<Part>{{1, 2}, {0}}));
}

TEST(PartsTest, EqualPartsKeepTheOrderOfTheMesh) {
  const mesh::Mesh mesh{{facet({0, 0, 0}, {1, 0, 0}, {0, 1, 0}),
                         facet({5, 0, 0}, {6, 0, 0}, {5, 1, 0}),
                         facet({9, 0, 0}, {8, 0, 0}, {9, 1, 0})}};
  EXPECT_EQ(connectedParts(mesh), (std::vector<Part>{{0}, {1}, {2}}));
}

TEST(PartsTest, LateFacetJoinsEarlierParts) {
  const mesh::Mesh mesh{{facet({0, 0, 0}, {1, 0, 0}, {0, 1, 0}),
                         facet({5, 0, 0}, {6, 0, 0}, {5, 1, 0}),
                         facet({1, 0, 0}, {5, 0, 0}, {3, 3, 0})}};
  EXPECT_EQ(connectedParts(mesh), (std::vector<Part>{{0, 1, 2}}));
}

TEST(PartsTest, NegativeZeroIsTheSameCorner) {
  const mesh::Mesh mesh{
      {facet({0.0, 0, 0}, {1, 0, 0}, {0, 1, 0}), facet({-0.0, 0, 0}, {-1, 0, 0}, {0, -1, 0})}};
  EXPECT_EQ(connectedParts(mesh).size(), 1u);
}

TEST(PartsTest, EveryFacetIsInExactlyOnePart) {
  constexpr std::uint32_t kFacets = 3000;
  mesh::Mesh mesh;
  for (std::uint32_t i = 0; i < kFacets; ++i) {
    const double x = 10.0 * (i % 7);  // seven towers of facets that share their foot
    mesh.triangles.push_back(facet({x, 0, 0}, {x, 1, 1.0 + i}, {x, 2, 1.0 + i}));
  }
  const std::vector<Part> parts = connectedParts(mesh);
  EXPECT_EQ(parts.size(), 7u);
  std::vector<int> seen(kFacets);
  for (const Part& part : parts) {
    for (const std::uint32_t index : part) {
      ++seen[index];
    }
  }
  EXPECT_EQ(seen, std::vector<int>(kFacets, 1));
}

}  // namespace
}  // namespace zyn::viewer
