#pragma once

#include <wrl/client.h>

#include <optional>

#include "ZYNVUE.h"
#include "common/PathObjects_com.h"
#include "common/Vector.h"
#include "zynshot/PictureOptions.h"

namespace zyn::shot {

/// A mesh, a path, or both, as pictures show them.
class Scene {
 public:
  /// `mesh`: null for none. `smoothAngle`: degrees up to which edges are rounded off; none: as the
  /// file has it, else flat.
  Scene(const Microsoft::WRL::ComPtr<IZYNGLMaillage>& mesh, std::optional<double> smoothAngle,
        std::optional<host::PathObjects> path);

  /// Of what pictures are about, without the tool.
  const host::Bounds& bounds() const { return bounds_; }

  /// Gives the path its look, and the tool its place. To be called before the next two.
  void prepare(const PathOptions& options);

  /// Of all that a picture has to show.
  host::Bounds shownBounds(const PathOptions& options) const;

  /// Makes them the draw list of `context`.
  void show(IZYN3DGLBitmapContext& context, const PictureOptions& picture);

 private:
  Microsoft::WRL::ComPtr<IZYNGLMaillage> meshOf(const PictureOptions& picture);
  Microsoft::WRL::ComPtr<IZYNGLMaillage> sortedAlong(IZYNGLMaillage& mesh,
                                                     const host::Vector& direction) const;

  void showMesh(IZYN3DGLBitmapContext& context, const PictureOptions& picture);
  void showPath(IZYN3DGLBitmapContext& context) const;

  Microsoft::WRL::ComPtr<IZYNGLMaillage> mesh_;   ///< in the colours of the file
  Microsoft::WRL::ComPtr<IZYNGLMaillage> plain_;  ///< without them; made when it is needed
  Microsoft::WRL::ComPtr<IZYNGroupe> group_;      ///< what is drawn
  std::optional<host::PathObjects> path_;
  host::Bounds bounds_;
};

}  // namespace zyn::shot
