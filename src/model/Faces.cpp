#include "model/Faces.h"

#include <numbers>

namespace zyn {

namespace {

/// Whether a face has a height; `norm` is the square of twice its area, `square` that of its
/// largest extent.
bool hasHeight(double norm, double square) { return norm > kFlat * kFlat * square * square; }

/// `normal` as long as twice the area of a face, made one long; `square` is that of the face's
/// largest extent.
Vector unitOrNone(const Vector& normal, double square) {
  const double norm = dot(normal, normal);
  return hasHeight(norm, square) ? normal * (1 / std::sqrt(norm)) : Vector{};
}

bool isTame(double square) { return square > kLeastSquare && square < kMostSquare; }

/// The normal of a polygon whose corners are given by number (Newell's method), scaled.
template <class CornerOf>
Vector polygonNormal(std::size_t count, double scale, CornerOf cornerOf) {
  Vector sum;
  double square = 0;
  Vector before = (cornerOf(count - 1) - cornerOf(0)) * scale;
  for (std::size_t i = 0; i < count; ++i) {
    const Vector here = (cornerOf(i) - cornerOf(0)) * scale;
    sum = sum + cross(before, here);
    square = std::max(square, dot(here, here));
    before = here;
  }
  return isTame(square) ? unitOrNone(sum, square) : Vector{};
}

/// The factor by which a face of any size becomes about one large; 0 where it has no size.
template <class CornerOf>
double tamingScale(std::size_t count, CornerOf cornerOf) {
  double extent = 0;
  for (std::size_t i = 1; i < count; ++i) {
    extent = std::max(extent, largestComponent(cornerOf(i) - cornerOf(0)));
  }
  const double scale = 1 / extent;
  return std::isfinite(scale) ? scale : 0;
}

/// Of a triangle, in a scale in which they can be multiplied.
struct TriangleSides {
  TriangleSides(const Vector& a, const Vector& b, const Vector& c)
      : u(b - a), v(c - a), w(c - b), square(largestSquare()) {
    if (!isTame(square)) {
      const double scale = 1 / std::max(largestComponent(u), largestComponent(v));
      const double used = std::isfinite(scale) ? scale : 0;
      u = u * used;
      v = v * used;
      w = w * used;
      square = largestSquare();
    }
  }

  double largestSquare() const { return std::max({dot(u, u), dot(v, v), dot(w, w)}); }

