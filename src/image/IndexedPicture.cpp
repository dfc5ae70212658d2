#include "image/IndexedPicture.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace zyn {
namespace {

constexpr std::size_t kMostColours = 256;
constexpr int kLargestError = 32;

/// Red, green and blue that may lie outside 0 to 255.
using Components = std::array<int, 3>;

/// Errors still to be spread over one row, in sixteenths, with a margin of one pixel on both sides.
class ErrorRow {
 public:
  explicit ErrorRow(int width) : errors_(static_cast<std::size_t>(width) + 2) {}

  void clear() { std::fill(errors_.begin(), errors_.end(), Components{}); }

  void add(int x, const Components& error, int sixteenths) {
    for (std::size_t c = 0; c < 3; ++c) {
      at(x)[c] += error[c] * sixteenths;
    }
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

}  // namespace

IndexedPicture::IndexedPicture(const PixelView& picture)
    : width_(picture.width),
      height_(picture.height),
      rowBytes_((std::int64_t{width_} + 3) / 4 * 4) {
  const ColourHistogram histogram(picture);
  palette_ = paletteOf(histogram, kMostColours);
  if (palette_.empty()) {
    return;
  }
  indices_.resize(static_cast<std::size_t>(rowBytes_ * height_));
  if (histogram.isExact() && histogram.groups().size() <= kMostColours) {
    mapExactly(picture);
  } else {
    mapSpreadingErrors(picture);
  }
}

void IndexedPicture::mapExactly(const PixelView& picture) {
  NearestColour nearest(palette_);
  Colour24 last = palette_.front();
  std::uint8_t index = 0;
  for (int y = 0; y < height_; ++y) {
    const std::uint8_t* const from = picture.row(y);
    std::uint8_t* const to = row(y);
    for (int x = 0; x < width_; ++x) {
      const Colour24 colour = colourAt(from, x);
      if (colour != last) {
        last = colour;
        index = nearest.indexOf(colour);
      }
      to[x] = index;
    }
  }
}

void IndexedPicture::mapSpreadingErrors(const PixelView& picture) {
  NearestColour nearest(palette_);
  ErrorRow current(width_);
  ErrorRow next(width_);
  for (int y = 0; y < height_; ++y) {
    const std::uint8_t* const from = picture.row(y);
    std::uint8_t* const to = row(y);
    // Every other row runs backwards, so that the errors leave no slanted pattern.
    const int step = y % 2 == 0 ? 1 : -1;
    int x = step > 0 ? 0 : width_ - 1;
    next.clear();
    for (int i = 0; i < width_; ++i, x += step) {
      const Components wanted = current.corrected(x, colourAt(from, x));
      to[x] =
          nearest.indexOf({heldInRange(wanted[0]), heldInRange(wanted[1]), heldInRange(wanted[2])});
      const Colour24 shown = palette_[to[x]];
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

}  // namespace zyn
