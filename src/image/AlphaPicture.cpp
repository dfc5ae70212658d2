#include "image/AlphaPicture.h"

#include <algorithm>
#include <array>

namespace zyn {

namespace {

using Pixel = std::array<std::uint8_t, 4>;

constexpr int kFull = 255;

/// The least transparent component counts: colours are then never above their full.
int alphaOf(const std::uint8_t* onBlack, const std::uint8_t* onWhite) {
  int passed = kFull;
  for (int i = 0; i < 3; ++i) {
    passed = std::min(passed, onWhite[i] - onBlack[i]);
  }
  return kFull - std::clamp(passed, 0, kFull);
}

Pixel pixelOf(const std::uint8_t* onBlack, const std::uint8_t* onWhite) {
  const int alpha = alphaOf(onBlack, onWhite);
  Pixel pixel{};
  if (alpha == 0) {
    return pixel;
  }
  for (std::size_t i = 0; i < 3; ++i) {
    pixel[i] = static_cast<std::uint8_t>(std::min(kFull, (kFull * onBlack[i] + alpha / 2) / alpha));
  }
  pixel[3] = static_cast<std::uint8_t>(alpha);
  return pixel;
}

}  // namespace

AlphaPicture::AlphaPicture(int width, int height)
    : width_(width),
      height_(height),
      bytes_(std::size_t{4} * static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {}

void AlphaPicture::takeOnBlack(const PixelView& picture) {
  std::uint8_t* to = bytes_.data();
  for (int y = 0; y < height_; ++y) {
    const std::uint8_t* from = picture.row(y);
    for (int x = 0; x < width_; ++x, from += 3, to += 4) {
      std::copy_n(from, 3, to);
    }
  }
}

void AlphaPicture::takeOnWhite(const PixelView& picture) {
  std::uint8_t* to = bytes_.data();
  for (int y = 0; y < height_; ++y) {
    const std::uint8_t* from = picture.row(y);
    for (int x = 0; x < width_; ++x, from += 3, to += 4) {
      std::ranges::copy(pixelOf(to, from), to);
    }
  }
}

}  // namespace zyn
