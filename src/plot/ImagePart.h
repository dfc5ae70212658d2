#pragma once

#include "core/PixelBox.h"
#include "core/PixelImage.h"

namespace zyn {

/// The pixels of `part`, whole ones, where an image is stretched to a box. `isSmooth`: between the
/// middles of the image's pixels.
PixelImage stretchedPart(const PixelImage& image, const PixelBox& box, const PixelBox& part,
                         bool isSmooth);

}  // namespace zyn
