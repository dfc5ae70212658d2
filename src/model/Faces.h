#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "model/Vector.h"

namespace zyn {

/// The normal of a triangle, one long; all 0 for one that is degenerate: of no height, as far as
/// its coordinates tell.
Vector triangleNormal(const Vector& a, const Vector& b, const Vector& c);

/// Height of a face that counts as none, of its length.
inline constexpr double kFlat = 1e-12;

/// Squared lengths within which squares neither overflow nor lose digits.
inline constexpr double kLeastSquare = 1e-140;
inline constexpr double kMostSquare = 1e140;

/// Whether a triangle is not degenerate: exactly where `hasArea` cannot decide at once.
bool hasAreaExactly(const Vector& a, const Vector& b, const Vector& c);

/// Whether a triangle is not degenerate.
inline bool hasArea(const Vector& a, const Vector& b, const Vector& c) {
  const Vector u = b - a;
  const Vector v = c - a;
  const Vector normal = cross(u, v);
  const double norm = dot(normal, normal);
  const double square = 2 * (dot(u, u) + dot(v, v));  // at least that of the longest side
  return (norm > kFlat * kFlat * square * square && norm > kLeastSquare * kLeastSquare) ||
         hasAreaExactly(a, b, c);
}

/// The normal of a face, one long, of the plane that fits a polygon best; all 0 for a degenerate
/// face, which encloses no area.
Vector faceNormal(const Mesh& mesh, std::size_t face);

/// Of every face.
std::vector<Vector> faceNormals(const Mesh& mesh);

inline bool isDegenerate(const Vector& normal) { return normal == Vector{}; }

/// Of every face its normal, and the angles within it at every corner, in radians; these are 0 in
/// degenerate faces.
struct FaceShapes {
  explicit FaceShapes(const Mesh& mesh);

  std::vector<Vector> normals;
  std::vector<double> angles;
};

/// Walks around faces by their corners.
class FaceCorners {
 public:
  explicit FaceCorners(const Mesh& mesh);

  std::uint32_t faceOf(std::uint32_t corner) const {
    return faces_.empty() ? corner / 3 : faces_[corner];
  }
  std::uint32_t next(std::uint32_t corner) const {
    if (faces_.empty()) {
      return corner % 3 == 2 ? corner - 2 : corner + 1;
    }
    const std::uint32_t face = faces_[corner];
    return corner + 1 == mesh_.faceEnd(face) ? static_cast<std::uint32_t>(mesh_.faceBegin(face))
                                             : corner + 1;
  }
  std::uint32_t previous(std::uint32_t corner) const {
    if (faces_.empty()) {
      return corner % 3 == 0 ? corner + 2 : corner - 1;
    }
    const std::uint32_t face = faces_[corner];
    return static_cast<std::uint32_t>(corner == mesh_.faceBegin(face) ? mesh_.faceEnd(face)
                                                                      : corner) -
           1;
  }

 private:
  const Mesh& mesh_;
  std::vector<std::uint32_t> faces_;  ///< of each corner; empty where all faces are triangles
};

/// The corners of each point, in ascending order.
class PointCorners {
 public:
  explicit PointCorners(const Mesh& mesh);

  const std::uint32_t* begin(std::size_t point) const { return corners_.data() + ends_[point]; }
  const std::uint32_t* end(std::size_t point) const { return corners_.data() + ends_[point + 1]; }

 private:
  std::vector<std::uint32_t> ends_;
  std::vector<std::uint32_t> corners_;
};

}  // namespace zyn
