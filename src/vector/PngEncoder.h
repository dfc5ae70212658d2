#pragma once

#include <cstdint>
#include <vector>

#include "core/PixelImage.h"

namespace zyn {

/// A PNG file with a picture, 8 bits a component, with alpha.
std::vector<std::uint8_t> encodePng(const PixelImage& image);

}  // namespace zyn
