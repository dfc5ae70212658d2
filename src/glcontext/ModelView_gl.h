#pragma once

#include <optional>

#include "core/GlMatrix.h"
#include "core/Point.h"
#include "glcontext/gl_api.h"

namespace zyn {

/// A model-view matrix, calculated with in double precision: what is moved to a point far from the
/// model's origin, in a view that looks there, is exactly in its place. In a display list it is
/// relative to the matrix under which the list is called, in single precision.
class ModelView {
 public:
  /// That of the current context.
  ModelView();

  /// Makes a model point the origin.
  void moveTo(const Point& point);

  /// Where that brings a model point.
  Point seenFromEye(const Point& point) const;

  /// Gives the axes the directions and the scale of the screen's.
  void faceViewer();

  /// Gives the axes the directions of another matrix, each one unit long.
  void alignWith(const GlMatrix& matrix);

  void scale(double factor);

  /// Makes an axis (0: x, 1: y, 2: z) one unit long on its way to the eye, and tells how long it
  /// was; leaves one that has no length, and tells 1.
  double normalize(int axis);

  const GlMatrix& columns() const { return columns_; }

  /// Whether OpenGL, in its single precision, can calculate with it.
  bool isUsable() const;

  /// Makes it that of the current context, whose matrix mode has to be GL_MODELVIEW, and whose
  /// matrix is still the one that this was made from.
  void load() const;

 private:
  double& at(int column, int row) { return columns_[static_cast<std::size_t>(4 * column + row)]; }
  GlMatrix relative() const;

  GlMatrix columns_;
  std::optional<GlMatrix> origin_;  ///< what it is relative to, while a display list is compiled
};

}  // namespace zyn
