#pragma once

#include <string_view>

#include "mesh/Mesh.h"
#include "mesh/Progress.h"

namespace zyn::mesh {

/// Reads the faces of a Wavefront OBJ: v, vn and f, the latter with polygons, indices counted from
/// the end and the forms v, v/vt, v//vn, v/vt/vn. Everything else in the file is passed over.
/// Throws MeshError, with the line, for malformed v, vn and f lines.
Mesh readObj(std::string_view text, const Progress& progress);

}  // namespace zyn::mesh
