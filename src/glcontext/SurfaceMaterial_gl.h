#pragma once

#include "glcontext/StateQuery_gl.h"

namespace zyn {

/// The largest that OpenGL takes.
inline constexpr GLfloat kLargestShininess = 128;

/// What lighting makes a colour from, as OpenGL has it for each face.
struct SurfaceMaterial {
  Float4 ambient{};
  Float4 diffuse{};
  Float4 specular{};
  Float4 emission{};
  GLfloat shininess = 0;

  /// OpenGL refuses any other shininess with an error and keeps the one it has.
  bool hasValidShininess() const { return shininess >= 0 && shininess <= kLargestShininess; }
};

/// A component that is not a number counts as 0.
Float4 colourOf(double r, double g, double b, double alpha);

/// The standard material of a colour.
SurfaceMaterial materialOf(double r, double g, double b, double alpha);

/// Factors of the colour, and shininess, from 0 to 1.
SurfaceMaterial materialOf(double r, double g, double b, double alpha, double ambient,
                           double diffuse, double specular, double shininess, double emissive);

/// The current one of a face, GL_FRONT or GL_BACK.
SurfaceMaterial currentMaterial(GLenum face);

/// Sets all but the shininess.
void applyColours(const SurfaceMaterial& material, GLenum face);

}  // namespace zyn
