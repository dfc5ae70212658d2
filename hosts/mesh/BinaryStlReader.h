#pragma once

#include <cstddef>
#include <string_view>

#include "mesh/Mesh.h"
#include "mesh/Progress.h"

namespace zyn::mesh {

/// Whether the file's size is exactly what its own triangle count asks for.
bool hasBinaryStlSize(std::string_view bytes);

/// Reads a binary STL: 80 bytes of comment, a 32-bit count, 50 bytes a facet, all little-endian.
/// Throws MeshError where the size does not fit the count or a coordinate is not finite.
Mesh readBinaryStl(std::string_view bytes, const Progress& progress);

}  // namespace zyn::mesh
