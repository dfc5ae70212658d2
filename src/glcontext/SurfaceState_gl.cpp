#include "glcontext/SurfaceState_gl.h"

#include <cmath>

namespace zyn {

namespace {

/// OpenGL leaves open what NaN shows, and Mesa shows it in several ways.
GLfloat componentOf(double value) { return std::isnan(value) ? 0.0F : static_cast<GLfloat>(value); }

}  // namespace

Float4 colourOf(double r, double g, double b, double alpha) {
  return {componentOf(r), componentOf(g), componentOf(b), componentOf(alpha)};
}

SurfaceMaterial materialOf(double r, double g, double b, double alpha) {
  return {.ambient = colourOf(0.8 * r, 0.8 * g, 0.8 * b, alpha),
          .diffuse = colourOf(0.7 * r, 0.7 * g, 0.7 * b, alpha),
          .specular = {0.8F, 0.8F, 0.8F, 0.8F},
          .emission = {0, 0, 0, 1},
          .shininess = 100};
}

SurfaceMaterial materialOf(double r, double g, double b, double alpha, double ambient,
                           double diffuse, double specular, double shininess, double emissive) {
  return {.ambient = colourOf(ambient * r, ambient * g, ambient * b, alpha),
          .diffuse = colourOf(diffuse * r, diffuse * g, diffuse * b, alpha),
          .specular = colourOf(specular, specular, specular, alpha),
          .emission = colourOf(emissive * r, emissive * g, emissive * b, alpha),
          .shininess = kLargestShininess * static_cast<GLfloat>(shininess)};
}

SurfaceMaterial currentMaterial(GLenum face) {
  SurfaceMaterial material;
  glGetMaterialfv(face, GL_AMBIENT, material.ambient.data());
  glGetMaterialfv(face, GL_DIFFUSE, material.diffuse.data());
  glGetMaterialfv(face, GL_SPECULAR, material.specular.data());
  glGetMaterialfv(face, GL_EMISSION, material.emission.data());
  glGetMaterialfv(face, GL_SHININESS, &material.shininess);
  return material;
}

void applyColours(const SurfaceMaterial& material, GLenum face) {
  glMaterialfv(face, GL_AMBIENT, material.ambient.data());
  glMaterialfv(face, GL_DIFFUSE, material.diffuse.data());
  glMaterialfv(face, GL_SPECULAR, material.specular.data());
  glMaterialfv(face, GL_EMISSION, material.emission.data());
}

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

namespace {

/// What is behind a transparent surface, its own back included, must stay visible.
void setTransparency(double alpha) {
  if (alpha < 1.0) {
    glDepthMask(GL_FALSE);
    glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 1);
    glDisable(GL_CULL_FACE);
  } else {
    glDepthMask(GL_TRUE);
    glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 0);
  }
}

void applyTo(GLenum face, const SurfaceMaterial& material) {
  applyColours(material, face);
  // Not asking for what OpenGL refuses leaves no error behind.
  if (material.hasValidShininess()) {
    glMaterialf(face, GL_SHININESS, material.shininess);
  }
}

void apply(const SurfaceMaterial& material, int faces) {
  if (faces == kFrontFaces || faces == kBothFaces) {
    applyTo(GL_FRONT, material);
  }
  if (faces == kBackFaces || faces == kBothFaces) {
    applyTo(GL_BACK, material);
  }
}

}  // namespace

AutoGLColor::AutoGLColor(double r, double g, double b, double alpha, int faces) {
  if (state_.colourComesFromMaterial()) {
    setTransparency(alpha);
    apply(materialOf(r, g, b, alpha), faces);
  } else {
    glColor4fv(colourOf(r, g, b, alpha).data());
  }
}

AutoGLColor::AutoGLColor(double r, double g, double b, double alpha, double ambient, double diffuse,
                         double specular, double shininess, double emissive, int faces) {
  setTransparency(alpha);
  if (state_.colourComesFromMaterial()) {
    apply(materialOf(r, g, b, alpha, ambient, diffuse, specular, shininess, emissive), faces);
  } else {
    glColor4fv(colourOf(r, g, b, alpha).data());
  }
}

}  // namespace zyn
