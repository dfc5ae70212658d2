#include "mesh/AsciiStlReader.h"

#include "support/MeshBytes.h"

namespace zyn::mesh {
namespace {

TEST(AsciiStlReader, readsAFacet) {
  const Mesh mesh =
      parseMesh("solid a name of words\n" + asciiFacet("0 0 2") + "endsolid a name\n");
  ASSERT_EQ(mesh.triangles.size(), 1u);
  expectVector(mesh.triangles[0].vertices[1], 2, 0, 0);
  expectVector(mesh.triangles[0].normals[0], 0, 0, 1);
}

TEST(AsciiStlReader, readsSeveralSolidsAnyCaseAndAnyLayout) {
  const Mesh mesh = parseMesh(
      "\n SOLID\r\n" + asciiFacet() + "EndSolid\r\nsolid c:\\parts\\\n" + asciiFacet() +
      "facet normal 0 0 1 outer loop vertex 0 0 0 vertex +1e0 0 0 vertex 0 1.5E-1 0 endloop "
      "endfacet endsolid");
  ASSERT_EQ(mesh.triangles.size(), 3u);
  expectVector(mesh.triangles[2].vertices[2], 0, 0.15, 0);
}

TEST(AsciiStlReader, computesNormalsThatAreMissingOrContradictTheVertices) {
  for (const char* normal : {"0 0 0", "nan nan nan", "0 0 -1"}) {
    const Mesh mesh = parseMesh("solid\n" + asciiFacet(normal) + "endsolid");
    expectVector(mesh.triangles[0].normals[1], 0, 0, 1);
  }
}

TEST(AsciiStlReader, refusesATextThatStopsEarly) {
  const std::string whole = "solid x\n" + asciiFacet() + "endsolid x\n";
  const std::size_t end = whole.find("endsolid");
  for (std::size_t length = 1; length < end + 8; ++length) {
    EXPECT_NE(refusal(whole.substr(0, length)), "") << length << " bytes";
  }
  EXPECT_EQ(refusal(whole.substr(0, end)), "line 9: the file ends inside a solid");
  EXPECT_EQ(refusal(whole.substr(0, whole.find("endloop"))),
            "line 7: the file ends where \"endloop\" should follow");
}

TEST(AsciiStlReader, saysWhatIsWrongAndWhere) {
  EXPECT_EQ(refusal("solid\nfacet normal 0 0 1\nouter loop\nvertex 0 0\nvertex 1 0 0\n"),
            "line 4: a number is missing (vertex)");
  EXPECT_EQ(refusal("solid\nfacet normal 0 0 1\nouter loop\nvertex 0 0 zero\n"),
            "line 4: \"zero\" is not a number (vertex)");
  EXPECT_EQ(refusal("solid\nfacet normal 0 0 1\nouter loop\nvertex 0 0 inf\n"),
            "line 4: a coordinate is not finite (vertex)");
  EXPECT_EQ(refusal("solid\nfacet normal 0 0 1\nouter loop\nvertex 0 0 1e999\n"),
            "line 4: a coordinate is not finite (vertex)");
  EXPECT_EQ(refusal("solid\nface normal 0 0 1\n"),
            "line 2: \"face\" where \"facet\" or \"endsolid\" should follow");
  EXPECT_EQ(refusal("solid\nendsolid\ngarbage"),
            "line 3: \"garbage\" where \"solid\" should follow");
  EXPECT_EQ(refusal("solid\nendsolid\n"), "there are no triangles in it");
}

TEST(AsciiStlReader, quotesForeignBytesReadably) {
  EXPECT_EQ(
      refusal("solid\n\x80\xFF" + std::string(40, 'a')),
      "line 2: \"??aaaaaaaaaaaaaaaaaaaaaa...\" where \"facet\" or \"endsolid\" should follow");
}

TEST(AsciiStlReader, takesTheTiniestNumberAsNothing) {
  const std::string text =
      "solid\nfacet normal 0 0 1\nouter loop\nvertex 1e-999 0 0\nvertex 1 0 0\nvertex 0 1 0\n"
      "endloop\nendfacet\nendsolid";
  expectVector(parseMesh(text).triangles[0].vertices[0], 0, 0, 0);
}

}  // namespace
}  // namespace zyn::mesh
