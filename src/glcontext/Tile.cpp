#include "glcontext/Tile.h"

#include <algorithm>

namespace zyn {
namespace {

/// A piece of one axis: what is drawn from `drawn` on and what of it is kept from `kept` on.
struct Span {
  int drawn;
  int drawnSize;
  int kept;
  int keptSize;
};

std::vector<Span> spansOf(int size, int largest, int overlap) {
  if (size <= largest) {
    return {{0, size, 0, size}};
  }
  const int step = largest - 2 * overlap;
  std::vector<Span> spans;
  for (int kept = 0; kept < size;) {
    const int keptSize = std::min(step, size - kept);
    const int drawn = std::max(0, kept - overlap);
    const int below = std::min(overlap, size - kept - keptSize);
    spans.push_back({drawn, kept + keptSize + below - drawn, kept, keptSize});
    if (keptSize == size - kept) {
      break;
    }
    kept += keptSize;
  }
  return spans;
}

}  // namespace

PicturePart Tile::part() const {
  return {static_cast<double>(drawn.x) / imageWidth,
          static_cast<double>(drawn.x + drawn.width) / imageWidth,
          static_cast<double>(drawn.y) / imageHeight,
          static_cast<double>(drawn.y + drawn.height) / imageHeight};
}

std::vector<Tile> tilesOf(int imageWidth, int imageHeight, int largestSide, int overlap) {
  if (imageWidth <= 0 || imageHeight <= 0) {
    return {};
  }
  std::vector<Tile> tiles;
  for (const Span& row : spansOf(imageHeight, largestSide, overlap)) {
    for (const Span& column : spansOf(imageWidth, largestSide, overlap)) {
      tiles.push_back({imageWidth,
                       imageHeight,
                       {column.drawn, row.drawn, column.drawnSize, row.drawnSize},
                       {column.kept, row.kept, column.keptSize, row.keptSize}});
    }
  }
  return tiles;
}

}  // namespace zyn
