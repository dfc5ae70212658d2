#include "offscreen/ColourQuantiser.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "offscreen/ColourHistogram.h"
#include "offscreen/NearestColour.h"

namespace zyn {
namespace {

constexpr std::size_t kMostColours = 256;
constexpr int kLargestError = 32;

void mapExactly(const PixelView& picture, const Palette& palette, std::uint8_t* indices,
                std::int64_t rowBytes) {
  NearestColour nearest(palette);
  Colour24 last = palette.front();
  std::uint8_t index = 0;
  for (int y = 0; y < picture.height; ++y, indices += rowBytes) {
    const std::uint8_t* const row = picture.row(y);
    for (int x = 0; x < picture.width; ++x) {
      const Colour24 colour = colourAt(row, x);
      if (colour != last) {
        last = colour;
        index = nearest.indexOf(colour);
      }
      indices[x] = index;
    }
  }
}

/// Red, green and blue that may lie outside 0 to 255.
using Components = std::array<int, 3>;

/// Errors still to be spread over one row, in sixteenths, with a margin of one pixel on both sides.
class ErrorRow {
 public:
  explicit ErrorRow(int width) : errors_(static_cast<std::size_t>(width) + 2) {}

  void clear() { std::fill(errors_.begin(), errors_.end(), Components{}); }

  void add(int x, const Components& error, int sixteenths) {
    for (std::size_t c = 0; c < 3; ++c) at(x)[c] += error[c] * sixteenths;
  }

  /// The colour of pixel x with the error that has come to it.
  Components corrected(int x, Colour24 colour) {
    const Components& error = at(x);
    return {colour.red + ((error[0] + 8) >> 4), colour.green + ((error[1] + 8) >> 4),
            colour.blue + ((error[2] + 8) >> 4)};
  }

 private:
  Components& at(int x) { return errors_[static_cast<std::size_t>(x + 1)]; }

  std::vector<Components> errors_;
};

std::uint8_t heldInRange(int component) {
  return static_cast<std::uint8_t>(std::clamp(component, 0, 255));
}

/// What is left to spread. Errors of colours that the palette cannot reach must not pile up.
int errorOf(int wanted, std::uint8_t shown) {
  return std::clamp(wanted - shown, -kLargestError, kLargestError);
}

void mapSpreadingErrors(const PixelView& picture, const Palette& palette, std::uint8_t* indices,
                        std::int64_t rowBytes) {
  NearestColour nearest(palette);
  ErrorRow current(picture.width);
  ErrorRow next(picture.width);
  for (int y = 0; y < picture.height; ++y, indices += rowBytes) {
    const std::uint8_t* const row = picture.row(y);
    // Every other row runs backwards, so that the errors leave no slanted pattern.
    const int step = y % 2 == 0 ? 1 : -1;
    int x = step > 0 ? 0 : picture.width - 1;
    next.clear();
    for (int i = 0; i < picture.width; ++i, x += step) {
      const Components wanted = current.corrected(x, colourAt(row, x));
      indices[x] =
          nearest.indexOf({heldInRange(wanted[0]), heldInRange(wanted[1]), heldInRange(wanted[2])});
      const Colour24 shown = palette[indices[x]];
      const Components error{errorOf(wanted[0], shown.red), errorOf(wanted[1], shown.green),
                             errorOf(wanted[2], shown.blue)};
      current.add(x + step, error, 7);
      next.add(x - step, error, 3);
      next.add(x, error, 5);
      next.add(x + step, error, 1);
    }
    std::swap(current, next);
  }
}

}  // namespace

ColourQuantiser::ColourQuantiser(const PixelView& picture) {
  const ColourHistogram histogram(picture);
  isExact_ = histogram.isExact() && histogram.groups().size() <= kMostColours;
  palette_ = paletteOf(histogram, kMostColours);
}

void ColourQuantiser::mapTo(const PixelView& picture, std::uint8_t* indices,
                            std::int64_t rowBytes) const {
  if (palette_.empty()) return;
  if (isExact_) {
    mapExactly(picture, palette_, indices, rowBytes);
  } else {
    mapSpreadingErrors(picture, palette_, indices, rowBytes);
  }
}

}  // namespace zyn
