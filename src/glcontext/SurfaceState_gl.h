#pragma once

#include "glcontext/SurfaceMaterial_gl.h"

namespace zyn {

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

}  // namespace zyn
