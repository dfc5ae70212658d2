#pragma once

#include <vector>

namespace zyn {

/// The part of the whole picture that the viewport shows, as fractions from the picture's left and
/// bottom edge. A picture larger than the largest viewport is drawn part by part. Lines, points and
/// raster images are cut where their vertices or centres leave the part: draw parts with a margin
/// and keep their inside. Surfaces then have the pixels of the whole; lines that leave a part may
/// be off by one.
struct PicturePart {
  double left = 0.0;
  double right = 1.0;
  double bottom = 0.0;
  double top = 1.0;
};

/// A rectangle of pixels; x to the right and y upwards from the image's lower left corner.
struct PixelRect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
};

/// One piece of an image that is too large to be drawn in one go.
///
/// `drawn` is what the viewport shows; it overlaps the neighbouring tiles, so that wide lines,
/// points and sprites are whole at the seams. `kept` is the part that goes into the image.
struct Tile {
  int imageWidth = 0;
  int imageHeight = 0;
  PixelRect drawn;
  PixelRect kept;

  /// What is drawn, as part of the image.
  PicturePart part() const;
};

/// Cuts an image into tiles of at most `largestSide` pixels a side, which must be more than twice
/// `overlap`. An image that fits is one tile; every pixel of the image is kept exactly once.
/// Sizes of 0 or less give no tile.
std::vector<Tile> tilesOf(int imageWidth, int imageHeight, int largestSide, int overlap);

}  // namespace zyn