  Vector u;  ///< from a to b, from a to c, from b to c
  Vector v;
  Vector w;
  double square;  ///< of the longest
};

/// Of two vectors, 0 to pi, from their products: exact to the last bits and faster than
/// std::atan2.
double angleBetween(double sine, double cosine) {
  using std::numbers::pi;
  // The nearest multiple of 45 degrees, and the tangent of what is left: within 0.4143 of 0.
  constexpr double kTangentOfEighth = 0.41421356237309503;
  const double across = std::abs(cosine);
  const bool isFlat = sine <= kTangentOfEighth * across;
  const bool isSteep = across <= kTangentOfEighth * sine;
  const double opposite = isFlat ? sine : isSteep ? -across : sine - across;
  const double adjacent = isFlat ? across : isSteep ? sine : sine + across;
  const double nearest = isFlat ? 0 : isSteep ? pi / 2 : pi / 4;
  const double tangent = adjacent > 0 ? opposite / adjacent : 0;
  // The rational approximation of the arcus tangent from the Cephes library.
  const double z = tangent * tangent;
  const double p = (((-8.750608600031904122785e-1 * z - 1.615753718733365076637e1) * z -
                     7.500855792314704667340e1) *
                        z -
                    1.228866684490136173410e2) *
                       z -
                   6.485021904942025371773e1;
  const double q = ((((z + 2.485846490142306297962e1) * z + 1.650270098316988542046e2) * z +
                     4.328810604912902668951e2) *
                        z +
                    4.853903996359136964868e2) *
                       z +
                   1.945506571482613964425e2;
  const double angle = nearest + (tangent + tangent * z * p / q);
  return cosine < 0 ? pi - angle : angle;
}

Vector measureTriangle(const Mesh& mesh, std::size_t begin, double* angles) {
  const TriangleSides sides(cornerAt(mesh, begin), cornerAt(mesh, begin + 1),
                            cornerAt(mesh, begin + 2));
  const auto& [u, v, w, square] = sides;
  const Vector across = cross(u, v);
  const Vector normal = unitOrNone(across, square);
  if (!isDegenerate(normal)) {
    const double sine = dot(across, normal);
    angles[0] = angleBetween(sine, dot(u, v));
    angles[1] = angleBetween(sine, -dot(u, w));
    angles[2] = std::max(0.0, std::numbers::pi - angles[0] - angles[1]);
  }
  return normal;
}

Vector measurePolygon(const Mesh& mesh, std::size_t face, double* angles) {
  const std::size_t begin = mesh.faceBegin(face);
  const std::size_t count = mesh.faceEnd(face) - begin;
  const Vector normal = faceNormal(mesh, face);
  for (std::size_t i = 0; i < count && !isDegenerate(normal); ++i) {
    const TriangleSides sides(cornerAt(mesh, begin + i), cornerAt(mesh, begin + (i + 1) % count),
                              cornerAt(mesh, begin + (i + count - 1) % count));
    const double sine = dot(cross(sides.u, sides.v), normal);
    const double angle = angleBetween(std::abs(sine), dot(sides.u, sides.v));
    angles[i] = sine < 0 ? 2 * std::numbers::pi - angle : angle;
  }
  return normal;
}

}  // namespace

Vector triangleNormal(const Vector& a, const Vector& b, const Vector& c) {
  const TriangleSides sides(a, b, c);
  return unitOrNone(cross(sides.u, sides.v), sides.square);
}

bool hasAreaExactly(const Vector& a, const Vector& b, const Vector& c) {
  const TriangleSides sides(a, b, c);
  const Vector normal = cross(sides.u, sides.v);
  return hasHeight(dot(normal, normal), sides.square);
}

Vector faceNormal(const Mesh& mesh, std::size_t face) {
  const std::size_t begin = mesh.faceBegin(face);
  const std::size_t count = mesh.faceEnd(face) - begin;
  const auto cornerOf = [&](std::size_t i) { return cornerAt(mesh, begin + i); };
  if (count == 3) {
    return triangleNormal(cornerOf(0), cornerOf(1), cornerOf(2));
  }
  const Vector normal = polygonNormal(count, 1, cornerOf);
  return isDegenerate(normal) ? polygonNormal(count, tamingScale(count, cornerOf), cornerOf)
                              : normal;
}

std::vector<Vector> faceNormals(const Mesh& mesh) {
  std::vector<Vector> normals;
  normals.reserve(mesh.faceCount());
  for (std::size_t face = 0; face < mesh.faceCount(); ++face) {
    normals.push_back(faceNormal(mesh, face));
  }
  return normals;
}

FaceShapes::FaceShapes(const Mesh& mesh) : normals(mesh.faceCount()), angles(mesh.corners.size()) {
  for (std::size_t face = 0; face < normals.size(); ++face) {
    const std::size_t begin = mesh.faceBegin(face);
    normals[face] = mesh.faceEnd(face) - begin == 3 ? measureTriangle(mesh, begin, &angles[begin])
                                                    : measurePolygon(mesh, face, &angles[begin]);
  }
}

FaceCorners::FaceCorners(const Mesh& mesh) : mesh_(mesh) {
  if (mesh.faceEnds.empty()) {
    return;
  }
  faces_.reserve(mesh.corners.size());
  for (std::size_t face = 0; face < mesh.faceCount(); ++face) {
    faces_.resize(mesh.faceEnd(face), static_cast<std::uint32_t>(face));
  }
}

PointCorners::PointCorners(const Mesh& mesh)
    : ends_(mesh.pointCount() + 1), corners_(mesh.corners.size()) {
  for (const std::uint32_t point : mesh.corners) {
    ++ends_[point];
  }
  std::uint32_t end = 0;
  for (std::uint32_t& count : ends_) {
    end += count;
    count = end;
  }
  // From behind, each list is filled from its end: what were ends are then beginnings.
  for (std::size_t corner = mesh.corners.size(); corner-- > 0;) {
    corners_[--ends_[mesh.corners[corner]]] = static_cast<std::uint32_t>(corner);
  }
}

}  // namespace zyn
