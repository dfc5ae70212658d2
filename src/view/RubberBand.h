#pragma once

#include "view/PixelPoint.h"

namespace zyn {

/// The rectangle that is being dragged: the pixels of two opposite corners.
struct RubberBand {
  PixelPoint press;
  PixelPoint current;

  bool operator==(const RubberBand& other) const = default;
};

}  // namespace zyn
