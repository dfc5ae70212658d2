#include "glcontext/SurfaceMaterial_gl.h"

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

}  // namespace zyn
