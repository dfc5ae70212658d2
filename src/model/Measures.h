#pragma once

#include <optional>

#include "core/Box3.h"
#include "model/Mesh.h"
#include "model/Triangulation.h"

namespace zyn {

/// The box around all points, whether faces have them or not; none without points.
std::optional<Box3> boundsOf(const Mesh& mesh);

/// The sum of all faces.
double areaOf(const Mesh& mesh, const Triangulation& triangles);

/// The sum of what lies between each face and the centre of the box, negative where the face turns
/// its back on it: the volume, for a closed mesh.
double volumeOf(const Mesh& mesh, const Triangulation& triangles);

}  // namespace zyn
