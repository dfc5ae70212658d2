#pragma once

#include <string_view>

#include "core/Progress.h"
#include "model/Mesh.h"
#include "model/files/ByteWriter.h"

namespace zyn {

/// Whether the bytes begin as a PLY does.
bool isPly(std::string_view bytes);

/// Reads a PLY, as text or binary of either byte order: of points x, y, z, normals nx, ny, nz,
/// colours (red, green, blue, alpha, also with diffuse_ before) and `value`, of faces
/// vertex_indices (or vertex_index), colours and `name`. Numbers may be of any type; other
/// properties and elements are passed over. Throws MeshFileError, with the line or byte.
Mesh readPly(std::string_view bytes, const Progress& progress);

/// Writes a binary PLY: coordinates, normals of points and values in double precision; colours as
/// bytes where that loses nothing, else in single precision; names of faces. Normals of corners and
/// groups are not held.
void writePly(const Mesh& mesh, const ByteSink& sink, const Progress& progress);

}  // namespace zyn
