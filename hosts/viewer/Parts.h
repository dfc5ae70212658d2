#pragma once

#include <cstdint>
#include <vector>

#include "mesh/Mesh.h"

namespace zyn::viewer {

/// A piece of a model that hangs together: indices into Mesh::triangles, ascending.
using Part = std::vector<std::uint32_t>;

/// The pieces of a mesh: facets belong together when a chain of shared corners joins them. The
/// largest piece comes first; among equals the one whose first facet comes first in the mesh.
std::vector<Part> connectedParts(const mesh::Mesh& mesh);

}  // namespace zyn::viewer
