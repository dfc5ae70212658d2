// Reads every model of assimp's own collection with our readers and with assimp, and compares.
#include <gtest/gtest.h>

#include <assimp/scene.h>
#include <algorithm>
#include <array>
#include <assimp/Importer.hpp>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <variant>
#include <vector>

#include "model/Measures.h"
#include "model/Triangulation.h"
#include "model/Vector.h"
#include "model/files/MeshBuilder.h"
#include "model/files/MeshFile.h"
#include "model/files/MeshFileError.h"
#include "model/files/PointWelder.h"

namespace zyn {
namespace {

namespace fs = std::filesystem;

const fs::path kModels = "/usr/share/assimp/models";

/// The files that we refuse, and what we say of them. All others must be read by both alike.
const std::map<std::string, std::string>& refusals() {
  static const std::map<std::string, std::string> known = {
      {"OBJ/box_UTF16BE.obj", "the text is UTF-16; save it as UTF-8"},
      // Assimp takes 3.1+e2 for 3.1.
      {"OBJ/number_formats.obj", "line 11: \"3.1+e2\" is not a number (vertex)"},
      // Assimp leaves faces out that have no corners.
      {"OFF/invalid.off", "line 6: a face needs at least 3 corners, not 0"},
      {"invalid/malformed2.obj", "line 23: a face needs at least 3 corners, not 0"},
      // A list of faces among the properties of points, whose rows do not have it.
      {"PLY/issue623.ply", "line 13: a number is missing (vertex_indices)"},
      // The last 69 bytes are missing.
      {"PLY/pond.0.ply", "byte 276: the file is too short for 70051 of \"vertex\""},
      {"invalid/OutOfMemory.off", "line 2: the file is too short for 353535235358 points"},
      {"invalid/empty.obj", "the file is empty"},
      {"invalid/empty.off", "the file is empty"},
      {"invalid/empty.ply", "the file is empty"},
      {"invalid/malformed.obj", "line 23: vertex 12 does not exist (8 so far)"},
  };
  return known;
}

bool isModel(const fs::path& file) {
  std::string extension = file.extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(), ::tolower);
  return std::set<std::string>{".stl", ".obj", ".ply", ".off", ".3mf"}.contains(extension);
}

std::vector<std::string> models() {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(kModels)) {
    if (entry.is_regular_file() && isModel(entry.path())) {
      names.push_back(fs::relative(entry.path(), kModels).string());
    }
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::optional<std::string> bytesOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) {
    return std::nullopt;
  }
  return std::string(std::istreambuf_iterator<char>(stream), {});
}

/// Faces of points in single precision, of which equal ones are one: what both readers must agree
/// on.
class Faces {
 public:
  void add(const std::vector<std::array<double, 3>>& corners) {
    std::vector<std::uint32_t> numbers;
    for (const auto& [x, y, z] : corners) {
      const auto single = [](double number) {
        return static_cast<double>(static_cast<float>(number));
      };
      numbers.push_back(welder_.number({single(x), single(y), single(z)}));
    }
    addFace(mesh, numbers);
  }

  Mesh mesh;

 private:
  PointWelder welder_{mesh.points, 1000};
};

Mesh facesOf(const Mesh& mesh) {
  Faces faces;
  for (std::size_t face = 0; face < mesh.faceCount(); ++face) {
    std::vector<std::array<double, 3>> corners;
    for (std::size_t corner = mesh.faceBegin(face); corner < mesh.faceEnd(face); ++corner) {
      const Vector point = cornerAt(mesh, corner);
      corners.push_back({point.x, point.y, point.z});
    }
    faces.add(corners);
  }
  return std::move(faces.mesh);
}

