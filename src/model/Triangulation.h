#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "model/Faces.h"
#include "model/Mesh.h"

namespace zyn {

/// The triangles that fill the faces of a mesh, in the order of the faces. A degenerate face has
/// none. For a mesh whose faces all are triangles nothing is kept.
class Triangulation {
 public:
  Triangulation() = default;
  explicit Triangulation(const Mesh& mesh);

  /// The corners of a triangle, by their numbers in the mesh.
  using Triangle = std::array<std::uint32_t, 3>;

  /// Calls `visit` for the triangles of a face.
  template <class Visit>
  void forEach(const Mesh& mesh, std::size_t face, Visit visit) const {
    if (mesh.faceEnds.empty()) {
      const auto first = static_cast<std::uint32_t>(3 * face);
      if (hasArea(cornerAt(mesh, first), cornerAt(mesh, first + 1), cornerAt(mesh, first + 2))) {
        visit(Triangle{first, first + 1, first + 2});
      }
      return;
    }
    for (std::size_t i = face == 0 ? 0 : ends_[face - 1]; i < ends_[face]; ++i) {
      visit(triangles_[i]);
    }
  }

 private:
  std::vector<Triangle> triangles_;
  std::vector<std::uint32_t> ends_;  ///< where the triangles of the next face begin
};

}  // namespace zyn
