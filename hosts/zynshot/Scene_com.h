#pragma once

#include <wrl/client.h>

#include <optional>
#include <vector>

#include "ZYNVUE.h"
#include "mesh/Mesh.h"
#include "mesh/Progress.h"
#include "zynshot/PictureOptions.h"

namespace zyn::shot {

/// A mesh as the component's objects: a triangle for each facet.
class Scene {
 public:
  explicit Scene(const mesh::Mesh& mesh, const mesh::Progress& progress);

  const mesh::Bounds& bounds() const { return bounds_; }

  /// Colours all triangles.
  void paint(const Appearance& appearance);

  /// Makes the triangles the draw list of `context`. Translucent ones are ordered along
  /// `direction`, the farthest first, since what lies behind must be drawn before what it shines
  /// through.
  void show(IZYN3DGLBitmapContext& context, const PictureOptions& picture);

 private:
  struct Facet {
    Microsoft::WRL::ComPtr<IZYNGLTriangle> object;
    mesh::Vector centre;
  };

  void sortAlong(const mesh::Vector& direction);

  std::vector<Facet> facets_;
  mesh::Bounds bounds_;
  std::optional<Appearance> painted_;
};

}  // namespace zyn::shot
