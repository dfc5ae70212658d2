#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "core/Dib.h"
#include "image/Palette.h"

namespace zyn {

/// A picture in at most 256 colours. One that has no more keeps its very colours; any other gets a
/// palette of its own, and the error of each pixel is spread over its neighbours (Floyd, Steinberg
/// 1976), so that gradients show no bands. The same picture always gives the same result. Pixels
/// are found row by row as they are asked for: it takes hardly any memory.
class IndexedPicture {
 public:
  /// Takes what is told of a row of pixels: places in the palette, there during the call only.
  using TakeRow = std::function<void(std::span<const std::uint8_t> indices)>;

  /// `picture` stays the caller's, and is looked at again for the rows.
  explicit IndexedPicture(const PixelView& picture);

  const Palette& palette() const { return palette_; }

  int width() const { return picture_.width; }
  int height() const { return picture_.height; }
  /// Tells all rows, from the top.
  void giveRows(const TakeRow& take) const;

 private:
  void giveExactRows(const TakeRow& take) const;
  void giveRowsSpreadingErrors(const TakeRow& take) const;

  PixelView picture_;
  Palette palette_;
  bool isExact_ = false;  ///< the palette has all colours of the picture
};

}  // namespace zyn
