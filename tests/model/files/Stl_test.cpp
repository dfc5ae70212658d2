#include "model/files/Stl.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/MeshFileBytes.h"

namespace zyn {
namespace {

/// Two facets that share an edge, in the plane z = 0.
const std::vector<FacetNumbers> kSquare = {{0, 0, 1, 0, 0, 0, 1, 0, 0, 1, 1, 0},
                                           {0, 0, 1, 0, 0, 0, 1, 1, 0, -0.0f, 1, 0}};

std::string asciiFacet(const std::string& normal = "0 0 1") {
  return "facet normal " + normal +
         "\n outer loop\n  vertex 0 0 0\n  vertex 2 0 0\n  vertex 0 3 0\n endloop\nendfacet\n";
}

TEST(BinaryStl, makesOnePointOfEqualCorners) {
  const Mesh mesh = readMesh(stlOf(kSquare));
  EXPECT_EQ(mesh.points, (Numbers{0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0}));
  EXPECT_EQ(mesh.corners, (Indices{0, 1, 2, 0, 2, 3}));
  EXPECT_TRUE(mesh.faceEnds.empty());
  EXPECT_TRUE(mesh.normals.empty());
}

TEST(BinaryStl, keepsTheNumbersOfDegenerateFacets) {
  const Mesh mesh = readMesh(stlOf({{0, 0, 0, 1, 1, 1, 1, 1, 1, 1, 1, 1}, kSquare[0]}));
  EXPECT_EQ(mesh.corners, (Indices{0, 0, 0, 1, 2, 3}));
}

TEST(BinaryStl, isToldByItsSizeThoughItBeginsLikeAText) {
  const std::string bytes = stlOf(kSquare, "solid exported as binary\n facet normal");
  EXPECT_EQ(formatOf(bytes), MeshFormat::kBinaryStl);
  EXPECT_EQ(readMesh(bytes).faceCount(), 2u);
  EXPECT_EQ(formatOf(stlOf(kSquare, "ply\nformat ascii 1.0\n")), MeshFormat::kBinaryStl);
}

TEST(BinaryStl, ignoresNormalsOfAnyKind) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  EXPECT_EQ(readMesh(stlOf({{nan, 0, -1, 0, 0, 0, 1, 0, 0, 1, 1, 0}})).faceCount(), 1u);
}

TEST(BinaryStl, ignoresWhatFollowsTheLastFacet) {
  EXPECT_EQ(readMesh(stlOf(kSquare) + "by some exporter").faceCount(), 2u);
}

TEST(BinaryStl, refusesOneThatIsCutOff) {
  const std::string whole = stlOf(kSquare);
  for (std::size_t size = 81; size < whole.size(); ++size) {
    EXPECT_NE(refusalOf(whole.substr(0, size)), "") << size << " bytes";
  }
  EXPECT_EQ(refusalOf(whole.substr(0, whole.size() - 1)),
            "byte 80: not a whole binary STL: 2 facets need 184 bytes, but it has 183");
  EXPECT_EQ(refusalOf(whole.substr(0, 83)),
            "not a whole binary STL: 83 bytes, less than its header");
}

TEST(BinaryStl, refusesACountFarBeyondTheFile) {
  std::string bytes = stlOf(kSquare);
  bytes.replace(80, 4, "\xFF\xFF\xFF\xFF");
  EXPECT_EQ(refusalOf(bytes),
            "byte 80: not a whole binary STL: 4294967295 facets need 214748364834 bytes, "
            "but it has 184");
}

TEST(BinaryStl, refusesCoordinatesThatAreNotFinite) {
  auto facets = kSquare;
  facets[1][8] = std::numeric_limits<float>::infinity();
  EXPECT_EQ(refusalOf(stlOf(facets)), "byte 166: a coordinate is not finite");
  facets[1][8] = std::numeric_limits<float>::quiet_NaN();
  EXPECT_EQ(refusalOf(stlOf(facets)), "byte 166: a coordinate is not finite");
}

TEST(BinaryStl, refusesAModelWithoutFacets) {
  EXPECT_EQ(refusalOf(stlOf({})), "there are no points in it");
}

TEST(AsciiStl, makesOnePointOfEqualCorners) {
  const Mesh mesh = readMesh("solid a name of words\n" + asciiFacet() + asciiFacet("nan 0 7") +
                             "endsolid a name\n");
  EXPECT_EQ(mesh.points, (Numbers{0, 0, 0, 2, 0, 0, 0, 3, 0}));
  EXPECT_EQ(mesh.corners, (Indices{0, 1, 2, 0, 1, 2}));
}

TEST(AsciiStl, readsSeveralSolidsAnyCaseAndAnyLayout) {
  const Mesh mesh = readMesh(
      "\n SOLID\r\n" + asciiFacet() + "EndSolid\r\nsolid c:\\parts\\\n" + asciiFacet() +
      "facet normal 0 0 1 outer loop vertex 0 0 0 vertex +1e0 0 0 vertex 0 1.5E-1 0 endloop "
      "endfacet endsolid");
  EXPECT_EQ(mesh.faceCount(), 3u);
  EXPECT_EQ(mesh.points.back(), 0);
  EXPECT_EQ(mesh.points[mesh.points.size() - 2], 0.15);
}

TEST(AsciiStl, readsAnEmptySolidBeforeAFilledOne) {
  EXPECT_EQ(readMesh("solid a\nendsolid a\nsolid b\n" + asciiFacet() + "endsolid b").faceCount(),
            1u);
}

TEST(AsciiStl, refusesATextThatStopsEarly) {
  const std::string whole = "solid x\n" + asciiFacet() + "endsolid x\n";
  const std::size_t end = whole.find("endsolid");
  for (std::size_t length = 1; length < end + 8; ++length) {
    EXPECT_NE(refusalOf(whole.substr(0, length)), "") << length << " bytes";
  }
  EXPECT_EQ(refusalOf(whole.substr(0, end)), "line 9: the file ends inside a solid");
  EXPECT_EQ(refusalOf(whole.substr(0, whole.find("endloop"))),
            "line 7: the file ends where \"endloop\" should follow");
}

TEST(AsciiStl, saysWhatIsWrongAndWhere) {
  EXPECT_EQ(refusalOf("solid\nfacet normal 0 0 1\nouter loop\nvertex 0 0\nvertex 1 0 0\n"),
            "line 4: a number is missing (vertex)");
  EXPECT_EQ(refusalOf("solid\nfacet normal 0 0 1\nouter loop\nvertex 0 0 zero\n"),
            "line 4: \"zero\" is not a number (vertex)");
  EXPECT_EQ(refusalOf("solid\r\nfacet normal 0 0 1\r\nouter loop\r\nvertex 0 0 inf\r\n"),
            "line 4: a coordinate is not finite (vertex)");
  EXPECT_EQ(refusalOf("solid\rfacet normal 0 0 1\router loop\rvertex 0 0 1e999\r"),
            "line 4: a coordinate is not finite (vertex)");
  EXPECT_EQ(refusalOf("solid\nface normal 0 0 1\n"),
            "line 2: \"face\" where \"facet\" or \"endsolid\" should follow");
  EXPECT_EQ(refusalOf("solid\nendsolid\ngarbage"),
            "line 3: \"garbage\" where \"solid\" should follow");
  EXPECT_EQ(refusalOf("solid\nendsolid\n"), "there are no points in it");
  EXPECT_EQ(
      refusalOf("solid\n\x80\xFF" + std::string(40, 'a')),
      "line 2: \"??aaaaaaaaaaaaaaaaaaaaaa...\" where \"facet\" or \"endsolid\" should follow");
}

TEST(AsciiStl, takesTheTiniestNumbersAsNothing) {
  const std::string zeros(400, '0');
  const Mesh mesh = readMesh("solid\nfacet normal 0 0 1\nouter loop\nvertex 1e-999 0 0." + zeros +
                             "1\nvertex -1 0 0\nvertex 0 1 0\nendloop\nendfacet\nendsolid");
  EXPECT_EQ(mesh.points, (Numbers{0, 0, 0, -1, 0, 0, 0, 1, 0}));
}

}  // namespace
}  // namespace zyn
