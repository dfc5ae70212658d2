#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "core/Dib.h"
#include "image/ImageFormat.h"

namespace zyn {

/// Largest side of a JPEG or GIF picture.
inline constexpr int kLargestCompressedSide = 65535;

/// Makes a JPEG file of a picture, handing it to `write` piece by piece: little memory is needed.
/// `picture`'s rows run from the bottom; its sides are at most `kLargestCompressedSide`. `quality`
/// is held within 1 (smallest) to 100 (best). What `write` throws is passed on.
void encodeJpeg(const PixelView& picture, int quality, Resolution resolution,
                const std::function<void(std::span<const std::uint8_t>)>& write);

}  // namespace zyn
