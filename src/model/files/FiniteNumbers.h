#pragma once

#include "model/Mesh.h"

namespace zyn {

/// Throws MeshFileError where a coordinate is not finite: no file that holds such is read again.
void requireFinite(const Mesh& mesh);

/// The same for coordinates in single precision.
void requireFiniteSingles(const Mesh& mesh);

}  // namespace zyn
