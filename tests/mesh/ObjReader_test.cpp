#include "mesh/ObjReader.h"

#include "support/MeshBytes.h"

namespace zyn::mesh {
namespace {

const char* const kSquare = "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n";

TEST(ObjReader, readsATriangleAndComputesItsNormal) {
  const Mesh mesh = parseMesh(std::string(kSquare) + "f 1 2 3\n");
  ASSERT_EQ(mesh.triangles.size(), 1u);
  expectVector(mesh.triangles[0].vertices[2], 1, 1, 0);
  expectVector(mesh.triangles[0].normals[2], 0, 0, 1);
}

TEST(ObjReader, cutsPolygonsIntoTriangles) {
  EXPECT_EQ(parseMesh(std::string(kSquare) + "f 1 2 3 4\n").triangles.size(), 2u);
}

TEST(ObjReader, countsNegativeIndicesFromTheVerticesSoFar) {
  const Mesh mesh = parseMesh(std::string(kSquare) + "f -4 -3 -2\nv 9 9 9\n");
  expectVector(mesh.triangles[0].vertices[0], 0, 0, 0);
  expectVector(mesh.triangles[0].vertices[2], 1, 1, 0);
}

TEST(ObjReader, readsEveryFormOfACorner) {
  const Mesh mesh = parseMesh(std::string(kSquare) +
                              "vt 0 0\nvn 3 0 4\nvn 0 0 0\n"
                              "f 1 2/1 3//1\nf 1/1/1 2/-1/-2 3//2\n");
  ASSERT_EQ(mesh.triangles.size(), 2u);
  expectVector(mesh.triangles[0].normals[0], 0, 0, 1);
  expectVector(mesh.triangles[0].normals[2], 0.6, 0, 0.8);
  expectVector(mesh.triangles[1].normals[0], 0.6, 0, 0.8);
  expectVector(mesh.triangles[1].normals[1], 0.6, 0, 0.8);
  expectVector(mesh.triangles[1].normals[2], 0, 0, 1);
}

TEST(ObjReader, passesOverEverythingElse) {
  const Mesh mesh = parseMesh("# c:\\models\\\nmtllib a.mtl\no part\n" + std::string(kSquare) +
                              "g one two\nusemtl red\ns 1\nl 1 2\np 1\nf 1 2 3 # last\n");
  EXPECT_EQ(mesh.triangles.size(), 1u);
}

TEST(ObjReader, ignoresWeightsAndColoursBehindCoordinates) {
  const Mesh mesh = parseMesh("v 0 0 0 1\nv 1 0 0 0.5 0.5 0.5\nv 0 1 0\nf 1 2 3\n");
  expectVector(mesh.triangles[0].vertices[1], 1, 0, 0);
}

TEST(ObjReader, joinsLinesAtABackslash) {
  const Mesh mesh = parseMesh(std::string(kSquare) + "f 1 2 \\\n3\\\r\n 4\nf 1 2 3\n");
  EXPECT_EQ(mesh.triangles.size(), 3u);
  EXPECT_EQ(refusal(std::string(kSquare) + "f 1 2 \\\n3\\\r\n 4\nf 1 2 9\n"),
            "line 8: vertex 9 does not exist (4 so far)");
}

TEST(ObjReader, acceptsAMarkAtTheBeginningAndNoLineEndAtTheEnd) {
  EXPECT_EQ(parseMesh("\xEF\xBB\xBF" + std::string(kSquare) + "f 1 2 3").triangles.size(), 1u);
}

TEST(ObjReader, saysWhatIsWrongAndWhere) {
  const std::string square = kSquare;
  EXPECT_EQ(refusal(square + "f 1 2\n"), "line 5: a face needs at least 3 corners, not 2");
  EXPECT_EQ(refusal(square + "f 1 2 5\n"), "line 5: vertex 5 does not exist (4 so far)");
  EXPECT_EQ(refusal(square + "f 1 2 -5\n"), "line 5: vertex -5 does not exist (4 so far)");
  EXPECT_EQ(refusal(square + "f 0 1 2\n"), "line 5: vertex 0 does not exist (4 so far)");
  EXPECT_EQ(refusal(square + "f 1//1 2 3\n"), "line 5: normal 1 does not exist (0 so far)");
  EXPECT_EQ(refusal(square + "f 1/7 2 3\n"), "line 5: texture vertex 7 does not exist (0 so far)");
  EXPECT_EQ(refusal(square + "f 1 2 x\n"), "line 5: \"x\" is not a corner of a face");
  EXPECT_EQ(refusal(square + "f 1 2 99999999999999999999\n"),
            "line 5: \"99999999999999999999\" is not a corner of a face");
  EXPECT_EQ(refusal("v 0 0\n"), "line 1: a number is missing (vertex)");
  EXPECT_EQ(refusal("v 0 0 nan\n"), "line 1: a coordinate is not finite (vertex)");
  EXPECT_EQ(refusal("vn 0 0 up\n"), "line 1: \"up\" is not a number (normal)");
  EXPECT_EQ(refusal(square), "there are no triangles in it");
}

}  // namespace
}  // namespace zyn::mesh
