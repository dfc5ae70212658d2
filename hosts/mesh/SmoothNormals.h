#pragma once

#include "mesh/Mesh.h"

namespace zyn::mesh {

/// Gives every corner the mean normal of the facets that meet there and differ from its own by
/// less than `angle` degrees, weighted by area, so that a curved surface looks round.
void smoothNormals(Mesh& mesh, double angle);

}  // namespace zyn::mesh
