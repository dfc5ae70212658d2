#include "viewer/Ray.h"

namespace zyn::viewer {

namespace {

using mesh::Vector;

/// The ray's parameter at the triangle, by T. Moeller and B. Trumbore, "Fast, minimum storage
/// ray-triangle intersection", Journal of Graphics Tools 2 (1997).
std::optional<double> meet(const Ray& ray, const mesh::Triangle& triangle) {
  const auto& [a, b, c] = triangle.vertices;
  const Vector edge1 = b - a;
  const Vector edge2 = c - a;
  const Vector p = cross(ray.direction, edge2);
  const double determinant = dot(edge1, p);
  if (determinant == 0.0) {
    return std::nullopt;
  }
  const Vector s = ray.origin - a;
  const double u = dot(s, p) / determinant;
  const Vector q = cross(s, edge1);
  const double v = dot(ray.direction, q) / determinant;
  if (!(u >= 0.0 && v >= 0.0 && u + v <= 1.0)) {
    return std::nullopt;
  }
  return dot(edge2, q) / determinant;
}

}  // namespace

std::optional<Vector> firstHit(const Ray& ray, std::span<const mesh::Triangle> triangles) {
  std::optional<double> first;
  for (const mesh::Triangle& triangle : triangles) {
    const std::optional<double> t = meet(ray, triangle);
    if (t && (!first || *t < *first)) {
      first = t;
    }
  }
  return first ? std::optional(ray.origin + ray.direction * *first) : std::nullopt;
}

}  // namespace zyn::viewer
