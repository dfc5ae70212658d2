#include "model/files/Off.h"

#include <gtest/gtest.h>

#include "support/MeshFileBytes.h"

namespace zyn {
namespace {

const std::string kPoints = "0 0 0\n1 0 0\n1 1 0\n0 1 0\n";

TEST(Off, readsPolygonsBetweenComments) {
  const Mesh mesh = readMesh("# made\nOFF # of\n\n4 2 # by\n# a test\n" + kPoints +
                             "4 0 1 2 3 # square\n3 0\t1 2\n");
  EXPECT_EQ(mesh.points, (Numbers{0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0}));
  EXPECT_EQ(mesh.corners, (Indices{0, 1, 2, 3, 0, 1, 2}));
  EXPECT_EQ(mesh.faceEnds, (Indices{4, 7}));
  EXPECT_TRUE(mesh.faceColours.empty());
}

TEST(Off, readsCountsBesideTheNameAndEveryLineEnd) {
  EXPECT_EQ(readMesh("OFF 4 1 0\r\n0 0 0\r\n1 0 0\r\n1 1 0\r\n0 1 0\r\n3 0 1 2").corners,
            (Indices{0, 1, 2}));
  EXPECT_EQ(readMesh("OFF\r4 1 0\r0 0 0\r1 0 0\r1 1 0\r0 1 0\r3 0 1 2").corners,
            (Indices{0, 1, 2}));
}

TEST(Off, readsNormalsAndColoursOfPoints) {
  const Mesh mesh =
      readMesh("STCNOFF\n2 0 0\n0 0 0 0 0 1 255 0 51 0.5 0.5\n1 0 0 0 1 0 0.5 0.25 1.0 0.5\n");
  EXPECT_EQ(mesh.normals, (Numbers{0, 0, 1, 0, 1, 0}));
  EXPECT_EQ(mesh.pointColours[4], 0.5f);
  EXPECT_EQ(mesh.pointColours[7], 0.5f);
  EXPECT_EQ(readMesh("COFF\n1 0 0\n0 0 0 255 0 51 102\n").pointColours,
            (Colours{1, 0, 0.2f, 0.4f}));
}

TEST(Off, readsColoursOfFaces) {
  EXPECT_EQ(readMesh("OFF\n4 5 0\n" + kPoints +
                     "3 0 1 2 255 0 51\n3 0 1 2 1.0 0.5 0 0.25\n3 0 1 2 7\n3 0 1 2\n"
                     "3 0 1 2 1 0 0\n")
                .faceColours,
            (Colours{1,    0, 0.2f, 1,    1,    0.5f, 0,          0.25f, 0.5f, 0.5f,
                     0.5f, 1, 0.5f, 0.5f, 0.5f, 1,    1 / 255.0f, 0,     0,    1}));
}

TEST(Off, saysWhatIsWrongAndWhere) {
  const std::string begin = "OFF\n4 1 0\n";
  EXPECT_EQ(refusalOf("OFF\n"), "line 2: the file ends where points should follow");
  EXPECT_EQ(refusalOf("OFF\n4 x 0\n" + kPoints), "line 2: \"x\" is not a whole number (faces)");
  EXPECT_EQ(refusalOf("OFF\n353535235358 6 0\n0 0 0\n"),
            "line 2: the file is too short for 353535235358 points");
  EXPECT_EQ(refusalOf("OFF\n-1 6 0\n0 0 0\n"), "line 2: the file is too short for -1 points");
  EXPECT_EQ(refusalOf(begin + "0 0 0\n1 0 0\n1 1 0\n"),
            "line 6: the file ends where a point should follow");
  EXPECT_EQ(refusalOf(begin + "0 0 0\n1 0 zero\n"), "line 4: \"zero\" is not a number (a point)");
  EXPECT_EQ(refusalOf(begin + "0 0 0\n1 0 nan\n"), "line 4: a coordinate is not finite (a point)");
  EXPECT_EQ(refusalOf(begin + kPoints), "line 7: the file ends where a face should follow");
  EXPECT_EQ(refusalOf(begin + kPoints + "2 0 1\n"),
            "line 7: a face needs at least 3 corners, not 2");
  EXPECT_EQ(refusalOf(begin + kPoints + "4 0 1 2\n"),
            "line 8: the file ends where a corner should follow");
  EXPECT_EQ(refusalOf(begin + kPoints + "3 0 1 4\n"),
            "line 7: point 4 does not exist (there are 4)");
  EXPECT_EQ(refusalOf(begin + kPoints + "3 0 1 -1\n"),
            "line 7: point -1 does not exist (there are 4)");
  EXPECT_EQ(refusalOf(begin + kPoints + "3 0 1 2 red green blue\n"),
            "line 7: \"red\" is not a number (colour)");
  EXPECT_EQ(refusalOf("OFF BINARY\n"), "line 1: a binary OFF is not read");
  EXPECT_EQ(refusalOf("4OFF\n1 0 0\n"),
            "line 1: points of other than three coordinates are not read");
  EXPECT_EQ(refusalOf("OFF\n0 0 0\n"), "there are no points in it");
}

}  // namespace
}  // namespace zyn
