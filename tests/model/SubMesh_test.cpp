#include "model/SubMesh.h"

#include <gtest/gtest.h>

namespace zyn {
namespace {

using Numbers = std::vector<std::uint32_t>;

/// Two triangles on either side of a square, with everything that a mesh can have.
Mesh strip() {
  Mesh mesh;
  mesh.points = {0, 0, 0, 1, 0, 0, 2, 0, 0, 2, 1, 0, 1, 1, 0, 3, 0, 0};
  mesh.corners = {0, 1, 4, 1, 2, 3, 4, 2, 5, 3};
  mesh.faceEnds = {3, 7, 10};
  for (int i = 0; i < 6; ++i) {
    mesh.normals.insert(mesh.normals.end(), {0.0, 0.0, 1.0 + i});
    mesh.pointColours.insert(mesh.pointColours.end(), {0.1F * static_cast<float>(i), 0, 0, 1});
    mesh.values.push_back(10.0 * i);
  }
  mesh.faceColours = {1, 0, 0, 1, 0, 1, 0, 1, 0, 0, 1, 1};
  mesh.faceNames = {7, 8, 9};
  mesh.faceGroups = {0, 1, 0};
  mesh.groups = {"ends", "middle"};
  return mesh;
}

TEST(SubMeshTest, TakesWhatBelongsToItsFacesAndNoOtherPoints) {
  const Numbers faces = {2, 1};
  const Mesh part = subMesh(strip(), faces);
  EXPECT_EQ(part.points, (std::vector<double>{2, 0, 0, 3, 0, 0, 2, 1, 0, 1, 0, 0, 1, 1, 0}));
  EXPECT_EQ(part.corners, (Numbers{0, 1, 2, 3, 0, 2, 4}));
  EXPECT_EQ(part.faceEnds, (Numbers{3, 7}));
  EXPECT_EQ(part.values, (std::vector<double>{20, 50, 30, 10, 40}));
  EXPECT_EQ(part.normals[2], 3);
  EXPECT_EQ(part.pointColours[4], 0.5F);
  EXPECT_EQ(part.faceColours, (std::vector<float>{0, 0, 1, 1, 0, 1, 0, 1}));
  EXPECT_EQ(part.faceNames, (std::vector<std::int32_t>{9, 8}));
  EXPECT_EQ(part.faceGroups, (std::vector<std::int32_t>{0, 1}));
  EXPECT_EQ(part.groups, strip().groups);
}

TEST(SubMeshTest, AllFacesInTheirOrderAreTheSameMesh) {
  Mesh whole = strip();
  const Mesh part = subMesh(whole, Numbers{0, 1, 2});
  EXPECT_EQ(part.faceEnds, whole.faceEnds);
  EXPECT_EQ(part.faceColours, whole.faceColours);
  for (std::size_t i = 0; i < whole.corners.size(); ++i) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
      EXPECT_EQ(part.points[3 * part.corners[i] + axis], whole.points[3 * whole.corners[i] + axis]);
    }
  }
}

TEST(SubMeshTest, NormalsOfCornersGoWithTheirCorners) {
  Mesh whole = strip();
  whole.normals.clear();
  for (int i = 0; i < 10; ++i) {
    whole.normals.insert(whole.normals.end(), {0.0, 0.0, 1.0 * i});
  }
  const Mesh part = subMesh(whole, Numbers{2});
  EXPECT_EQ(part.normals, (std::vector<double>{0, 0, 7, 0, 0, 8, 0, 0, 9}));
}

TEST(SubMeshTest, FacesWithoutNamesKeepTheirNumbers) {
  Mesh whole;
  whole.points = {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1};
  whole.corners = {0, 1, 2, 1, 2, 3};
  const Mesh part = subMesh(whole, Numbers{1, 1});
  EXPECT_EQ(part.corners, (Numbers{0, 1, 2, 0, 1, 2}));
  EXPECT_TRUE(part.faceEnds.empty());
  EXPECT_EQ(part.faceNames, (std::vector<std::int32_t>{1, 1}));
  EXPECT_TRUE(part.normals.empty() && part.values.empty() && part.faceGroups.empty());
}

TEST(SubMeshTest, NoFacesAreAnEmptyMesh) {
  const Mesh part = subMesh(strip(), {});
  EXPECT_TRUE(part.points.empty() && part.corners.empty() && part.faceEnds.empty());
}

}  // namespace
}  // namespace zyn
