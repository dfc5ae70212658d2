#include "model/files/MeshFile.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/MeshFileBytes.h"

namespace zyn {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Compares numbers bit by bit.
template <typename Number>
void expectSame(const std::vector<Number>& actual, const std::vector<Number>& expected) {
  ASSERT_EQ(actual.size(), expected.size());
  for (std::size_t i = 0; i < actual.size(); ++i) {
    EXPECT_EQ(bytesOf(actual[i]), bytesOf(expected[i])) << i << ": " << actual[i];
  }
}

/// A mesh with all that a mesh may hold, of numbers that need all their digits.
Mesh fullMesh() {
  Mesh mesh;
  mesh.points = {0.1, -0.0, 1.0 / 3, 1e300, 5e-324, 2, -1e-7, 4, 123456789.123456789, 7, 8, 9};
  mesh.corners = {0, 1, 2, 0, 1, 2, 3, 3, 2, 1};
  mesh.faceEnds = {3, 7, 10};
  mesh.normals = {0, 0, 1, 0, -0.0, 1, 0.1, 0.2, 0.3, 1e-300, 1, 0};
  mesh.pointColours = {0.1f, 0, 1, 1, 1e-9f, 0.3f, 1, 0.5f, 0, 0, 0, 1, 1, 1, 1, 1};
  mesh.faceColours = {0, 0.2f, 1, 1, 0.4f, 0.6f, 0.8f, 1, 1, 1, 0, 0};
  mesh.values = {1, 0.1, 1e-300, 3};
  mesh.faceNames = {-5, 2147483647, 0};
  mesh.faceGroups = {0, 1, 0};
  mesh.groups = {"lid", "b\xC3\xA9ton 2"};
  return mesh;
}

TEST(MeshFile, writesAPlyThatReadsBackToTheLastBit) {
  const Mesh mesh = fullMesh();
  const std::string bytes = written(mesh, MeshFormat::kPly);
  EXPECT_NE(bytes.find("property float red"), std::string::npos);
  EXPECT_NE(bytes.find("property uchar red"), std::string::npos);
  const Mesh read = readMesh(bytes);
  expectSame(read.points, mesh.points);
  EXPECT_EQ(read.corners, mesh.corners);
  EXPECT_EQ(read.faceEnds, mesh.faceEnds);
  expectSame(read.normals, mesh.normals);
  expectSame(read.pointColours, mesh.pointColours);
  expectSame(read.faceColours, mesh.faceColours);
  expectSame(read.values, mesh.values);
  EXPECT_EQ(read.faceNames, mesh.faceNames);
}

TEST(MeshFile, writesNothingThatCouldNotBeRead) {
  Mesh mesh;
  for (const MeshFormat format :
       {MeshFormat::kPly, MeshFormat::kObj, MeshFormat::kOff, MeshFormat::kBinaryStl}) {
    EXPECT_THROW(written(mesh, format), MeshFileError);
  }
  mesh.points = {1, 2, 3};
  for (const MeshFormat format : {MeshFormat::kPly, MeshFormat::kObj, MeshFormat::kOff}) {
    EXPECT_EQ(readMesh(written(mesh, format)).points, mesh.points);
  }
  EXPECT_THROW(written(mesh, MeshFormat::kBinaryStl), MeshFileError);
}

TEST(MeshFile, writesEveryByteOfColourToAPly) {
  Mesh mesh;
  mesh.points.assign(3 * 64, 1.5);
  for (int i = 0; i < 256; ++i) {
    mesh.pointColours.push_back(static_cast<float>(i / 255.0));
  }
  const std::string bytes = written(mesh, MeshFormat::kPly);
  EXPECT_NE(bytes.find("property uchar alpha"), std::string::npos);
  expectSame(readMesh(bytes).pointColours, mesh.pointColours);
}

TEST(MeshFile, writesFacesOfManyCornersToAPly) {
  Mesh mesh;
  for (std::uint32_t i = 0; i < 300; ++i) {
    mesh.points.insert(mesh.points.end(), {std::cos(i / 50.0), std::sin(i / 50.0), 0});
    mesh.corners.push_back(i);
  }
  mesh.faceEnds = {300};
  const Mesh read = readMesh(written(mesh, MeshFormat::kPly));
  EXPECT_EQ(read.corners, mesh.corners);
  EXPECT_EQ(read.faceEnds, mesh.faceEnds);
}

TEST(MeshFile, writesAnObjThatReadsBackToTheLastBit) {
  const Mesh mesh = fullMesh();
  const Mesh read = readMesh(written(mesh, MeshFormat::kObj));
  expectSame(read.points, mesh.points);
  EXPECT_EQ(read.corners, mesh.corners);
  EXPECT_EQ(read.faceEnds, mesh.faceEnds);
  expectSame(read.normals, mesh.normals);
  EXPECT_EQ(read.groups, mesh.groups);
  EXPECT_EQ(read.faceGroups, mesh.faceGroups);
  Colours opaque = mesh.pointColours;
  for (std::size_t i = 3; i < opaque.size(); i += 4) {
    opaque[i] = 1;
  }
  expectSame(read.pointColours, opaque);
}

TEST(MeshFile, writesNormalsOfCornersToAnObj) {
  Mesh mesh = fullMesh();
  mesh.normals.clear();
  for (std::size_t i = 0; i < 3 * mesh.corners.size(); ++i) {
    mesh.normals.push_back(static_cast<double>(i) / 7);
  }
  expectSame(readMesh(written(mesh, MeshFormat::kObj)).normals, mesh.normals);
  EXPECT_TRUE(readMesh(written(mesh, MeshFormat::kPly)).normals.empty());
  EXPECT_TRUE(readMesh(written(mesh, MeshFormat::kOff)).normals.empty());
}

TEST(MeshFile, keepsNamesOfGroupsOnOneLineOfAnObj) {
  Mesh mesh = fullMesh();
  mesh.groups[0] = "a\nf 1 2 3\r\tb";
  const Mesh read = readMesh(written(mesh, MeshFormat::kObj));
  EXPECT_EQ(read.groups[0], "a f 1 2 3  b");
  EXPECT_EQ(read.faceCount(), 3u);
}

TEST(MeshFile, writesAnOffThatReadsBackToTheLastBit) {
  const Mesh mesh = fullMesh();
  const Mesh read = readMesh(written(mesh, MeshFormat::kOff));
  expectSame(read.points, mesh.points);
  EXPECT_EQ(read.corners, mesh.corners);
  EXPECT_EQ(read.faceEnds, mesh.faceEnds);
  expectSame(read.normals, mesh.normals);
  expectSame(read.pointColours, mesh.pointColours);
  expectSame(read.faceColours, mesh.faceColours);
}

TEST(MeshFile, tellsZerosAndOnesOfColoursFromBytesInAnOff) {
  Mesh mesh;
  mesh.points = {1, 2, 3};
  mesh.pointColours = {1, 0, 1, 1};
  expectSame(readMesh(written(mesh, MeshFormat::kOff)).pointColours, mesh.pointColours);
}

TEST(MeshFile, writesAnStlThatReadsBackToTheLastBitOfSinglePrecision) {
  Mesh mesh = fullMesh();
  mesh.points = {0.1, -0.0, 1.0 / 3, 1, 5e-324, 2, -1e-7, 4, 1234.56789, 7, 8, 9};
  const std::string bytes = written(mesh, MeshFormat::kBinaryStl);
  EXPECT_FALSE(bytes.starts_with("solid"));
  const Mesh once = readMesh(bytes);
  EXPECT_EQ(once.faceCount(), 4u);
  EXPECT_EQ(once.points[0], static_cast<double>(0.1f));
  const Mesh twice = readMesh(written(once, MeshFormat::kBinaryStl));
  expectSame(twice.points, once.points);
  EXPECT_EQ(twice.corners, once.corners);
  EXPECT_EQ(written(once, MeshFormat::kBinaryStl), written(twice, MeshFormat::kBinaryStl));
}

TEST(MeshFile, writesNormalsOfFacetsToAnStlAndKeepsDegenerateTriangles) {
  Mesh mesh;
  mesh.points = {0, 0, 0, 2, 0, 0, 0, 3, 0};
  mesh.corners = {0, 2, 1, 0, 1, 1};
  const std::string bytes = written(mesh, MeshFormat::kBinaryStl);
  EXPECT_EQ(bytes.substr(84, 12), bytesOf(0.0f) + bytesOf(0.0f) + bytesOf(-1.0f));
  EXPECT_EQ(readMesh(bytes).corners, (Indices{0, 1, 2, 0, 2, 2}));
}

TEST(MeshFile, writesNoNumberThatCannotBeReadAgain) {
  Mesh mesh = fullMesh();
  EXPECT_THROW(written(mesh, MeshFormat::kBinaryStl), MeshFileError);
  try {
    written(mesh, MeshFormat::kBinaryStl);
  } catch (const MeshFileError& error) {
    EXPECT_STREQ(error.what(), "point 1 has a coordinate that is too large for the format");
  }
  mesh.points[4] = kInfinity;
  for (const MeshFormat format : {MeshFormat::kObj, MeshFormat::kPly, MeshFormat::kOff}) {
    try {
      written(mesh, format);
      ADD_FAILURE();
    } catch (const MeshFileError& error) {
      EXPECT_STREQ(error.what(), "point 1 has a coordinate that is not finite");
    }
  }
}

TEST(MeshFile, toldByWhatIsInIt) {
  EXPECT_EQ(formatOf("solid\n"), MeshFormat::kAsciiStl);
  EXPECT_EQ(formatOf("# a\n  v 0 0 0"), MeshFormat::kObj);
  EXPECT_EQ(formatOf("ply\r\n"), MeshFormat::kPly);
  EXPECT_EQ(formatOf("STCN4OFF\n"), MeshFormat::kOff);
  EXPECT_EQ(formatOf(std::string(90, '\0')), MeshFormat::kBinaryStl);
  EXPECT_EQ(formatOf("Offal\n"), std::nullopt);
  EXPECT_EQ(refusalOf(""), "the file is empty");
  EXPECT_EQ(refusalOf("hello"), "not a model in STL, OBJ, PLY, OFF or 3MF format");
  EXPECT_EQ(refusalOf("\xFF\xFEv\0"), "the text is UTF-16; save it as UTF-8");
}

TEST(MeshFile, knowsWhatIsWrittenByExtension) {
  EXPECT_EQ(writtenFormat(".stl"), MeshFormat::kBinaryStl);
  EXPECT_EQ(writtenFormat(".PLY"), MeshFormat::kPly);
  EXPECT_EQ(writtenFormat(".Obj"), MeshFormat::kObj);
  EXPECT_EQ(writtenFormat(".off"), MeshFormat::kOff);
  EXPECT_EQ(writtenFormat(".3mf"), std::nullopt);
  EXPECT_EQ(writtenFormat(""), std::nullopt);
}

/// A sheet of triangles that takes some thousand steps to read and write.
Mesh sheet() {
  Mesh mesh;
  constexpr std::uint32_t kSide = 40;
  for (std::uint32_t i = 0; i < kSide * kSide; ++i) {
    mesh.points.insert(mesh.points.end(), {1.0 * (i % kSide), 1.0 * (i / kSide), 0.25});
    if (i % kSide + 1 < kSide && i + kSide < kSide * kSide) {
      mesh.corners.insert(mesh.corners.end(), {i, i + 1, i + kSide});
    }
  }
  return mesh;
}

TEST(MeshFile, tellsProgressAndStopsWhenAsked) {
  const Mesh mesh = sheet();
  for (const MeshFormat format :
       {MeshFormat::kBinaryStl, MeshFormat::kObj, MeshFormat::kPly, MeshFormat::kOff}) {
    std::vector<double> parts;
    const Progress progress = [&](double part) {
      parts.push_back(part);
      return parts.size() < 1000;
    };
    std::string bytes;
    writeMesh(
        mesh, format, [&](std::string_view part) { bytes += part; }, progress);
    EXPECT_GT(parts.size(), 20u);
    EXPECT_EQ(parts.front(), 0);
    readMesh(bytes, {}, progress);
    EXPECT_GT(parts.size(), 40u);
    EXPECT_LE(parts.size(), 200u);
    EXPECT_EQ(std::count(parts.begin(), parts.end(), 0), 2) << "the begin of each";
    for (const double part : parts) {
      EXPECT_TRUE(part >= 0 && part <= 1) << part;
    }
    const Progress stop = [](double part) { return part < 0.5; };
    EXPECT_THROW(readMesh(bytes, {}, stop), Aborted);
    EXPECT_THROW(writeMesh(
                     mesh, format, [](std::string_view) {}, stop),
                 Aborted);
  }
}

}  // namespace
}  // namespace zyn
