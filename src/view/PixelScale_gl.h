#pragma once

#include <optional>

#include "glcontext/StateGuards_gl.h"
#include "glcontext/gl_api.h"

namespace zyn {

/// Draws plain lines as wide and plain points as large as so many pixels for a scope; as they are
/// for a number that is not above 0.
class PixelScale {
 public:
  explicit PixelScale(double pixels) {
    if (pixels > 0) {
      glLineWidth(static_cast<GLfloat>(pixels));
      glPointSize(static_cast<GLfloat>(pixels));
    }
  }

 private:
  PushedAttributes sizes_{GL_LINE_BIT | GL_POINT_BIT};
};

/// The same where plain lines and points need another size at all.
inline std::optional<PixelScale> pixelScaleUnlessOne(double pixels) {
  return pixels == 1 ? std::optional<PixelScale>()
                     : std::optional<PixelScale>(std::in_place, pixels);
}

}  // namespace zyn
