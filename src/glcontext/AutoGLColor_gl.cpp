#include "glcontext/AutoGLColor_gl.h"

namespace zyn {

namespace {

constexpr int kFrontFaces = 1;
constexpr int kBackFaces = 2;
constexpr int kBothFaces = 3;

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
