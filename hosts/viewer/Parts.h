#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace zyn::viewer {

/// Numbers of points, of faces and of corners as the component's arrays have them.
using Numbers = std::vector<std::int32_t>;

/// The faces of a mesh: how many corners each has, and the numbers of their points, face after
/// face.
struct Faces {
  Numbers counts;
  Numbers corners;
};

/// The faces from an array that has for each the number of its corners, then their points.
Faces facesOf(std::span<const std::int32_t> countsAndCorners);

/// Where the corners of each face begin, and behind the last one where they end.
Numbers cornerStarts(const Faces& faces);

/// A part of a model: numbers of faces, ascending.
using Part = Numbers;

/// The faces of each group; `groups` has the number of its group for every face. In the order of
/// the numbers; groups without faces are no parts.
std::vector<Part> partsOfGroups(std::span<const std::int32_t> groups);

/// The pieces of a mesh: faces belong together when a chain of shared points joins them. The
/// largest piece comes first; among equals the one whose first face comes first in the mesh.
std::vector<Part> connectedParts(const Faces& faces, std::size_t pointCount);

}  // namespace zyn::viewer
