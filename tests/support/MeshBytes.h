#pragma once

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstdint>
#include <string>
#include <vector>

#include "mesh/MeshError.h"
#include "mesh/MeshReader.h"

namespace zyn::mesh {

/// The bytes of a binary STL with a facet for each twelve floats (normal, three vertices).
inline std::string binaryStl(const std::vector<std::array<float, 12>>& facets,
                             const std::string& comment = "made by a test") {
  std::string bytes = comment;
  bytes.resize(80, '\0');
  const auto append = [&bytes](std::uint32_t value) {
    for (int i = 0; i < 4; ++i) {
      bytes += static_cast<char>(value >> (8 * i) & 0xFF);
    }
  };
  append(static_cast<std::uint32_t>(facets.size()));
  for (const auto& facet : facets) {
    for (const float number : facet) {
      append(std::bit_cast<std::uint32_t>(number));
    }
    bytes += std::string(2, '\0');
  }
  return bytes;
}

/// A facet in the plane z = 0, turning counter-clockwise seen from +z.
inline std::array<float, 12> flatFacet(float nx, float ny, float nz) {
  return {nx, ny, nz, 0, 0, 0, 2, 0, 0, 0, 3, 0};
}

inline std::string asciiFacet(const std::string& normal = "0 0 1") {
  return "facet normal " + normal +
         "\n outer loop\n  vertex 0 0 0\n  vertex 2 0 0\n  vertex 0 3 0\n endloop\nendfacet\n";
}

/// The message with which a model is refused, empty when it is accepted.
inline std::string refusal(const std::string& bytes) {
  try {
    parseMesh(bytes);
  } catch (const MeshError& error) {
    return error.what();
  }
  return {};
}

inline void expectVector(const Vector& actual, double x, double y, double z) {
  EXPECT_NEAR(actual.x, x, 1e-12);
  EXPECT_NEAR(actual.y, y, 1e-12);
  EXPECT_NEAR(actual.z, z, 1e-12);
}

}  // namespace zyn::mesh
