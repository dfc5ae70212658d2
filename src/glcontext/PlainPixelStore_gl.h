#pragma once

#include "glcontext/gl_api.h"

namespace zyn {

/// Images are read from memory as they lie there, for a scope.
class PlainPixelStore {
 public:
  /// `rowAlignment`: what the bytes of a row are padded to, 1, 2, 4 or 8.
  explicit PlainPixelStore(GLint rowAlignment) {
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    for (const GLenum name : {GL_UNPACK_SWAP_BYTES, GL_UNPACK_LSB_FIRST, GL_UNPACK_ROW_LENGTH,
                              GL_UNPACK_SKIP_ROWS, GL_UNPACK_SKIP_PIXELS}) {
      glPixelStorei(name, 0);
    }
    glPixelStorei(GL_UNPACK_ALIGNMENT, rowAlignment);
  }
  ~PlainPixelStore() { glPopClientAttrib(); }
  PlainPixelStore(const PlainPixelStore&) = delete;
  PlainPixelStore& operator=(const PlainPixelStore&) = delete;
};

}  // namespace zyn
