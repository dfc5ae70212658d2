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

IndexedPicture::IndexedPicture(const PixelView& picture) : picture_(picture) {
  const ColourHistogram histogram(picture);
  palette_ = paletteOf(histogram, kMostColours);
  isExact_ = histogram.isExact() && histogram.groups().size() <= kMostColours;
}

void IndexedPicture::giveRows(const TakeRow& take) const {
  if (palette_.empty()) {
    return;
  }
  if (isExact_) {
    giveExactRows(take);
  } else {
    giveRowsSpreadingErrors(take);
  }
}

void IndexedPicture::giveExactRows(const TakeRow& take) const {
  NearestColour nearest(palette_);
  std::vector<std::uint8_t> to(static_cast<std::size_t>(width()));
  for (int y = height() - 1; y >= 0; --y) {
    const std::uint8_t* const from = picture_.row(y);
    for (int x = 0; x < width();) {
      const int end = runEnd(from, x, width());
      std::fill(to.begin() + x, to.begin() + end, nearest.indexOf(colourAt(from, x)));
      x = end;
    }
    take(to);
  }
}

void IndexedPicture::giveRowsSpreadingErrors(const TakeRow& take) const {
  NearColour near(palette_);
  SpreadErrors errors(width());
  std::vector<std::uint8_t> to(static_cast<std::size_t>(width()));
  for (int y = height() - 1; y >= 0; --y) {
    const std::uint8_t* const from = picture_.row(y);
    // Every other row runs backwards, so that the errors leave no slanted pattern.
    const int step = y % 2 == 0 ? 1 : -1;
    int x = step > 0 ? 0 : width() - 1;
    errors.beginRow();
    for (int i = 0; i < width(); ++i, x += step) {
      const Components wanted = errors.corrected(x, colourAt(from, x));
      const std::uint8_t index =
          near.indexOf({heldInRange(wanted[0]), heldInRange(wanted[1]), heldInRange(wanted[2])});
      to[static_cast<std::size_t>(x)] = index;
      const Colour24 shown = palette_[index];
      errors.spread(x, step,
                    {errorOf(wanted[0], shown.red), errorOf(wanted[1], shown.green),
                     errorOf(wanted[2], shown.blue)});
    }
    errors.endRow(x - step);
    take(to);
  }
}

}  // namespace zyn
