#pragma once

#include <span>
#include <vector>

#include "mesh/Vector.h"

namespace zyn::mesh {

/// One facet: counter-clockwise vertices seen from outside, and a unit normal at each.
struct Triangle {
  Vector vertices[3];
  Vector normals[3];
};

/// Smallest axis-parallel box around a mesh.
struct Bounds {
  Vector minimum;
  Vector maximum;

  Vector centre() const { return (minimum + maximum) * 0.5; }
  Vector extents() const { return maximum - minimum; }
};

/// The box around some facets; all zero for none.
Bounds boundsOf(std::span<const Triangle> triangles);

/// A model as every reader delivers it; never empty when it comes from a reader.
struct Mesh {
  std::vector<Triangle> triangles;

  Bounds bounds() const { return boundsOf(triangles); }
};

/// Unit normal of the plane through three counter-clockwise points, +z where they span none.
Vector facetNormal(const Vector& a, const Vector& b, const Vector& c);

/// The normal that a file gives for a facet, made one long; the facet's own where the file gives
/// none, or one that contradicts the order of its vertices (some exporters turn all normals
/// inward).
Vector chosenNormal(const Vector& given, const Vector& facet);

}  // namespace zyn::mesh
