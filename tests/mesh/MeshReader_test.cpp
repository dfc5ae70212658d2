#include "mesh/MeshReader.h"

#include <fstream>

#include "support/MeshBytes.h"

namespace zyn::mesh {
namespace {

const std::filesystem::path kModels = "/usr/share/assimp/models";

TEST(MeshReader, tellsFormatsApartByContent) {
  EXPECT_EQ(detectFormat("solid\nendsolid"), Format::kAsciiStl);
  EXPECT_EQ(detectFormat("  SOLID x\n"), Format::kAsciiStl);
  EXPECT_EQ(detectFormat("# comment\n\nv 0 0 0\n"), Format::kObj);
  EXPECT_EQ(detectFormat("mtllib x.mtl\n"), Format::kObj);
  EXPECT_EQ(detectFormat(std::string("\x89PNG\r\n\x1A\n\0\0", 10)), Format::kBinaryStl);
  EXPECT_EQ(detectFormat("solidify this\n"), Format::kUnknown);
  EXPECT_EQ(detectFormat("Dear reader,\n"), Format::kUnknown);
  EXPECT_EQ(detectFormat(""), Format::kUnknown);
}

TEST(MeshReader, refusesWhatIsNoModel) {
  EXPECT_EQ(refusal(""), "the file is empty");
  EXPECT_EQ(refusal("Dear reader,\n"), "not a model in STL or OBJ format");
  EXPECT_EQ(refusal(std::string("\xFF\xFEv\0 \0", 6)), "the text is UTF-16; save it as UTF-8");
}

TEST(MeshReader, namesTheFile) {
  const auto message = [](const std::filesystem::path& file) -> std::string {
    try {
      readMesh(file);
    } catch (const MeshError& error) {
      return error.what();
    }
    return {};
  };
  EXPECT_EQ(message("/nowhere/part.stl"), "/nowhere/part.stl: no such file");
  EXPECT_EQ(message("/"), "/: this is a folder, not a model");

  const std::filesystem::path file = std::filesystem::temp_directory_path() / "zyn_mesh_reader.obj";
  std::ofstream(file) << "v 0 0 0\nf 1 1 2\n";
  EXPECT_EQ(message(file), file.string() + ": line 2: vertex 2 does not exist (1 so far)");
  std::filesystem::remove(file);
}

TEST(MeshReader, readsOneModelAlikeFromBothFormsOfStl) {
  const Mesh binary = readMesh(kModels / "STL/Spider_binary.stl");
  const Mesh text = readMesh(kModels / "STL/Spider_ascii.stl");
  ASSERT_EQ(binary.triangles.size(), 1368u);
  ASSERT_EQ(text.triangles.size(), 1368u);
  for (std::size_t i = 0; i < 1368; ++i) {
    for (std::size_t k = 0; k < 3; ++k) {
      EXPECT_LT(length(binary.triangles[i].vertices[k] - text.triangles[i].vertices[k]), 1e-5);
    }
  }
}

TEST(MeshReader, readsOneModelAlikeFromStlAndObj) {
  const Bounds stl = readMesh(kModels / "STL/Wuson.stl").bounds();
  const Bounds obj = readMesh(kModels / "OBJ/WusonOBJ.obj").bounds();
  EXPECT_LT(length(stl.minimum - obj.minimum), 1e-5);
  EXPECT_LT(length(stl.maximum - obj.maximum), 1e-5);
}

TEST(MeshReader, turnsInwardNormalsOutward) {
  for (const Triangle& triangle : readMesh(kModels / "STL/Spider_binary.stl").triangles) {
    const auto& [a, b, c] = triangle.vertices;
    EXPECT_GT(dot(triangle.normals[0], facetNormal(a, b, c)), 0.0);
  }
}

TEST(MeshReader, reportsProgressAboutAHundredTimes) {
  std::string text = "solid\n";
  for (int i = 0; i < 5000; ++i) {
    text += asciiFacet();
  }
  std::size_t calls = 0;
  std::size_t last = 0;
  parseMesh(text + "endsolid", [&](std::size_t done, std::size_t total) {
    EXPECT_GT(done, last);
    EXPECT_LE(done, total);
    last = done;
    ++calls;
  });
  EXPECT_GE(calls, 90u);
  EXPECT_LE(calls, 101u);
}

}  // namespace
}  // namespace zyn::mesh
