#pragma once

#include <wrl/client.h>

#include <filesystem>
#include <memory>
#include <span>
#include <vector>

#include "ZYNVUE.h"
#include "mesh/Mesh.h"
#include "mesh/Progress.h"
#include "viewer/PartSelection.h"

namespace zyn::viewer {

/// A model as the component's objects: a triangle for each facet, and for each part an object that
/// can be picked. Parts are numbered from 1, the largest first.
class Model {
 public:
  Model(std::filesystem::path file, const mesh::Mesh& mesh, const mesh::Progress& progress);

  const std::filesystem::path& file() const { return file_; }
  const mesh::Bounds& bounds() const { return bounds_; }
  std::size_t triangleCount() const { return triangles_.size(); }
  int partCount() const { return static_cast<int>(parts_.size()); }

  /// The facets of a part; none for a number that is no part's.
  std::span<const mesh::Triangle> facetsOf(int part) const;

  /// Makes the model the scene of `view` and its parts what can be picked there.
  void show(IZYNVue3D& view, bool outline, const mesh::Progress& progress) const;

  /// Adds the model to the scene of `context`.
  void addTo(IZYN3DGLBitmapContext& context, bool outline) const;

  bool isShown(int part) const { return parts_[static_cast<std::size_t>(part - 1)].shown; }

  /// Takes a part out of what `show` and `addTo` add, or puts it back.
  void setShown(int part, bool shown) { parts_[static_cast<std::size_t>(part - 1)].shown = shown; }

  /// Colours the parts whose state differs from what they show.
  void paint(const PartSelection& selection);

 private:
  /// Facets from `first` on, `count` of them.
  struct PartRange {
    std::size_t first;
    std::size_t count;
    Microsoft::WRL::ComPtr<IDispatch> pickable;
    bool selected = false;
    bool shown = true;
  };

  void addParts(const mesh::Mesh& mesh);
  void paint(int part, bool selected);
  std::span<const Microsoft::WRL::ComPtr<IZYNGLTriangle>> trianglesOf(const PartRange& part) const;

  std::filesystem::path file_;
  mesh::Bounds bounds_;
  std::shared_ptr<const mesh::Mesh> mesh_;                         ///< in the order of the parts
  std::vector<Microsoft::WRL::ComPtr<IZYNGLTriangle>> triangles_;  ///< in the same order
  std::vector<PartRange> parts_;
};

}  // namespace zyn::viewer
