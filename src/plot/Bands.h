#pragma once

#include <optional>
#include <vector>

namespace zyn {

/// Something beside the plot area that takes room from it, unless there is too little.
struct Band {
  bool isHigh = false;  ///< on the right, or above
  double depth = 0.0;
  double least = 0.0;  ///< length of the plot area below which it is left out
  bool* isKept = nullptr;
};

/// One direction of a picture.
struct BandRoom {
  double size = 0.0;            ///< of the picture
  double pad = 0.0;             ///< beyond the bands
  double leastMargin = 0.0;     ///< on each side, pad and bands together
  std::optional<double> low{};  ///< margins that were set
  std::optional<double> high{};
};

/// Where the plot area begins and ends.
struct BandFit {
  double from = 0.0;
  double to = 1.0;
};

/// Makes room for the plot area: bands that do not fit are left out, the first ones first. It is a
/// pixel long at least, whatever margins are wanted.
BandFit fitBands(const std::vector<Band>& bands, const BandRoom& wanted);

}  // namespace zyn
