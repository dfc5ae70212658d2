#pragma once

#include <vector>

namespace zyn {

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

  /// Edges of the drawn rectangle as fractions of the image, 0 (left, bottom) to 1 (right, top).
  double left() const { return static_cast<double>(drawn.x) / imageWidth; }
  double right() const { return static_cast<double>(drawn.x + drawn.width) / imageWidth; }
  double bottom() const { return static_cast<double>(drawn.y) / imageHeight; }
  double top() const { return static_cast<double>(drawn.y + drawn.height) / imageHeight; }
};

/// Cuts an image into tiles of at most `largestSide` pixels a side, which must be more than twice
/// `overlap`. An image that fits is one tile; every pixel of the image is kept exactly once.
/// Sizes of 0 or less give no tile.
std::vector<Tile> tilesOf(int imageWidth, int imageHeight, int largestSide, int overlap);

}  // namespace zyn
