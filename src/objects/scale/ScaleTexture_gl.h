#pragma once

#include "glcontext/StateGuards_gl.h"
#include "objects/scale/ColourScale.h"

namespace zyn {

/// Multiplies the colours of what is drawn by those of a scale, for a scope: white surfaces whose
/// corners have texture coordinates (ScaleTexels::coordinateOf) show the scale, lit where they are.
/// The matrix mode is GL_MODELVIEW afterwards, and at the end what it was.
class ScaleTexture {
 public:
  explicit ScaleTexture(const ScaleTexels& texels);
  ~ScaleTexture();
  ScaleTexture(const ScaleTexture&) = delete;
  ScaleTexture& operator=(const ScaleTexture&) = delete;

 private:
  PushedAttributes saved_{GL_TEXTURE_BIT | GL_ENABLE_BIT | GL_CURRENT_BIT | GL_TRANSFORM_BIT};
  PushedMatrix matrix_{GL_TEXTURE};
  GLuint texture_ = 0;
};

}  // namespace zyn
