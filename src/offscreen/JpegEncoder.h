#pragma once

#include <cstdint>
#include <vector>

#include "core/Dib.h"

namespace zyn {

/// A picture as a JPEG file. `picture`'s rows run from the bottom; `quality` is held within 1
/// (smallest) to 100 (best). Empty for pictures of more than 65535 pixels a side, which the format
/// cannot hold.
std::vector<std::uint8_t> encodeJpeg(const PixelView& picture, int quality);

}  // namespace zyn
