#pragma once

#include <optional>

#include "core/GlMatrix.h"
#include "core/Transform.h"
#include "glcontext/StateGuards_gl.h"

namespace zyn {

/// Everything that is drawn during its lifetime is moved by an affine matrix: normals that are one
/// long stay so, faces that a mirror turns round keep their front. Takes no place on OpenGL's
/// stacks, unless a display list is compiled: what has been read then would not be what that finds
/// when it is called.
class MovedSpace : CountedGuard {
 public:
  /// `isFlat`: the translation of the model-view matrix stays exact in single precision, what its
  /// rounding leaves goes to the projection, as in a 2D view.
  MovedSpace(const GlMatrix& matrix, bool isFlat);
  ~MovedSpace();
  MovedSpace(const MovedSpace&) = delete;
  MovedSpace& operator=(const MovedSpace&) = delete;

  /// Whether OpenGL, in its single precision, can calculate with it; nothing is to be drawn if not.
  bool isUsable() const { return isUsable_; }

 private:
  void record(const GlMatrix& matrix);
  void load(const GlMatrix& moved, bool isFlat);
  void keepNormals(Stretch stretch);
  void turnWinding();

  bool isUsable_ = true;
  std::optional<PushedAttributes> recorded_;
  GLenum matrixMode_;
  GlMatrix modelView_;
  std::optional<GlMatrix> projection_;  ///< as found, where it is another one now
  std::optional<GLenum> normals_;       ///< the capability that is on now and was not
  std::optional<GLenum> winding_;       ///< as found, where it is the other one now
};

}  // namespace zyn
