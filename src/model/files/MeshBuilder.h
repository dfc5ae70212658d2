#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "model/Mesh.h"
#include "model/files/MeshFileError.h"

namespace zyn {

/// Most points and corners of a model: their numbers have 32 bits.
inline constexpr std::size_t kMostMeshElements = UINT32_MAX;

/// The colour of a face whose file gives colours to others only: that of objects without one.
inline constexpr std::array<float, 4> kDefaultColour = {0.5f, 0.5f, 0.5f, 1.0f};

/// Normals that a file does not say fully are calculated instead.
inline void dropUnlessFinite(std::vector<double>& normals) {
  if (!std::all_of(normals.begin(), normals.end(), [](double n) { return std::isfinite(n); })) {
    normals.clear();
  }
}

/// Adds a face; `faceEnds` begins with the first that is no triangle.
inline void addFace(Mesh& mesh, std::span<const std::uint32_t> corners) {
  if (corners.size() > kMostMeshElements - mesh.corners.size()) {
    throw MeshFileError("the model has too many corners");
  }
  if (corners.size() != 3 && mesh.faceEnds.empty()) {
    for (std::size_t end = 3; end <= mesh.corners.size(); end += 3) {
      mesh.faceEnds.push_back(static_cast<std::uint32_t>(end));
    }
  }
  const bool hasEnds = corners.size() != 3 || !mesh.faceEnds.empty();
  mesh.corners.insert(mesh.corners.end(), corners.begin(), corners.end());
  if (hasEnds) {
    mesh.faceEnds.push_back(static_cast<std::uint32_t>(mesh.corners.size()));
  }
}

}  // namespace zyn
