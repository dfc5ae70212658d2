#pragma once

#include <optional>

#include "glcontext/StateQuery_gl.h"

namespace zyn {

/// Colours what is drawn during its lifetime, through the material where lighting is on and colour
/// material off, else through the current colour; blends with source alpha. Gives back on
/// destruction what it found, except that a material shininess of 0 is not restored.
class AutoGLColor {
 public:
  /// A colour with a standard material. `faces`: 1 = front, 2 = back, 3 = both.
  AutoGLColor(double r, double g, double b, double alpha, int faces);

  /// A material: factors of the colour, and shininess, from 0 to 1.
  AutoGLColor(double r, double g, double b, double alpha, double ambient, double diffuse,
              double specular, double shininess, double emissive, int faces);

  virtual ~AutoGLColor();
  AutoGLColor(const AutoGLColor&) = delete;
  AutoGLColor& operator=(const AutoGLColor&) = delete;

 private:
  struct Material {
    Float4 ambient{};
    Float4 diffuse{};
    Float4 specular{};
    Float4 emission{};
    GLfloat shininess = 0;
  };

  AutoGLColor();

  static Material materialOf(GLenum face);
  static void applyColours(const Material& material, GLenum face);
  static void apply(const Material& material, GLenum face);
  static void restore(const Material& material, GLenum face);

  void setMaterial(const Material& material, int faces);
  void setColour(const Float4& colour);

  GLenum blendSource_;
  GLenum blendDestination_;
  bool depthMask_;
  bool blend_;
  bool depthTest_;
  bool cullFace_;
  GLint twoSide_;
  std::optional<Material> front_;
  std::optional<Material> back_;
  std::optional<Float4> colour_;
};

}  // namespace zyn
