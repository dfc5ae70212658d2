#pragma once

#include <wrl/client.h>

#include <optional>

#include "ZYNVUE.h"
#include "common/Vector.h"
#include "zynshot/PictureOptions.h"

namespace zyn::shot {

/// A mesh as pictures show it.
class Scene {
 public:
  /// `smoothAngle`: degrees up to which edges are rounded off; none: as the file has it, else flat.
  Scene(const Microsoft::WRL::ComPtr<IZYNGLMaillage>& mesh, std::optional<double> smoothAngle);

  const host::Bounds& bounds() const { return bounds_; }

  /// Makes the mesh the draw list of `context`.
  void show(IZYN3DGLBitmapContext& context, const PictureOptions& picture);

 private:
  Microsoft::WRL::ComPtr<IZYNGLMaillage> meshOf(const PictureOptions& picture);
  Microsoft::WRL::ComPtr<IZYNGLMaillage> sortedAlong(IZYNGLMaillage& mesh,
                                                     const host::Vector& direction) const;

  Microsoft::WRL::ComPtr<IZYNGLMaillage> mesh_;   ///< in the colours of the file
  Microsoft::WRL::ComPtr<IZYNGLMaillage> plain_;  ///< without them; made when it is needed
  Microsoft::WRL::ComPtr<IZYNGroupe> group_;      ///< what is drawn
  host::Bounds bounds_;
};

}  // namespace zyn::shot
