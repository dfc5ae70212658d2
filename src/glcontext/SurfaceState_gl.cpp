#include "glcontext/SurfaceState_gl.h"

namespace zyn {

namespace {

/// One flag a kind of error in OpenGL 1.1; without a current context reading them never ends.
constexpr int kErrorFlags = 7;

void clearErrors() {
  for (int i = 0; i < kErrorFlags && glGetError() != GL_NO_ERROR; ++i) {
  }
}

void restore(const SurfaceMaterial& material, GLenum face) {
  applyColours(material, face);
  if (material.shininess != 0) {
    glMaterialf(face, GL_SHININESS, material.shininess);
  }
}

}  // namespace

SurfaceState::SurfaceState()
    : colourComesFromMaterial_(isEnabled(GL_LIGHTING) && !isEnabled(GL_COLOR_MATERIAL)),
      blendSource_(enumState(GL_BLEND_SRC)),
      blendDestination_(enumState(GL_BLEND_DST)),
      depthMask_(booleanState(GL_DEPTH_WRITEMASK)),
      blend_(isEnabled(GL_BLEND)),
      depthTest_(isEnabled(GL_DEPTH_TEST)),
      cullFace_(isEnabled(GL_CULL_FACE)),
      twoSide_(integerState(GL_LIGHT_MODEL_TWO_SIDE)) {
  if (colourComesFromMaterial_) {
    front_ = currentMaterial(GL_FRONT);
    back_ = currentMaterial(GL_BACK);
  } else {
    glGetFloatv(GL_CURRENT_COLOR, colour_.data());
  }
  clearErrors();
  if (!blend_) {
    glEnable(GL_BLEND);
  }
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
}

SurfaceState::~SurfaceState() {
  if (colourComesFromMaterial_) {
    restore(front_, GL_FRONT);
    restore(back_, GL_BACK);
  } else {
    glColor4fv(colour_.data());
  }
  if (!blend_) {
    glDisable(GL_BLEND);
  }
  glBlendFunc(blendSource_, blendDestination_);
  setEnabled(GL_DEPTH_TEST, depthTest_);
  setEnabled(GL_CULL_FACE, cullFace_);
  glDepthMask(depthMask_ ? GL_TRUE : GL_FALSE);
  glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, twoSide_);
}

}  // namespace zyn
