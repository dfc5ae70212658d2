#pragma once

#include <memory>

#include "core/PixelImage.h"
#include "core/Point.h"

namespace zyn {

/// A picture and where it is shown.
struct SpriteShape {
  Point position;
  double originX = 0.0;  ///< of the point of the picture that lies at the position, in pixels
  double originY = 0.0;  ///< from its lower left corner
  std::shared_ptr<const PixelImage> image;  ///< null without a picture
};

}  // namespace zyn
