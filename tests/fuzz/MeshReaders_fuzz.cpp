#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "mesh/AsciiStlReader.h"
#include "mesh/BinaryStlReader.h"
#include "mesh/MeshError.h"
#include "mesh/MeshReader.h"
#include "mesh/ObjReader.h"
#include "mesh/SmoothNormals.h"

namespace {

using zyn::mesh::Mesh;
using zyn::mesh::Progress;

Mesh read(std::uint8_t reader, std::string_view bytes) {
  switch (reader % 4) {
    case 0:
      return zyn::mesh::readAsciiStl(bytes, Progress());
    case 1:
      return zyn::mesh::readBinaryStl(bytes, Progress());
    case 2:
      return zyn::mesh::readObj(bytes, Progress());
    default:
      return zyn::mesh::parseMesh(bytes);
  }
}

/// Every mesh that a reader lets through has finite vertices and unit normals.
void check(const Mesh& mesh) {
  for (const zyn::mesh::Triangle& triangle : mesh.triangles) {
    for (std::size_t i = 0; i < 3; ++i) {
      if (!isFinite(triangle.vertices[i]) ||
          !(std::abs(length(triangle.normals[i]) - 1.0) < 1e-6)) {
        std::abort();
      }
    }
  }
}

}  // namespace

/// The first byte chooses the reader, the rest is the model.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    return 0;
  }
  try {
    Mesh mesh = read(data[0], {reinterpret_cast<const char*>(data) + 1, size - 1});
    check(mesh);
    smoothNormals(mesh, 40.0);
    check(mesh);
  } catch (const zyn::mesh::MeshError&) {
    return 0;
  }
  return 0;
}
