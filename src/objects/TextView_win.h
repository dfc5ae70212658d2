#pragma once

#include <windows.h>

#include <memory>

#include "objects/CGLFontContext_gl.h"

namespace zyn {

/// What a view tells a text about itself before it lets it draw.
struct TextView {
  std::weak_ptr<CGLFontContext> fonts;
  HGLRC context = nullptr;  ///< to which the fonts belong
  double viewHeight = 0.0;  ///< model units that the view shows from bottom to top; 0: not known
  double pixelScale = 1.0;  ///< pixels for one pixel of a screen: above 1 in fine exports
};

}  // namespace zyn
