#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "model/Mesh.h"

namespace zyn {

/// An edge of a mesh and two of the faces that meet there. One with more faces stands there once
/// for each two of them, one after the other.
struct MeshEdge {
  static constexpr std::uint32_t kNoFace = 0xFFFFFFFF;

  std::uint32_t from = 0;  ///< the points at its ends, the lower number first
  std::uint32_t to = 0;
  std::uint32_t face = 0;
  std::uint32_t otherFace = kNoFace;  ///< none at a boundary

  bool hasEndsOf(const MeshEdge& other) const { return from == other.from && to == other.to; }
};

/// Sine of the angle, a degree and a half, below which a face is seen edge-on.
constexpr double kEdgeOn = 0.026;

/// The edges of all faces that are not degenerate, by the numbers of their points.
std::vector<MeshEdge> meshEdges(const Mesh& mesh);

/// Whether every edge lies in exactly two faces, which run through it in opposite directions, and
/// there is one. Degenerate faces count for nothing.
bool isClosed(const Mesh& mesh);

/// The points at the ends of chosen edges, two each, every edge once. Wherever several meet at
/// least one begins: OpenGL leaves out the last pixel of a line.
std::vector<std::uint32_t> allEdges(const std::vector<MeshEdge>& edges);

/// Those where faces meet at more than `angle` degrees, and boundaries.
std::vector<std::uint32_t> featureEdges(const Mesh& mesh, const std::vector<MeshEdge>& edges,
                                        double angle);

/// Those that part what faces the viewer from what does not, or only by `kEdgeOn`: the far edge of
/// so narrow a face would be hidden by its neighbours. `eye`: where the viewer is, as x, y, z and
/// w; w = 0 is a direction towards him.
std::vector<std::uint32_t> silhouetteEdges(const Mesh& mesh, const std::vector<MeshEdge>& edges,
                                           const std::array<double, 4>& eye);

}  // namespace zyn
