#pragma once

#include "glcontext/CountedGuard.h"
#include "glcontext/SurfaceState_gl.h"

namespace zyn {

/// Colours what is drawn during its lifetime, through the material where lighting is on and colour
/// material off, else through the current colour; blends with source alpha. Gives back on
/// destruction what it found, except that a material shininess of 0 is not restored.
class AutoGLColor : CountedGuard {
 public:
  /// A colour with a standard material. `faces`: 1 = front, 2 = back, 3 = both.
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
