#include "viewer/Parts.h"

#include <gtest/gtest.h>

namespace zyn::viewer {
namespace {

/// Triangles, of three numbers each.
Faces triangles(Numbers corners) { return {Numbers(corners.size() / 3, 3), std::move(corners)}; }

TEST(PartsTest, NothingHasNoParts) {
  EXPECT_TRUE(connectedParts({}, 0).empty());
  EXPECT_TRUE(partsOfGroups({}).empty());
}

TEST(PartsTest, FacesAreReadCountByCount) {
  const Numbers numbers = {3, 7, 8, 9, 4, 1, 2, 3, 4};
  const Faces faces = facesOf(numbers);
  EXPECT_EQ(faces.counts, (Numbers{3, 4}));
  EXPECT_EQ(faces.corners, (Numbers{7, 8, 9, 1, 2, 3, 4}));
  EXPECT_EQ(cornerStarts(faces), (Numbers{0, 3, 7}));
}

TEST(PartsTest, FacesThatShareOnePointHangTogether) {
  EXPECT_EQ(connectedParts(triangles({0, 1, 2, 1, 3, 4}), 5), (std::vector<Part>{{0, 1}}));
}

TEST(PartsTest, LargestPartComesFirst) {
  EXPECT_EQ(connectedParts(triangles({0, 1, 2, 3, 4, 5, 3, 5, 6}), 7),
            (std::vector<Part>{{1, 2}, {0}}));
}

TEST(PartsTest, EqualPartsKeepTheOrderOfTheMesh) {
  EXPECT_EQ(connectedParts(triangles({0, 1, 2, 3, 4, 5, 6, 7, 8}), 9),
            (std::vector<Part>{{0}, {1}, {2}}));
}

TEST(PartsTest, LateFaceJoinsEarlierParts) {
  EXPECT_EQ(connectedParts(triangles({0, 1, 2, 3, 4, 5, 1, 3, 6}), 7),
            (std::vector<Part>{{0, 1, 2}}));
}

TEST(PartsTest, PolygonsHangTogetherByAnyOfTheirPoints) {
  const Faces faces = {{5, 3, 4}, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 4}};
  EXPECT_EQ(connectedParts(faces, 11), (std::vector<Part>{{0, 2}, {1}}));
}

TEST(PartsTest, EveryFaceIsInExactlyOnePart) {
  constexpr std::int32_t kFaces = 3000;
  Numbers corners;
  for (std::int32_t i = 0; i < kFaces; ++i) {  // seven towers of faces that share their foot
    corners.insert(corners.end(), {i % 7, 7 + 2 * i, 8 + 2 * i});
  }
  const std::vector<Part> parts = connectedParts(triangles(corners), 7 + 2 * kFaces);
  EXPECT_EQ(parts.size(), 7U);
  std::vector<int> seen(kFaces);
  for (const Part& part : parts) {
    for (const std::int32_t face : part) {
      ++seen[static_cast<std::size_t>(face)];
    }
  }
  EXPECT_EQ(seen, std::vector<int>(kFaces, 1));
}

TEST(PartsTest, GroupsComeInTheOrderOfTheirNumbers) {
  const Numbers groups = {2, 0, 2, 7, 0};
  EXPECT_EQ(partsOfGroups(groups), (std::vector<Part>{{1, 4}, {0, 2}, {3}}));
}

}  // namespace
}  // namespace zyn::viewer
