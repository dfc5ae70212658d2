#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "image/IndexedPicture.h"

namespace zyn {

/// Makes a GIF file of a picture, handing it to `write` piece by piece: little memory is needed.
/// The picture's sides are 1 to `kLargestCompressedSide`. What `write` throws is passed on.
void encodeGif(const IndexedPicture& picture,
               const std::function<void(std::span<const std::uint8_t>)>& write);

}  // namespace zyn
