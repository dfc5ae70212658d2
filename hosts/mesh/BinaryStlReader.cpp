#include "mesh/BinaryStlReader.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <string>

#include "mesh/MeshError.h"

namespace zyn::mesh {

namespace {

constexpr std::size_t kHeaderSize = 84;
constexpr std::size_t kFacetSize = 50;

std::uint32_t readUnsigned(const char* at) {
  std::uint32_t value = 0;
  for (int i = 3; i >= 0; --i) {
    value = value << 8 | static_cast<unsigned char>(at[i]);
  }
  return value;
}

Vector readVector(const char* at) {
  const auto number = [at](int index) {
    return std::bit_cast<float>(readUnsigned(at + 4 * index));
  };
  return {number(0), number(1), number(2)};
}

std::uint64_t triangleCount(std::string_view bytes) { return readUnsigned(bytes.data() + 80); }

std::uint64_t neededSize(std::uint64_t count) { return kHeaderSize + kFacetSize * count; }

Triangle readFacet(std::string_view bytes, std::size_t at) {
  Triangle triangle;
  for (std::size_t i = 0; i < 3; ++i) {
    const std::size_t position = at + 12 * (i + 1);
    triangle.vertices[i] = readVector(bytes.data() + position);
    if (!isFinite(triangle.vertices[i])) {
      throw MeshError("byte " + std::to_string(position) + ": a coordinate is not finite");
    }
  }
  const auto& [a, b, c] = triangle.vertices;
  const Vector normal = chosenNormal(readVector(bytes.data() + at), facetNormal(a, b, c));
  std::fill_n(triangle.normals, 3, normal);
  return triangle;
}

}  // namespace

bool hasBinaryStlSize(std::string_view bytes) {
  return bytes.size() >= kHeaderSize && bytes.size() == neededSize(triangleCount(bytes));
}

Mesh readBinaryStl(std::string_view bytes, const Progress& progress) {
  const std::string has = std::to_string(bytes.size());
  if (bytes.size() < kHeaderSize) {
    throw MeshError("not a whole binary STL: " + has + " bytes, less than its header");
  }
  const std::uint64_t count = triangleCount(bytes);
  if (!hasBinaryStlSize(bytes)) {
    throw MeshError("byte 80: not a whole binary STL: " + std::to_string(count) +
                    " triangles need " + std::to_string(neededSize(count)) + " bytes, but it has " +
                    has);
  }
  ProgressMeter meter(progress, bytes.size());
  Mesh mesh;
  mesh.triangles.reserve(static_cast<std::size_t>(count));
  for (std::size_t at = kHeaderSize; at < bytes.size(); at += kFacetSize) {
    mesh.triangles.push_back(readFacet(bytes, at));
    meter.reached(at);
  }
  return mesh;
}

}  // namespace zyn::mesh
