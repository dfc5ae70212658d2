#pragma once

#include <algorithm>
#include <cstdint>

#include "objects/mesh/MeshModel.h"
#include "objects/scale/ColourScale.h"

namespace zyn {

/// The colours of a mesh whose points have values.
struct MeshScale {
  MeshScale(const ColourScale& from, std::uint64_t number, const MeshModel& model)
      : scale(from), texels(from), revision(number), meshRevision(model.revision()) {
    for (const double value : model.mesh().values) {
      hasAbsent = hasAbsent || !scale.placeOf(value);
    }
  }

  ColourScale scale;
  ScaleTexels texels;
  std::uint64_t revision;  ///< of the scale and of the mesh for which it was made
  std::uint64_t meshRevision;
  bool hasAbsent = false;  ///< it cannot show all values

  /// A face with such a corner has no colour of the scale at all.
  bool isAbsent(const Mesh& mesh, std::size_t face) const {
    bool isAny = false;
    for (std::size_t i = mesh.faceBegin(face); hasAbsent && i < mesh.faceEnd(face); ++i) {
      isAny = isAny || !scale.placeOf(mesh.values[mesh.corners[i]]);
    }
    return isAny;
  }
  /// The row of the texture in which its corners lie.
  std::int32_t rowOf(const Mesh& mesh, std::size_t face) const {
    if (texels.rows() == 1) {
      return 0;
    }
    double greatest = 0;
    for (std::size_t i = mesh.faceBegin(face); i < mesh.faceEnd(face); ++i) {
      greatest = std::max(greatest, mesh.values[mesh.corners[i]]);
    }
    return texels.rowFor(greatest);
  }
};

}  // namespace zyn