void addFacesOf(const aiScene& scene, const aiNode& node, const aiMatrix4x4& outer, Faces& faces) {
  const aiMatrix4x4 transform = outer * node.mTransformation;
  for (unsigned i = 0; i < node.mNumMeshes; ++i) {
    const aiMesh& mesh = *scene.mMeshes[node.mMeshes[i]];
    for (unsigned f = 0; f < mesh.mNumFaces; ++f) {
      std::vector<std::array<double, 3>> corners;
      for (unsigned c = 0; c < mesh.mFaces[f].mNumIndices; ++c) {
        const aiVector3D point = transform * mesh.mVertices[mesh.mFaces[f].mIndices[c]];
        corners.push_back({point.x, point.y, point.z});
      }
      if (corners.size() >= 3) {
        faces.add(corners);
      }
    }
  }
  for (unsigned i = 0; i < node.mNumChildren; ++i) {
    addFacesOf(scene, *node.mChildren[i], transform, faces);
  }
}

/// What assimp reads; nothing where it refuses.
std::optional<Mesh> readByAssimp(const fs::path& file) {
  Assimp::Importer importer;
  const aiScene* const scene = importer.ReadFile(file.string(), 0);
  if (!scene || !scene->mRootNode) {
    return std::nullopt;
  }
  Faces faces;
  addFacesOf(*scene, *scene->mRootNode, aiMatrix4x4(), faces);
  return std::move(faces.mesh);
}

/// What we read, or what we say where we refuse.
std::variant<Mesh, std::string> readByUs(const fs::path& file) {
  try {
    return readMesh(bytesOf(file).value(),
                    [&](std::string_view name) { return bytesOf(file.parent_path() / name); });
  } catch (const MeshFileError& error) {
    return error.what();
  }
}

void expectNear(double ours, double theirs, double scale, const char* what) {
  EXPECT_LE(std::abs(ours - theirs), 1e-5 * scale) << what << ": " << ours << ", " << theirs;
}

void expectSameFaces(const Mesh& ours, const Mesh& theirs) {
  EXPECT_EQ(ours.faceCount(), theirs.faceCount());
  EXPECT_EQ(ours.pointCount(), theirs.pointCount());
  const std::optional<Box3> box = boundsOf(ours);
  const std::optional<Box3> theirBox = boundsOf(theirs);
  ASSERT_EQ(box.has_value(), theirBox.has_value());
  if (!box) {
    return;
  }
  const double size = 2 * box->halfDiagonal();
  expectNear(box->xMin, theirBox->xMin, size, "xMin");
  expectNear(box->xMax, theirBox->xMax, size, "xMax");
  expectNear(box->yMin, theirBox->yMin, size, "yMin");
  expectNear(box->yMax, theirBox->yMax, size, "yMax");
  expectNear(box->zMin, theirBox->zMin, size, "zMin");
  expectNear(box->zMax, theirBox->zMax, size, "zMax");
  const double area = areaOf(theirs, Triangulation(theirs));
  EXPECT_GT(area, 0);
  expectNear(areaOf(ours, Triangulation(ours)), area, area, "area");
  expectNear(volumeOf(ours, Triangulation(ours)), volumeOf(theirs, Triangulation(theirs)),
             size * area, "volume");
}

class AssimpModels : public testing::TestWithParam<std::string> {};

TEST_P(AssimpModels, areReadAlike) {
  const std::variant<Mesh, std::string> ours = readByUs(kModels / GetParam());
  const auto refused = refusals().find(GetParam());
  if (const auto* const message = std::get_if<std::string>(&ours)) {
    EXPECT_EQ(*message, refused == refusals().end() ? "" : refused->second);
    return;
  }
  EXPECT_EQ(refused, refusals().end()) << "it is read";
  const std::optional<Mesh> theirs = readByAssimp(kModels / GetParam());
  ASSERT_TRUE(theirs);
  expectSameFaces(facesOf(std::get<Mesh>(ours)), *theirs);
}

INSTANTIATE_TEST_SUITE_P(All, AssimpModels, testing::ValuesIn(models()));

TEST(AssimpFolder, isThere) { EXPECT_GE(models().size(), 40u); }

}  // namespace
}  // namespace zyn
