#pragma once

#include <cstdint>

#include "core/Dib.h"
#include "offscreen/Palette.h"

namespace zyn {

/// Reduces a picture to at most 256 colours. A picture that has no more keeps its very colours; any
/// other gets a palette of its own, and the error of each pixel is spread over its neighbours
/// (Floyd, Steinberg 1976), so that gradients show no bands. The same picture always gives the
/// same result.
class ColourQuantiser {
 public:
  /// Chooses the palette. `picture` is not kept.
  explicit ColourQuantiser(const PixelView& picture);

  const Palette& palette() const { return palette_; }

  /// Writes each pixel's index into the palette to `indices`, whose rows are `rowBytes` apart.
  /// `picture` is the one given at construction.
  void mapTo(const PixelView& picture, std::uint8_t* indices, std::int64_t rowBytes) const;

 private:
  bool isExact_ = false;
  Palette palette_;
};

}  // namespace zyn
