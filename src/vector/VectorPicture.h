#pragma once

#include "plot/Drawing.h"

namespace zyn {

/// A picture that is put out as lines, areas and texts rather than pixels. A unit is a pixel.
struct VectorPicture {
  Drawing drawing;
  double width = 0.0;
  double height = 0.0;
};

}  // namespace zyn
