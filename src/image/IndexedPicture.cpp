#include "image/IndexedPicture.h"

#include <algorithm>
#include <array>
#include <vector>

namespace zyn {
namespace {

constexpr std::size_t kMostColours = 256;
constexpr int kLargestError = 32;

/// Red, green and blue that may lie outside 0 to 255.
using Components = std::array<int, 3>;

/// The errors that are being spread, in sixteenths: one row of them, in which those of the next row
/// take the place of those that have come to their pixel.
class SpreadErrors {
 public:
  explicit SpreadErrors(int width) : row_(static_cast<std::size_t>(width) + 2) {}

  void beginRow() { ahead_ = below_ = belowAhead_ = {}; }

  /// The colour of pixel x with the error that has come to it.
  Components corrected(int x, Colour24 colour) const {
    const Components& above = row_[static_cast<std::size_t>(x + 1)];
    return {colour.red + ((above[0] + ahead_[0] + 8) >> 4),
            colour.green + ((above[1] + ahead_[1] + 8) >> 4),
            colour.blue + ((above[2] + ahead_[2] + 8) >> 4)};
  }

  /// Of pixel x; the next one is x + step.
  void spread(int x, int step, const Components& error) {
    Components& behind = row_[static_cast<std::size_t>(x + 1 - step)];
    for (std::size_t c = 0; c < 3; ++c) {
      behind[c] = below_[c] + 3 * error[c];
      below_[c] = belowAhead_[c] + 5 * error[c];
      belowAhead_[c] = error[c];
      ahead_[c] = 7 * error[c];
    }
  }

  /// After pixel x, the last of the row.
  void endRow(int x) { row_[static_cast<std::size_t>(x + 1)] = below_; }

 private:
  std::vector<Components> row_;  ///< with a margin of one pixel on both sides
  Components ahead_{};           ///< for the next pixel
  Components below_{};           ///< for the pixel below the last one
  Components belowAhead_{};      ///< for the pixel below the next one
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
  SpreadErrors errors(width_);
  for (int y = 0; y < height_; ++y) {
    const std::uint8_t* const from = picture.row(y);
    std::uint8_t* const to = row(y);
    // Every other row runs backwards, so that the errors leave no slanted pattern.
    const int step = y % 2 == 0 ? 1 : -1;
    int x = step > 0 ? 0 : width_ - 1;
    errors.beginRow();
    for (int i = 0; i < width_; ++i, x += step) {
      const Components wanted = errors.corrected(x, colourAt(from, x));
      to[x] =
          nearest.indexOf({heldInRange(wanted[0]), heldInRange(wanted[1]), heldInRange(wanted[2])});
      const Colour24 shown = palette_[to[x]];
      errors.spread(x, step,
                    {errorOf(wanted[0], shown.red), errorOf(wanted[1], shown.green),
                     errorOf(wanted[2], shown.blue)});
    }
    errors.endRow(x - step);
  }
}

}  // namespace zyn
