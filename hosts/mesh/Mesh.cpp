#include "mesh/Mesh.h"

#include <algorithm>

namespace zyn::mesh {

Bounds boundsOf(std::span<const Triangle> triangles) {
  if (triangles.empty()) {
    return {};
  }
  Bounds box{triangles.front().vertices[0], triangles.front().vertices[0]};
  for (const Triangle& triangle : triangles) {
    for (const Vector& v : triangle.vertices) {
      box.minimum = {std::min(box.minimum.x, v.x), std::min(box.minimum.y, v.y),
                     std::min(box.minimum.z, v.z)};
      box.maximum = {std::max(box.maximum.x, v.x), std::max(box.maximum.y, v.y),
                     std::max(box.maximum.z, v.z)};
    }
  }
  return box;
}

Vector facetNormal(const Vector& a, const Vector& b, const Vector& c) {
  // Scaled first: a tiny or huge facet must neither underflow nor overflow in the product.
  const Vector unitZ{0.0, 0.0, 1.0};
  const Vector normal = cross(normalised(b - a, {}), normalised(c - a, {}));
  return normalised(normal, unitZ);
}

Vector chosenNormal(const Vector& given, const Vector& facet) {
  const Vector unit = normalised(given, facet);
  return dot(unit, facet) > 0.0 ? unit : facet;
}

}  // namespace zyn::mesh
