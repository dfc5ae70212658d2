#pragma once

#include <memory>

#include "contract/PickVolume.h"

namespace zyn {

class CGLFontContext;

/// What a selection pass asks a scene object before it lets it draw.
struct PickQuery {
  PickVolume volume;
  double viewportHeight = 0.0;  ///< pixels
  /// Of the current context, as the objects get them from the view; null when it has none.
  std::shared_ptr<const CGLFontContext> fonts{};
  int mode = -1;         ///< in which the object would be drawn
  bool isFlat = false;   ///< by Draw2D
  bool isMoved = false;  ///< texts and pictures have other axes than the volume (DrawPass::axes)

  /// Model units of one pixel in a view that shows `viewHeight` of them from bottom to top.
  double pixelLength(double viewHeight) const {
    return viewportHeight > 0 ? viewHeight / viewportHeight : 0.0;
  }
};

}  // namespace zyn
