#include "plot/Bands.h"

#include <algorithm>
#include <cmath>

namespace zyn {

namespace {

double depthOf(const std::vector<Band>& bands, bool isHigh) {
  double depth = 0;
  for (const Band& band : bands) {
    depth += band.isHigh == isHigh && *band.isKept ? band.depth : 0;
  }
  return depth;
}

/// The margin on one side.
double marginOf(const std::vector<Band>& bands, bool isHigh, const BandRoom& room) {
  const std::optional<double>& set = isHigh ? room.high : room.low;
  return set ? *set : std::max(room.pad + depthOf(bands, isHigh), room.leastMargin);
}

}  // namespace

BandFit fitBands(const std::vector<Band>& bands, const BandRoom& room) {
  for (const Band& band : bands) {
    const std::optional<double>& set = band.isHigh ? room.high : room.low;
    const double length = room.size - marginOf(bands, false, room) - marginOf(bands, true, room);
    const bool isTooMuch = set ? depthOf(bands, band.isHigh) > *set : length < band.least;
    *band.isKept = *band.isKept && !isTooMuch;
  }
  const double size = std::max(1.0, std::floor(room.size));
  const double from = std::clamp(std::round(marginOf(bands, false, room)), 0.0, size - 1);
  const double to = std::clamp(std::round(size - marginOf(bands, true, room)), from + 1, size);
  return {from, to};
}

}  // namespace zyn
