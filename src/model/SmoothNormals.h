#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "model/Mesh.h"

namespace zyn {

/// Angles that differ by less, in radians, are equal: coordinates of single precision tell no more.
inline constexpr double kEqualAngle = 1e-6;

/// A normal for each corner, one long, as a smooth surface has it: the mean of the faces in the
/// corner's fan, which are those that lead to it around its point over edges that turn by less than
/// `angle` degrees, each weighted by its angle there. Faces without area count for nothing; what
/// has no normal gets +z.
template <class Real>
std::vector<Real> cornerNormals(const Mesh& mesh, double angle);

/// The same for what has changed since `normals` were made: `count` points from `first` on have
/// moved. The faces at one of whose corners the normal may be another.
std::vector<std::uint32_t> updateCornerNormals(const Mesh& mesh, double angle, std::size_t first,
                                               std::size_t count, std::vector<float>& normals);

/// The faces with a corner at one of `count` points from `first` on.
std::vector<std::uint32_t> facesAtPoints(const Mesh& mesh, std::size_t first, std::size_t count);

}  // namespace zyn
