#pragma once

#include "glcontext/StateGuards_gl.h"

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

/// The state with which surfaces are coloured, for a scope: clears pending errors, blends with
/// source alpha, and gives back at its end what it found, except that a material shininess of 0 is
/// not restored. Materials are read and given back only where colours come from them, else the
/// current colour.
class SurfaceState {
 public:
  SurfaceState();
  ~SurfaceState();
  SurfaceState(const SurfaceState&) = delete;
  SurfaceState& operator=(const SurfaceState&) = delete;

  /// Whether lighting is on and colour material off.
  bool colourComesFromMaterial() const { return colourComesFromMaterial_; }

  /// As they were found.
  bool depthMask() const { return depthMask_; }
  bool cullFace() const { return cullFace_; }
  GLint twoSide() const { return twoSide_; }
  GLfloat frontShininess() const { return front_.shininess; }
  GLfloat backShininess() const { return back_.shininess; }

 private:
  bool colourComesFromMaterial_;
  GLenum blendSource_;
  GLenum blendDestination_;
  bool depthMask_;
  bool blend_;
  bool depthTest_;
  bool cullFace_;
  GLint twoSide_;
  SurfaceMaterial front_;
  SurfaceMaterial back_;
  Float4 colour_{};
};

/// Which faces a colour is for.
inline constexpr int kFrontFaces = 1;
inline constexpr int kBackFaces = 2;
inline constexpr int kBothFaces = 3;

/// Colours what is drawn during its lifetime, through the material where lighting is on and colour
/// material off, else through the current colour; blends with source alpha. Gives back on
/// destruction what it found, except that a material shininess of 0 is not restored.
class AutoGLColor : CountedGuard {
 public:
  /// A colour with a standard material. `faces`: one of the above.
  AutoGLColor(double r, double g, double b, double alpha, int faces);

  /// A material: factors of the colour, and shininess, from 0 to 1.
  AutoGLColor(double r, double g, double b, double alpha, double ambient, double diffuse,
              double specular, double shininess, double emissive, int faces);

  virtual ~AutoGLColor() = default;
  AutoGLColor(const AutoGLColor&) = delete;
  AutoGLColor& operator=(const AutoGLColor&) = delete;

 private:
  SurfaceState state_;
};

}  // namespace zyn
