#pragma once

#include "mesh/Mesh.h"
#include "mesh/Vector.h"
#include "zynshot/View.h"

namespace zyn::shot {

/// What a picture shows of the space around a model: the bitmap context fits the model's box to the
/// picture, with a margin, and looks at the middle of the box.
class Frame {
 public:
  Frame(const mesh::Bounds& bounds, const View& view, int width, int height, double surplus);

  /// Model units of a pixel.
  double pixel() const { return pixel_; }

  /// The point at the depth of the model's middle that is seen at a place, in pixels from the lower
  /// left corner.
  mesh::Vector at(double x, double y) const;

  /// Where a direction points on the picture.
  struct Screen {
    double right = 0.0;
    double up = 0.0;
  };
  Screen onScreen(const mesh::Vector& direction) const;

 private:
  mesh::Vector centre_;
  mesh::Vector right_;
  mesh::Vector up_;
  double width_;
  double height_;
  double pixel_;
};

}  // namespace zyn::shot
