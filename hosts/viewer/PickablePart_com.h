#pragma once

#include <memory>
#include <span>

#include "common/SceneObject_com.h"
#include "mesh/Mesh.h"

namespace zyn::viewer {

/// A part of a model as the view's selection list takes it: invisible, but in a selection pass it
/// draws its facets under its name.
class PickablePart final : public host::SceneObject {
 public:
  /// `triangles` are among those of `mesh`, which is kept.
  PickablePart(UINT name, std::shared_ptr<const mesh::Mesh> mesh,
               std::span<const mesh::Triangle> triangles)
      : name_(name), mesh_(std::move(mesh)), triangles_(triangles) {}

  STDMETHODIMP Draw3D(int mode) noexcept override;
  STDMETHODIMP GetBox3D(IDispatch** box) noexcept override;

 private:
  UINT name_;
  std::shared_ptr<const mesh::Mesh> mesh_;
  std::span<const mesh::Triangle> triangles_;
};

}  // namespace zyn::viewer
