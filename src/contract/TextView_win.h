#pragma once

#include <windows.h>

#include <memory>

#include "glcontext/Tile.h"

namespace zyn {

class CGLFontContext;

/// What a view tells those of its objects that are sized in pixels about itself before it lets them
/// draw.
struct TextView {
  std::weak_ptr<CGLFontContext> fonts;
  HGLRC context = nullptr;  ///< in which the view draws, to which the fonts belong
  /// Model units that the view shows from bottom to top, scales of the model apart; with
  /// perspective at distance 1 from the eye. 0: not known.
  double viewHeight = 0.0;
  double pixelScale = 1.0;  ///< pixels for one pixel of a screen: above 1 in fine exports
  bool isOnDark = false;    ///< the background is nearer to black than to white
  PicturePart part{};       ///< that the viewport shows
  bool perspective = false;
};

}  // namespace zyn
