#pragma once

#include <wrl/client.h>

#include <filesystem>
#include <string>
#include <vector>

#include "ZYNVUE.h"
#include "common/Vector.h"
#include "viewer/PartSelection.h"
#include "viewer/Parts.h"

namespace zyn::viewer {

/// A model as the component's objects: for each part a group that holds a mesh. Parts are the
/// groups of the file; where it has none, the pieces that hang together, the largest first. They
/// are numbered from 1.
class Model {
 public:
  Model(std::filesystem::path file, const Microsoft::WRL::ComPtr<IZYNGLMaillage>& mesh);

  const std::filesystem::path& file() const { return file_; }
  const host::Bounds& bounds() const { return bounds_; }
  std::size_t faceCount() const { return faces_.counts.size(); }
  int partCount() const { return static_cast<int>(parts_.size()); }
  const std::string& nameOf(int part) const { return at(part).name; }

  /// Adds the model to the scene of `view` and its parts to what can be picked there, by number of
  /// part and face.
  void addTo(IZYNVue3D& view, bool outline) const;

  bool isShown(int part) const;
  void setShown(int part, bool shown) const;

  /// How the meshes are drawn: a StyleRendu; with edges and points of so many pixels.
  LONG style() const { return style_; }
  void setStyle(LONG style, double strokes);

  /// Shows which parts are selected, whatever colours the file gives them.
  void highlight(const PartSelection& selection);

  /// The corners of a face, by its number in the file; none for a number that is no face's.
  std::vector<host::Vector> cornersOf(std::int32_t face) const;

 private:
  struct ShownPart {
    std::string name;
    Microsoft::WRL::ComPtr<IZYNGLMaillage> mesh;
    Microsoft::WRL::ComPtr<IZYNGroupe> group;
    Microsoft::WRL::ComPtr<IZYNGLMaillage> highlighted;  ///< in the mesh's place while selected
  };

  void readFaces(IZYNGLMaillage& mesh);
  void addParts(const Microsoft::WRL::ComPtr<IZYNGLMaillage>& mesh);
  void addPart(const std::string& name, const Microsoft::WRL::ComPtr<IZYNGLMaillage>& mesh);
  void highlight(ShownPart& part);
  static void unhighlight(ShownPart& part);
  void setStyleOf(IZYNGLMaillage& mesh) const;
  const ShownPart& at(int part) const { return parts_[static_cast<std::size_t>(part - 1)]; }

  std::filesystem::path file_;
  host::Bounds bounds_;
  std::vector<double> points_;
  Faces faces_;
  Numbers starts_;  ///< of the faces' corners
  std::vector<ShownPart> parts_;
  LONG style_ = 0;
  double strokes_ = 1;
};

}  // namespace zyn::viewer
