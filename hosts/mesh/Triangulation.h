#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "mesh/Vector.h"

namespace zyn::mesh {

/// Most corners that a polygon with a re-entrant corner may have.
inline constexpr std::size_t kMostConcaveCorners = 10000;

/// Cuts a polygon of at least three corners, in space but about flat, into corners - 2 triangles
/// of the same turning direction, given as corner indices. Convex ones become fans, others lose ear
/// after ear. Empty for a concave polygon of more than kMostConcaveCorners.
std::vector<std::array<std::size_t, 3>> triangulate(std::span<const Vector> corners);

}  // namespace zyn::mesh
