#pragma once

#include <array>
#include <optional>

#include "core/GlMatrix.h"
#include "core/PlanePoint.h"
#include "core/Point.h"
#include "core/Vecteur.h"

namespace zyn {

/// What lies between the eye and the pixels: projection, and viewport (x, y, width, height).
struct Lens {
  GlMatrix projection{};
  std::array<double, 4> viewport{};
};

/// The screen around a model point: which way is right and up, and how long a pixel is there.
class PixelFrame {
 public:
  /// From the model vectors that lead one pixel to the right, one up, and one unit of depth away.
  PixelFrame(const Vecteur& right, const Vecteur& up, const Vecteur& away);

  const Vecteur& right() const { return right_; }
  const Vecteur& up() const { return up_; }

  /// Model length of a pixel, upwards.
  double pixel() const { return up_.norm(); }

  /// The pixels by which a short model vector leads to the right and up.
  PlanePoint onScreen(const Vecteur& step) const;

  /// The length of a short model vector in pixels, not foreshortened.
  double pixelsOf(const Vecteur& step) const;

 private:
  Vecteur right_;
  Vecteur up_;
  std::array<Vecteur, 3> rows_;  ///< pixels to the right, up, and away that a model vector leads
};

/// How model points map to pixels, which are counted from the lower left corner.
class ScreenMap {
 public:
  /// A pixel for each model unit, the origin at the lower left corner.
  ScreenMap();
  ScreenMap(const GlMatrix& modelview, const Lens& lens);

  /// Of a view without perspective: the model point at pixel (0, 0), and the model vectors, square
  /// to each other, that lead one pixel to the right and one up.
  static ScreenMap orthographic(const Point& origin, const Vecteur& right, const Vecteur& up);

  /// The same of a view with perspective: at the depth of `origin`, seen from `eye`.
  static ScreenMap perspective(const Point& origin, const Vecteur& right, const Vecteur& up,
                               const Point& eye);

  /// The screen around a model point; none where the map cannot be turned round.
  std::optional<PixelFrame> at(const Point& point) const;

  /// The pixel of a model point; infinite or not a number for a point in the plane of the eye.
  PlanePoint pixelOf(const Point& point) const;

 private:
  enum Row { kX, kY, kDepth, kW };
  using Homogeneous = std::array<double, 4>;

  Homogeneous transform(const Point& point) const;
  /// How a row's value changes, after the division by `image[kW]`, along x, y and z.
  Vecteur gradient(Row row, const Homogeneous& image) const;

  std::array<Homogeneous, 4> rows_;
};

}  // namespace zyn
