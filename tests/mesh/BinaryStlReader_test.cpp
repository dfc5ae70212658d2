#include "mesh/BinaryStlReader.h"

#include <limits>

#include "support/MeshBytes.h"

namespace zyn::mesh {
namespace {

TEST(BinaryStlReader, readsVerticesAndMakesNormalsUnitLong) {
  const Mesh mesh = parseMesh(binaryStl({flatFacet(0, 0, 5)}));
  ASSERT_EQ(mesh.triangles.size(), 1u);
  expectVector(mesh.triangles[0].vertices[0], 0, 0, 0);
  expectVector(mesh.triangles[0].vertices[1], 2, 0, 0);
  expectVector(mesh.triangles[0].vertices[2], 0, 3, 0);
  for (const Vector& normal : mesh.triangles[0].normals) {
    expectVector(normal, 0, 0, 1);
  }
}

TEST(BinaryStlReader, keepsAGivenNormalThatLeans) {
  const Mesh mesh = parseMesh(binaryStl({flatFacet(3, 0, 4)}));
  expectVector(mesh.triangles[0].normals[2], 0.6, 0, 0.8);
}

TEST(BinaryStlReader, computesNormalsThatAreMissingOrContradictTheVertices) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  for (const auto& facet : {flatFacet(0, 0, 0), flatFacet(nan, 0, 1), flatFacet(0, 0, -1)}) {
    expectVector(parseMesh(binaryStl({facet})).triangles[0].normals[0], 0, 0, 1);
  }
}

TEST(BinaryStlReader, acceptsACommentThatBeginsLikeAText) {
  const std::string bytes = binaryStl({flatFacet(0, 0, 1)}, "solid exported as binary");
  EXPECT_EQ(detectFormat(bytes), Format::kBinaryStl);
  EXPECT_EQ(parseMesh(bytes).triangles.size(), 1u);
}

TEST(BinaryStlReader, refusesASizeThatDoesNotFitTheCount) {
  const std::string whole = binaryStl({flatFacet(0, 0, 1), flatFacet(0, 0, 1)});
  EXPECT_EQ(refusal(whole.substr(0, whole.size() - 1)),
            "byte 80: not a whole binary STL: 2 triangles need 184 bytes, but it has 183");
  EXPECT_EQ(refusal(whole + std::string(3, '\0')),
            "byte 80: not a whole binary STL: 2 triangles need 184 bytes, but it has 187");
  EXPECT_EQ(refusal(whole.substr(0, 83)), "not a whole binary STL: 83 bytes, less than its header");
}

TEST(BinaryStlReader, refusesACountFarBeyondTheFile) {
  std::string bytes = binaryStl({flatFacet(0, 0, 1)});
  bytes.replace(80, 4, "\xFF\xFF\xFF\xFF");
  EXPECT_EQ(refusal(bytes),
            "byte 80: not a whole binary STL: 4294967295 triangles need 214748364834 bytes, "
            "but it has 134");
}

TEST(BinaryStlReader, refusesCoordinatesThatAreNotFinite) {
  auto facet = flatFacet(0, 0, 1);
  facet[8] = std::numeric_limits<float>::infinity();
  EXPECT_EQ(refusal(binaryStl({flatFacet(0, 0, 1), facet})),
            "byte 158: a coordinate is not finite");
  facet[8] = std::numeric_limits<float>::quiet_NaN();
  EXPECT_EQ(refusal(binaryStl({facet})), "byte 108: a coordinate is not finite");
}

TEST(BinaryStlReader, refusesAModelWithoutTriangles) {
  EXPECT_EQ(refusal(binaryStl({})), "there are no triangles in it");
}

}  // namespace
}  // namespace zyn::mesh
