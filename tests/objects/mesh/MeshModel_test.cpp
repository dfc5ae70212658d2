#include "objects/mesh/MeshModel.h"

#include <gtest/gtest.h>

#include "model/Measures.h"
#include "model/SmoothNormals.h"
#include "support/Meshes.h"

namespace zyn {
namespace {

MeshModel modelOf(Mesh mesh) {
  MeshModel model;
  model.take(std::move(mesh));
  return model;
}

/// Two rows of chunks: a strip of this many squares.
Mesh strip(std::uint32_t squares) {
  Mesh mesh;
  for (std::uint32_t i = 0; i <= squares; ++i) {
    test::addPoint(mesh, i, 0, 0);
    test::addPoint(mesh, i, 1, 0);
  }
  for (std::uint32_t i = 0; i < squares; ++i) {
    test::addFace(mesh, {2 * i, 2 * i + 2, 2 * i + 3});
    test::addFace(mesh, {2 * i, 2 * i + 3, 2 * i + 1});
  }
  return mesh;
}

TEST(MeshModel, normalsComeFromPointsCornersOrTheShape) {
  MeshModel model = modelOf(test::box(1, 1, 1));
  model.prepareNormals();
  EXPECT_EQ(model.normalAt(0), (std::array<float, 3>{0, 0, -1}));
  std::vector<double> ofPoints(24, 0.5);
  ofPoints[3 * model.mesh().corners[4]] = 2;
  model.setNormals(ofPoints);
  EXPECT_EQ(model.normalAt(4), (std::array<float, 3>{2, 0.5, 0.5}));
  std::vector<double> ofCorners(108, 0.25);
  ofCorners[12] = 3;
  model.setNormals(ofCorners);
  EXPECT_EQ(model.normalAt(4), (std::array<float, 3>{3, 0.25, 0.25}));
  EXPECT_EQ(model.normals(), ofCorners);
  model.setNormals({});
  EXPECT_EQ(model.normals(), cornerNormals<double>(model.mesh(), 30));
}

TEST(MeshModel, facesDropWhatBelongsToThem) {
  MeshModel model = modelOf(test::box(1, 1, 1));
  model.setFaceColours(std::vector<float>(48, 1));
  model.setPointColours(std::vector<float>(32, 1));
  model.setValues(std::vector<double>(8, 1));
  model.setFaceNames(std::vector<std::int32_t>(12, 1));
  model.setFaces({0, 1, 2}, {});
  EXPECT_TRUE(model.mesh().faceColours.empty());
  EXPECT_TRUE(model.mesh().faceNames.empty());
  EXPECT_EQ(model.mesh().pointColours.size(), 32u);
  EXPECT_EQ(model.mesh().values.size(), 8u);
  model.setPoints(std::vector<double>(9));
  EXPECT_TRUE(model.mesh().pointColours.empty());
  EXPECT_TRUE(model.mesh().corners.empty());
}

TEST(MeshModel, onlyChunksThatLookOtherwiseGetAnotherRevision) {
  MeshModel model = modelOf(strip(3 * MeshModel::kChunk / 2));
  ASSERT_EQ(model.chunkCount(), 3u);
  model.prepareNormals();
  const std::uint64_t before = model.chunkRevision(0);
  EXPECT_EQ(model.chunkRevision(2), before);
  model.movePoints(5, std::vector<double>{2.5, 1, 0.5});
  EXPECT_GT(model.chunkRevision(0), before);
  EXPECT_EQ(model.chunkRevision(1), before);
  EXPECT_EQ(model.chunkRevision(2), before);
  model.setFaceColours(std::vector<float>(4 * model.mesh().faceCount()));
  EXPECT_GT(model.chunkRevision(2), before);
}

TEST(MeshModel, movedPointsCountEverywhere) {
  MeshModel model = modelOf(test::quadBox(2, 2, 2));
  model.prepareNormals();
  model.tree();
  model.triangles();
  model.edges();
  EXPECT_EQ(model.bounds(), (Box3{0, 2, 0, 2, 0, 2}));
  // The upper side goes up.
  model.movePoints(4, std::vector<double>{0, 0, 5, 2, 0, 5, 0, 2, 5, 2, 2, 5});
  EXPECT_EQ(model.bounds(), (Box3{0, 2, 0, 2, 0, 5}));
  EXPECT_DOUBLE_EQ(volumeOf(model.mesh(), model.triangles()), 20);
  const auto hit =
      model.tree().nearest(model.mesh(), model.triangles(), {1, 1, 9}, {0, 0, -1}, true);
  ASSERT_TRUE(hit);
  EXPECT_DOUBLE_EQ(hit->distance, 4);
}

}  // namespace
}  // namespace zyn
