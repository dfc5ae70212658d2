#include "model/files/Obj.h"

#include <gtest/gtest.h>

#include <map>

#include "support/MeshFileBytes.h"

namespace zyn {
namespace {

const std::string kSquare = "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n";

/// A folder of a few files, which remembers what was asked of it.
struct Folder {
  std::map<std::string, std::string, std::less<>> files;
  std::vector<std::string> asked;

  SiblingFile sibling() {
    return [this](std::string_view name) -> std::optional<std::string> {
      asked.emplace_back(name);
      const auto found = files.find(name);
      return found == files.end() ? std::nullopt : std::optional(found->second);
    };
  }
};

Colours coloursOf(const std::string& text, Folder folder) {
  return readMesh(text, folder.sibling()).faceColours;
}

TEST(Obj, keepsPolygonsAsTheyAre) {
  const Mesh mesh = readMesh(kSquare + "f 1 2 3\nf 1 2 3 4\nf 2 3 4\n");
  EXPECT_EQ(mesh.points, (Numbers{0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0}));
  EXPECT_EQ(mesh.corners, (Indices{0, 1, 2, 0, 1, 2, 3, 1, 2, 3}));
  EXPECT_EQ(mesh.faceEnds, (Indices{3, 7, 10}));
  EXPECT_TRUE(readMesh(kSquare + "f 1 2 3\n").faceEnds.empty());
}

TEST(Obj, countsNegativeIndicesFromTheVerticesSoFar) {
  EXPECT_EQ(readMesh(kSquare + "f -4 -3 -2\nv 9 9 9\n").corners, (Indices{0, 1, 2}));
}

TEST(Obj, readsEveryFormOfACorner) {
  const Mesh mesh = readMesh(kSquare +
                             "vt 0 0\nvn 0 0 1\nvn 0 1 0\n"
                             "f 1//2 2/1/1 3/-1/-1\n");
  EXPECT_EQ(mesh.corners, (Indices{0, 1, 2}));
  EXPECT_EQ(mesh.normals, (Numbers{0, 1, 0, 0, 0, 1, 0, 1, 0}));
}

TEST(Obj, leavesNormalsOutWhereACornerHasNone) {
  EXPECT_TRUE(readMesh(kSquare + "vn 0 0 1\nf 1//1 2//1 3\nf 1 2 3\n").normals.empty());
}

TEST(Obj, givesOneNormalAPointWhereTheFileDoes) {
  const Mesh mesh = readMesh(
      "v 0 0 0\nv 1 0 0\nv 1 1 0\nvn 0 0 1\nvn 0 0 2\nvn 0 0 3\n"
      "f 1//1 2//2 3//3\nf 1//1 3//3 2//2\n");
  EXPECT_EQ(mesh.normals, (Numbers{0, 0, 1, 0, 0, 2, 0, 0, 3}));
}

TEST(Obj, numbersGroupsInTheOrderOfTheirFirstFaces) {
  const Mesh mesh = readMesh(kSquare +
                             "g empty\ng lid and rim \nf 1 2 3\ng base\nf 1 2 3\nf 2 3 4\n"
                             "g lid and rim\nf 1 3 4\ng\nf 1 2 4\n");
  EXPECT_EQ(mesh.groups, (std::vector<std::string>{"lid and rim", "base", "default"}));
  EXPECT_EQ(mesh.faceGroups, (std::vector<std::int32_t>{0, 1, 1, 0, 2}));
  EXPECT_EQ(mesh.faceNames, mesh.faceGroups);
}

TEST(Obj, takesObjectsAsGroupsButKeepsTheNumbersOfFacesAsNames) {
  const Mesh mesh = readMesh("o one\n" + kSquare + "f 1 2 3\no two\nf 1 2 3\n");
  EXPECT_EQ(mesh.groups, (std::vector<std::string>{"one", "two"}));
  EXPECT_EQ(mesh.faceGroups, (std::vector<std::int32_t>{0, 1}));
  EXPECT_TRUE(mesh.faceNames.empty());
}

TEST(Obj, hasNoGroupsWhereTheFileNamesNone) {
  const Mesh mesh = readMesh(kSquare + "f 1 2 3\n");
  EXPECT_TRUE(mesh.groups.empty());
  EXPECT_TRUE(mesh.faceGroups.empty());
  EXPECT_TRUE(mesh.faceNames.empty());
}

TEST(Obj, coloursFacesByTheDiffuseColoursOfTheirMaterials) {
  const Folder folder{{{"parts of it.mtl",
                        "# a comment\r\nnewmtl red paint\r\nKa 1 1 1\r\nKd 1 0.25 0\r\n"
                        "newmtl glass\r\nKd 0.5\r\nd 0.25\r\nnewmtl thin\r\nTr 0.25\r\n"}},
                      {}};
  EXPECT_EQ(coloursOf("mtllib parts of it.mtl\n" + kSquare +
                          "f 1 2 3\nusemtl red paint\nf 1 2 3\nusemtl glass\nf 1 2 3\n"
                          "usemtl thin\nf 1 2 3\nusemtl unknown\nf 1 2 3\n",
                      folder),
            (Colours{0.5f, 0.5f,  0.5f, 1,    1,    0.25f, 0,    1,    0.5f, 0.5f,
                     0.5f, 0.25f, 0.5f, 0.5f, 0.5f, 0.75f, 0.5f, 0.5f, 0.5f, 1}));
}

TEST(Obj, findsSeveralLibrariesOnALineAndOneBehindItsUse) {
  const Folder folder{{{"a.mtl", "newmtl a\nKd 1 0 0\n"}, {"b.mtl", "newmtl b\nKd 0 1 0\n"}}, {}};
  EXPECT_EQ(
      coloursOf(kSquare + "usemtl a\nf 1 2 3\nusemtl b\nf 1 2 3\nmtllib a.mtl b.mtl\n", folder),
      (Colours{1, 0, 0, 1, 0, 1, 0, 1}));
}

TEST(Obj, readsWithoutColoursWhereALibraryIsMissingOrMeansNothing) {
  const std::string text = "mtllib a.mtl\n" + kSquare + "usemtl a\nf 1 2 3\n";
  EXPECT_TRUE(coloursOf(text, {}).empty());
  EXPECT_TRUE(readMesh(text).faceColours.empty());
  EXPECT_TRUE(coloursOf(text, {{{"a.mtl", std::string("\0\1\2", 3)}}, {}}).empty());
  EXPECT_EQ(coloursOf(text, {{{"a.mtl", "Kd 0 1 0\nnewmtl a\nKd red 0 0\nKd nan 0 0\nd\n"}}, {}}),
            (Colours{0.5f, 0.5f, 0.5f, 1}));
  EXPECT_EQ(coloursOf(text, {{{"a.mtl", "newmtl a\nKd 7 -1 0.5\n"}}, {}}),
            (Colours{1, 0, 0.5f, 1}));
}

TEST(Obj, asksForFilesBelowItsFolderOnly) {
  Folder folder;
  readMesh(kSquare +
               "usemtl a\nf 1 2 3\nmtllib //machine/share/a.mtl\nmtllib \\\\machine\\share\\b.mtl\n"
               "mtllib c:d.mtl\nmtllib ../e.mtl\nmtllib sub\\f.mtl\nmtllib sub/..\n",
           folder.sibling());
  EXPECT_EQ(folder.asked,
            (std::vector<std::string>{"a.mtl", "b.mtl", "d.mtl", "e.mtl", "sub/f.mtl", ".."}));
}

TEST(Obj, readsColoursBehindCoordinates) {
  EXPECT_EQ(
      readMesh("v 0 0 0\nv 1 0 0 0.5 0.25 1\nv 0 1 0 1 0 0 0.5 # red\nf 1 2 3\n").pointColours,
      (Colours{1, 1, 1, 1, 0.5f, 0.25f, 1, 1, 1, 0, 0, 0.5f}));
  EXPECT_EQ(readMesh("v 0 0 0 255 0 51\nv 1 0 0 0 0 0\nv 0 1 0 0 0 0\nf 1 2 3\n").pointColours[2],
            0.2f);
  EXPECT_TRUE(readMesh("v 0 0 0 1\nv 1 0 0 1\nv 0 1 0 # 1 2 3\nf 1 2 3\n").pointColours.empty());
}

TEST(Obj, readsPointsWithoutFaces) {
  const Mesh mesh = readMesh("v 0 0 0\nv 1 0 0\np 1\nl 1 2\n");
  EXPECT_EQ(mesh.pointCount(), 2u);
  EXPECT_EQ(mesh.faceCount(), 0u);
}

TEST(Obj, passesOverEverythingElse) {
  const Mesh mesh = readMesh("# c:\\models\\\nmtllib a.mtl\n" + kSquare +
                             "vp 1 2\nsurf what\nusemtl red\ns 1\nl 1 2\np 1\nf 1 2 3 # last\n");
  EXPECT_EQ(mesh.faceCount(), 1u);
}

TEST(Obj, joinsLinesAtABackslash) {
  EXPECT_EQ(readMesh(kSquare + "f 1 2 \\\n3\\\r\n 4\nf 1 2 3\n").faceCount(), 2u);
  EXPECT_EQ(refusalOf(kSquare + "f 1 2 \\\n3\\\r\n 4\nf 1 2 9\n"),
            "line 8: vertex 9 does not exist (4 so far)");
}

TEST(Obj, acceptsEveryLineEndAMarkAtTheBeginningAndNoLineEndAtTheEnd) {
  const std::string crlf = "\xEF\xBB\xBFv 0 0 0\r\nv 1 0 0\r\n\r\nv 1 1 0\r\nf 1 2 3";
  EXPECT_EQ(readMesh(crlf).corners, (Indices{0, 1, 2}));
  EXPECT_EQ(readMesh("# old\rv 0 0 0\rv 1 0 0\rv 1 1 0\rf 1 2 3").corners, (Indices{0, 1, 2}));
  EXPECT_EQ(refusalOf("v 0 0 0\r\nv 0 0 x\r\n"), "line 2: \"x\" is not a number (vertex)");
}

TEST(Obj, saysWhatIsWrongAndWhere) {
  EXPECT_EQ(refusalOf(kSquare + "f 1 2\n"), "line 5: a face needs at least 3 corners, not 2");
  EXPECT_EQ(refusalOf(kSquare + "f 1 2 5\n"), "line 5: vertex 5 does not exist (4 so far)");
  EXPECT_EQ(refusalOf(kSquare + "f 1 2 -5\n"), "line 5: vertex -5 does not exist (4 so far)");
  EXPECT_EQ(refusalOf(kSquare + "f 0 1 2\n"), "line 5: vertex 0 does not exist (4 so far)");
  EXPECT_EQ(refusalOf(kSquare + "f 1//1 2 3\n"), "line 5: normal 1 does not exist (0 so far)");
  EXPECT_EQ(refusalOf(kSquare + "f 1/7 2 3\n"),
            "line 5: texture vertex 7 does not exist (0 so far)");
  EXPECT_EQ(refusalOf(kSquare + "f 1 2 x\n"), "line 5: \"x\" is not a corner of a face");
  EXPECT_EQ(refusalOf(kSquare + "f 1 2 99999999999999999999\n"),
            "line 5: \"99999999999999999999\" is not a corner of a face");
  EXPECT_EQ(refusalOf("v 0 0\n"), "line 1: a number is missing (vertex)");
  EXPECT_EQ(refusalOf("v 0 0 nan\n"), "line 1: a coordinate is not finite (vertex)");
  EXPECT_EQ(refusalOf("v 0 0 0 1 1 blue\n"), "line 1: \"blue\" is not a number (colour)");
  EXPECT_EQ(refusalOf("vn 0 0 up\n"), "line 1: \"up\" is not a number (normal)");
  EXPECT_EQ(refusalOf("g a\n"), "there are no points in it");
}

}  // namespace
}  // namespace zyn
