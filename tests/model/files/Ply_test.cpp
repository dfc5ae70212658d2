#include "model/files/Ply.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/MeshFileBytes.h"

namespace zyn {
namespace {

/// A header with lines of elements and properties.
std::string header(const std::string& format, const std::string& elements) {
  return "ply\nformat " + format + " 1.0\ncomment made by a test\n" + elements + "end_header\n";
}

const std::string kPoints =
    "element vertex 3\nproperty float x\nproperty float y\nproperty float z\n";
const std::string kFaces = "element face 1\nproperty list uchar int vertex_indices\n";

std::string text(const std::string& rows, const std::string& elements = kPoints + kFaces) {
  return header("ascii", elements) + rows;
}

const std::string kRows = "0 0 0\n1 0 0\n0 1 0\n";

TEST(Ply, readsText) {
  const Mesh mesh = readMesh(text(kRows + "3 0 1 2\n"));
  EXPECT_EQ(mesh.points, (Numbers{0, 0, 0, 1, 0, 0, 0, 1, 0}));
  EXPECT_EQ(mesh.corners, (Indices{0, 1, 2}));
  EXPECT_TRUE(mesh.faceEnds.empty());
  EXPECT_TRUE(mesh.normals.empty());
  EXPECT_TRUE(mesh.pointColours.empty());
}

TEST(Ply, readsTextWithEveryLineEndAndEmptyLines) {
  const std::string plain = text("0 0 0\n\n1 0 0\n0 1 0\n3 0 1 2");
  std::string windows;
  std::string mac;
  for (const char c : plain) {
    windows += c == '\n' ? "\r\n" : std::string(1, c);
    mac += c == '\n' ? '\r' : c;
  }
  for (const std::string& bytes : {plain, windows, mac}) {
    EXPECT_EQ(readMesh(bytes).corners, (Indices{0, 1, 2}));
  }
}

/// All types of numbers, lists and elements that are passed over, polygons.
std::string richPly(bool isBig) {
  const auto number = [isBig](auto value) { return bytesOf(value, isBig); };
  std::string bytes = header(
      isBig ? "binary_big_endian" : "binary_little_endian",
      "obj_info from a scanner\nelement camera 1\nproperty list int double views\nproperty char c\n"
      "element vertex 4\nproperty short flags\nproperty double x\nproperty float32 y\n"
      "property int16 z\nproperty list uint8 ushort rest\nproperty ushort red\n"
      "property uint16 green\nproperty uint16 blue\n"
      "element face 2\nproperty uint id\nproperty list ushort uint vertex_index\n"
      "property uchar red\nproperty uchar green\nproperty uchar blue\nproperty uchar alpha\n");
  bytes += number(std::int32_t{2}) + number(1.0) + number(2.0) + number(std::int8_t{-1});
  for (int i = 0; i < 4; ++i) {
    bytes += number(std::int16_t{7}) + number(i * 0.1) + number(static_cast<float>(i)) +
             number(static_cast<std::int16_t>(-i * i));
    bytes += number(std::uint8_t{1}) + number(std::uint16_t{9});
    bytes += number(std::uint16_t{65535}) + number(std::uint16_t{0}) + number(std::uint16_t{13107});
  }
  bytes += number(std::uint32_t{1}) + number(std::uint16_t{4});
  for (const std::uint32_t corner : {3u, 2u, 1u, 0u}) {
    bytes += number(corner);
  }
  bytes += std::string("\xFF\0\x33\x66", 4);
  bytes += number(std::uint32_t{2}) + number(std::uint16_t{3});
  for (const std::uint32_t corner : {0u, 1u, 2u}) {
    bytes += number(corner);
  }
  return bytes + std::string("\0\0\0\xFF", 4) + "what follows";
}

TEST(Ply, readsBinariesOfBothByteOrders) {
  for (const bool isBig : {false, true}) {
    const Mesh mesh = readMesh(richPly(isBig));
    EXPECT_EQ(mesh.points, (Numbers{0, 0, 0, 0.1, 1, -1, 0.2, 2, -4, 3 * 0.1, 3, -9}));
    EXPECT_EQ(mesh.corners, (Indices{3, 2, 1, 0, 0, 1, 2}));
    EXPECT_EQ(mesh.faceEnds, (Indices{4, 7}));
    EXPECT_EQ(Colours(mesh.pointColours.begin() + 8, mesh.pointColours.begin() + 12),
              (Colours{1, 0, 0.2f, 1}));
    EXPECT_EQ(mesh.faceColours, (Colours{1, 0, 0.2f, 0.4f, 0, 0, 0, 1}));
  }
}

TEST(Ply, refusesBinariesThatAreCutOff) {
  const std::string whole = richPly(true);
  const std::size_t end = whole.find("what follows");
  for (std::size_t size = 4; size < end; ++size) {
    EXPECT_NE(refusalOf(whole.substr(0, size)), "") << size << " bytes";
  }
  const std::string cut = header("binary_little_endian", kPoints) + std::string(35, '\0');
  EXPECT_EQ(refusalOf(cut), "byte " + std::to_string(cut.size() - 35) +
                                ": the file is too short for 3 of \"vertex\"");
}

TEST(Ply, readsNormalsValuesAndFloatColours) {
  const Mesh mesh = readMesh(text(
      "0 0 0 0 0 1 5 1 0.5 2\n1 0 0 0 0 1 nan 0 -1 0\n",
      "element vertex 2\nproperty float x\nproperty float y\nproperty float z\n"
      "property float nx\nproperty float ny\nproperty float nz\nproperty float value\n"
      "property float diffuse_red\nproperty float diffuse_green\nproperty float diffuse_blue\n"));
  EXPECT_EQ(mesh.normals, (Numbers{0, 0, 1, 0, 0, 1}));
  EXPECT_EQ(mesh.values[0], 5);
  EXPECT_TRUE(std::isnan(mesh.values[1]));
  EXPECT_EQ(mesh.pointColours, (Colours{1, 0.5f, 1, 1, 0, 0, 0, 1}));
}

TEST(Ply, leavesNormalsOutThatAreNotFinite) {
  const std::string points =
      "element vertex 1\nproperty float x\nproperty float y\nproperty float z\n"
      "property float nx\nproperty float ny\nproperty float nz\n";
  EXPECT_EQ(readMesh(text("0 0 0 0 0 1\n", points)).normals.size(), 3u);
  EXPECT_TRUE(readMesh(text("0 0 0 0 0 nan\n", points)).normals.empty());
}

TEST(Ply, readsStripsOfTriangles) {
  const Mesh mesh =
      readMesh(text("0 0 0\n1 0 0\n0 1 0\n9 0 1 2 1 -1 2 1 0 -1\n",
                    kPoints + "element tristrips 1\nproperty list int int vertex_indices\n"));
  EXPECT_EQ(mesh.corners, (Indices{0, 1, 2, 2, 1, 1, 2, 1, 0}));
}

TEST(Ply, passesOverWhatIsNoKeywordInTheHeader) {
  EXPECT_EQ(readMesh("ply\nformat ascii 1.0\nCreated by a program: www.of.it\n" + kPoints + kFaces +
                     "end_header\n" + kRows + "3 0 1 2 4\n")
                .faceCount(),
            1u);
}

TEST(Ply, saysWhatIsWrongInTheHeader) {
  EXPECT_EQ(refusalOf("ply\nformat ascii 1.0\n"), "line 3: the file ends in its header");
  EXPECT_EQ(refusalOf("ply\nend_header\n"), "line 2: the header says no format");
  EXPECT_EQ(refusalOf("ply\nformat text 1.0\n"), "line 2: \"text\" is not a format of PLY");
  EXPECT_EQ(refusalOf("ply\nelement vertex -1\n"), "line 2: a count below 0");
  EXPECT_EQ(refusalOf("ply\nelement vertex many\n"),
            "line 2: \"many\" is not a whole number (count of vertex)");
  EXPECT_EQ(refusalOf("ply\nproperty float x\n"), "line 2: a property of no element");
  EXPECT_EQ(refusalOf("ply\nelement vertex 1\nproperty real x\n"),
            "line 3: \"real\" is not a type of numbers");
  EXPECT_EQ(refusalOf("ply\nelement face 1\nproperty list float int vertex_indices\n"),
            "line 3: a list counts in whole numbers");
  EXPECT_EQ(refusalOf(text("", "element vertex 1\nproperty float x\n" + kFaces) + "0\n3 0 0 0\n"),
            "line 8: the points have no x, y and z");
  EXPECT_EQ(refusalOf(text(kRows, kPoints + kPoints)), "line 12: a second element of points");
  EXPECT_EQ(refusalOf(text(kRows, kPoints + kFaces + kFaces)),
            "line 12: a second element of faces");
  EXPECT_EQ(refusalOf(text("", "")), "there are no points in it");
}

TEST(Ply, saysWhatIsWrongInText) {
  EXPECT_EQ(refusalOf(text("0 0 0\n1 0 0\n0 1\n3 0 1 2\n")), "line 13: a number is missing (z)");
  EXPECT_EQ(refusalOf(text("0 0 0\n1 0 nan\n0 1 0\n3 0 1 2\n")),
            "line 12: a coordinate is not finite");
  EXPECT_EQ(refusalOf(text("0 0 0\n1 0 zero\n0 1 0\n3 0 1 2\n")),
            "line 12: \"zero\" is not a number (z)");
  EXPECT_EQ(refusalOf(text(kRows + "3 0 1 3\n")), "line 14: point 3 does not exist (there are 3)");
  EXPECT_EQ(refusalOf(text(kRows + "3 0 1 -1\n")),
            "line 14: point -1 does not exist (there are 3)");
  EXPECT_EQ(refusalOf(text(kRows + "3 0 1 0.5\n")),
            "line 14: point 0.5 does not exist (there are 3)");
  EXPECT_EQ(refusalOf(text(kRows + "2 0 1\n")), "line 14: a face needs at least 3 corners, not 2");
  EXPECT_EQ(refusalOf(text(kRows + "-3 0 1 2\n")),
            "line 14: the file is too short for a list of -3");
  EXPECT_EQ(refusalOf(text(kRows)), "line 14: the file ends before its last number");
  EXPECT_EQ(refusalOf(text(kRows + "\n\n\n\n")), "line 18: the file ends before its last number");
}

TEST(Ply, refusesCountsFarBeyondTheFile) {
  EXPECT_EQ(
      refusalOf(header("ascii", "element vertex 9223372036854775807\nproperty float x\n") + "0\n"),
      "line 6: the file is too short for 9223372036854775807 of \"vertex\"");
  const std::string elements =
      "element vertex 3\nproperty uchar x\nproperty uchar y\nproperty uchar z\n"
      "element face 1\nproperty list uint int vertex_indices\n";
  EXPECT_EQ(refusalOf(header("binary_little_endian", elements) + std::string(9, '\0') +
                      "\xFF\xFF\xFF\xFF"),
            "byte 204: the file is too short for a list of 4294967295");
}

TEST(Ply, countsNothingForAnElementWithoutProperties) {
  EXPECT_EQ(readMesh(header("binary_little_endian", "element nothing 4294967295\n" + kPoints) +
                     std::string(36, '\0'))
                .pointCount(),
            3u);
}

}  // namespace
}  // namespace zyn
