#pragma once

#include "glcontext/StateGuards_gl.h"
#include "glcontext/gl_api.h"

namespace zyn {

/// Orders of a bitmap's bytes. OpenGL has them since 1.2, Windows and Wine always.
inline constexpr GLenum kBgr = 0x80E0;
inline constexpr GLenum kBgra = 0x80E1;

/// Pixels are read as they are, into rows of a bitmap, whatever reading was set up for, for a
/// scope. The read buffer may be changed within.
class FrameReading {
 public:
  /// `rowPixels`: pixels from a row to the next one; 0: as many as are read.
  explicit FrameReading(int rowPixels = 0);
  ~FrameReading() { glPopClientAttrib(); }
  FrameReading(const FrameReading&) = delete;
  FrameReading& operator=(const FrameReading&) = delete;

 private:
  PushedAttributes modes_{GL_PIXEL_MODE_BIT};
};

}  // namespace zyn
