#include "objects/scale/ScaleTexture_gl.h"

#include <cstdlib>
#include <cstring>

namespace zyn {

namespace {

constexpr GLint kClampToEdge = 0x812F;  // of OpenGL 1.2

/// Whether colours at the edge of a texture can be kept free of those of its border.
bool canClampToEdge() {
  const auto* const version = reinterpret_cast<const char*>(glGetString(GL_VERSION));
  if (!version) {
    return false;
  }
  char* end = nullptr;
  const long major = std::strtol(version, &end, 10);
  return major > 1 || (major == 1 && *end == '.' && std::strtol(end + 1, nullptr, 10) >= 2);
}

void setParameter(GLenum name, GLenum value) {
  glTexParameteri(GL_TEXTURE_2D, name, static_cast<GLint>(value));
}

}  // namespace

// A host's display list cannot own a texture: there it is the one without a name.
ScaleTexture::ScaleTexture(const ScaleTexels& texels) {
  if (!isRecording()) {
    glGenTextures(1, &texture_);
  }
  glLoadIdentity();
  glMatrixMode(GL_MODELVIEW);
  glBindTexture(GL_TEXTURE_2D, texture_);
  const bool clampsToEdge = canClampToEdge();
  const GLenum filter = texels.isSmooth() && clampsToEdge ? GL_LINEAR : GL_NEAREST;
  setParameter(GL_TEXTURE_MIN_FILTER, filter);
  setParameter(GL_TEXTURE_MAG_FILTER, filter);
  setParameter(GL_TEXTURE_WRAP_S, clampsToEdge ? kClampToEdge : GL_CLAMP);
  setParameter(GL_TEXTURE_WRAP_T, clampsToEdge ? kClampToEdge : GL_CLAMP);
  {
    const PlainPixelStore store(1);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, ScaleTexels::kColumns, texels.rows(), 0, GL_RGBA,
                 GL_UNSIGNED_BYTE, texels.rgba().data());
  }
  glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
  glDisable(GL_TEXTURE_GEN_S);
  glDisable(GL_TEXTURE_GEN_T);
  glEnable(GL_TEXTURE_2D);
}

ScaleTexture::~ScaleTexture() {
  if (texture_ != 0) {
    glDeleteTextures(1, &texture_);
  }
}

}  // namespace zyn
