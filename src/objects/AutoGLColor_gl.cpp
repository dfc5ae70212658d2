#include "objects/AutoGLColor_gl.h"

namespace zyn {

namespace {

constexpr int kFrontFaces = 1;
constexpr int kBackFaces = 2;
constexpr int kBothFaces = 3;

constexpr GLfloat kLargestShininess = 128;

/// One flag a kind of error in OpenGL 1.1; without a current context reading them never ends.
constexpr int kErrorFlags = 7;

void clearErrors() {
  for (int i = 0; i < kErrorFlags && glGetError() != GL_NO_ERROR; ++i) {
  }
}

Float4 colourOf(double r, double g, double b, double alpha) {
  return {static_cast<GLfloat>(r), static_cast<GLfloat>(g), static_cast<GLfloat>(b),
          static_cast<GLfloat>(alpha)};
}

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

bool colourComesFromMaterial() { return isEnabled(GL_LIGHTING) && !isEnabled(GL_COLOR_MATERIAL); }

}  // namespace

AutoGLColor::AutoGLColor()
    : blendSource_(enumState(GL_BLEND_SRC)),
      blendDestination_(enumState(GL_BLEND_DST)),
      depthMask_(booleanState(GL_DEPTH_WRITEMASK)),
      blend_(isEnabled(GL_BLEND)),
      depthTest_(isEnabled(GL_DEPTH_TEST)),
      cullFace_(isEnabled(GL_CULL_FACE)),
      twoSide_(integerState(GL_LIGHT_MODEL_TWO_SIDE)) {
  clearErrors();
  if (!blend_) {
    glEnable(GL_BLEND);
  }
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
}

AutoGLColor::AutoGLColor(double r, double g, double b, double alpha, int faces) : AutoGLColor() {
  if (colourComesFromMaterial()) {
    setTransparency(alpha);
    setMaterial({.ambient = colourOf(0.8 * r, 0.8 * g, 0.8 * b, alpha),
                 .diffuse = colourOf(0.7 * r, 0.7 * g, 0.7 * b, alpha),
                 .specular = {0.8F, 0.8F, 0.8F, 0.8F},
                 .emission = {0, 0, 0, 1},
                 .shininess = 100},
                faces);
  } else {
    setColour(colourOf(r, g, b, alpha));
  }
}

AutoGLColor::AutoGLColor(double r, double g, double b, double alpha, double ambient, double diffuse,
                         double specular, double shininess, double emissive, int faces)
    : AutoGLColor() {
  setTransparency(alpha);
  if (colourComesFromMaterial()) {
    setMaterial({.ambient = colourOf(ambient * r, ambient * g, ambient * b, alpha),
                 .diffuse = colourOf(diffuse * r, diffuse * g, diffuse * b, alpha),
                 .specular = colourOf(specular, specular, specular, alpha),
                 .emission = colourOf(emissive * r, emissive * g, emissive * b, alpha),
                 .shininess = kLargestShininess * static_cast<GLfloat>(shininess)},
                faces);
  } else {
    setColour(colourOf(r, g, b, alpha));
  }
}

AutoGLColor::~AutoGLColor() {
  if (front_) {
    restore(*front_, GL_FRONT);
  }
  if (back_) {
    restore(*back_, GL_BACK);
  }
  if (colour_) {
    glColor4fv(colour_->data());
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

AutoGLColor::Material AutoGLColor::materialOf(GLenum face) {
  Material material;
  glGetMaterialfv(face, GL_AMBIENT, material.ambient.data());
  glGetMaterialfv(face, GL_DIFFUSE, material.diffuse.data());
  glGetMaterialfv(face, GL_SPECULAR, material.specular.data());
  glGetMaterialfv(face, GL_EMISSION, material.emission.data());
  glGetMaterialfv(face, GL_SHININESS, &material.shininess);
  return material;
}

void AutoGLColor::applyColours(const Material& material, GLenum face) {
  glMaterialfv(face, GL_AMBIENT, material.ambient.data());
  glMaterialfv(face, GL_DIFFUSE, material.diffuse.data());
  glMaterialfv(face, GL_SPECULAR, material.specular.data());
  glMaterialfv(face, GL_EMISSION, material.emission.data());
}

void AutoGLColor::apply(const Material& material, GLenum face) {
  applyColours(material, face);
  // OpenGL refuses any other value; not asking leaves no error behind.
  if (material.shininess >= 0 && material.shininess <= kLargestShininess) {
    glMaterialf(face, GL_SHININESS, material.shininess);
  }
}

void AutoGLColor::restore(const Material& material, GLenum face) {
  applyColours(material, face);
  if (material.shininess != 0) {
    glMaterialf(face, GL_SHININESS, material.shininess);
  }
}

void AutoGLColor::setMaterial(const Material& material, int faces) {
  front_ = materialOf(GL_FRONT);
  back_ = materialOf(GL_BACK);
  if (faces == kFrontFaces || faces == kBothFaces) {
    apply(material, GL_FRONT);
  }
  if (faces == kBackFaces || faces == kBothFaces) {
    apply(material, GL_BACK);
  }
}

void AutoGLColor::setColour(const Float4& colour) {
  colour_.emplace();
  glGetFloatv(GL_CURRENT_COLOR, colour_->data());
  glColor4fv(colour.data());
}

}  // namespace zyn
