#pragma once

#include "common/Vector.h"
#include "zynshot/View.h"

namespace zyn::shot {

/// What a picture shows of the space around a model: the bitmap context fits the model's box to the
/// picture, with a margin, and looks at the middle of the box.
class Frame {
 public:
  Frame(const host::Bounds& bounds, const View& view, int width, int height, double surplus);

  /// What is seen around `centre`, with pixels of that many model units there.
  Frame(const host::Vector& centre, const View& view, int width, int height, double pixel);

  /// The same with room for what comes nearer in a perspective of so many degrees from bottom to
  /// top.
  Frame inPerspective(const host::Bounds& bounds, double angle) const;

  const host::Vector& centre() const { return centre_; }

  /// Model units of a pixel.
  double pixel() const { return pixel_; }

  /// The point at the depth of the model's middle that is seen at a place, in pixels from the lower
  /// left corner.
  host::Vector at(double x, double y) const;

  /// Where a direction points on the picture.
  struct Screen {
    double right = 0.0;
    double up = 0.0;
  };
  Screen onScreen(const host::Vector& direction) const;

 private:
  host::Vector centre_;
  host::Vector right_;
  host::Vector up_;
  double width_;
  double height_;
  double pixel_;
};

}  // namespace zyn::shot
