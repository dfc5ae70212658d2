#pragma once

#include <optional>
#include <span>

#include "mesh/Mesh.h"

namespace zyn::viewer {

/// A line of sight: points origin + t * direction for every t, negative ones included.
struct Ray {
  mesh::Vector origin;
  mesh::Vector direction;
};

/// Where the ray first meets one of the triangles, from either side; none where it meets none.
std::optional<mesh::Vector> firstHit(const Ray& ray, std::span<const mesh::Triangle> triangles);

}  // namespace zyn::viewer
