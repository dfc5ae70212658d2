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

/// With margins that leave a pixel.
BandRoom withinPicture(BandRoom room) {
  room.size = std::max(1.0, std::floor(room.size));
  double rest = room.size - 1;
  for (std::optional<double>* const set : {&room.low, &room.high}) {
    if (*set) {
      *set = std::min(**set, rest);
      rest -= **set;
    }
  }
  return room;
}

}  // namespace

BandFit fitBands(const std::vector<Band>& bands, const BandRoom& wanted) {
  const BandRoom room = withinPicture(wanted);
  for (const Band& band : bands) {
    const std::optional<double>& set = band.isHigh ? room.high : room.low;
    const double length = room.size - marginOf(bands, false, room) - marginOf(bands, true, room);
    const bool isTooMuch = set ? depthOf(bands, band.isHigh) > *set : length < band.least;
    *band.isKept = *band.isKept && !isTooMuch;
  }
  const double from = std::clamp(std::round(marginOf(bands, false, room)), 0.0, room.size - 1);
  const double to =
      std::clamp(std::round(room.size - marginOf(bands, true, room)), from + 1, room.size);
  return {from, to};
}

}  // namespace zyn
