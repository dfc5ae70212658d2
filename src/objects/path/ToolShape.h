#pragma once

#include <array>
#include <vector>

namespace zyn {

/// A tool as it was described; what contradicts each other is settled where it is drawn.
struct ToolShape {
  using Colour = std::array<double, 4>;  ///< red, green, blue, alpha, 0 to 1

  double diameter = 6;
  double cornerRadius = 0;
  double cutLength = 20;
  double length = 50;
  double holderDiameter = 0;
  double holderLength = 0;
  Colour colour{0.85, 0.7, 0.25, 1};
};

/// A piece of the tool's surface around its axis, from a circle to another one.
struct ToolBand {
  enum Part { kCutter, kShank, kHolder };

  /// A circle above the tip, and which way the surface looks there, outwards and upwards.
  struct Ring {
    double radius, height;
    double outwards, upwards;
  };

  Ring low;
  Ring high;
  Part part;
};

/// The surface of a tool, from its tip upwards.
std::vector<ToolBand> toolBands(const ToolShape& shape);

}  // namespace zyn
