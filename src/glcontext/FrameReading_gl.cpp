#include "glcontext/FrameReading_gl.h"

namespace zyn {
namespace {

/// Rows of bitmaps are padded to so many bytes.
constexpr GLint kRowAlignment = 4;

}  // namespace

FrameReading::FrameReading(int rowPixels) {
  glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
  for (const GLenum scale : GLNames{GL_RED_SCALE, GL_GREEN_SCALE, GL_BLUE_SCALE}) {
    glPixelTransferf(scale, 1);
  }
  for (const GLenum bias : GLNames{GL_RED_BIAS, GL_GREEN_BIAS, GL_BLUE_BIAS}) {
    glPixelTransferf(bias, 0);
  }
  glPixelTransferi(GL_MAP_COLOR, GL_FALSE);
  for (const GLenum layout : GLNames{GL_PACK_SWAP_BYTES, GL_PACK_SKIP_ROWS, GL_PACK_SKIP_PIXELS}) {
    glPixelStorei(layout, 0);
  }
  glPixelStorei(GL_PACK_ROW_LENGTH, rowPixels);
  glPixelStorei(GL_PACK_ALIGNMENT, kRowAlignment);
}

}  // namespace zyn
