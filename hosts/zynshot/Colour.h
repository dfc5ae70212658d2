#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zyn::shot {

/// Red, green and blue, 0 to 1.
struct Colour {
  double r = 0.0;
  double g = 0.0;
  double b = 0.0;

  bool operator==(const Colour&) const = default;
};

struct ColourAndAlpha {
  Colour colour;
  std::optional<double> alpha;  ///< 0 invisible, 1 opaque; none: not stated
};

/// Reads "#rgb", "#rrggbb", a name of colourNames(), or "r,g,b" with all three from 0 to 1, or else
/// from 0 to 255. Throws UsageError for anything else.
Colour parseColour(std::string_view text);

/// As parseColour, with ",alpha" (0 to 1) allowed behind it.
ColourAndAlpha parseColourAndAlpha(std::string_view text);

/// The names known, separated by blanks.
std::string colourNames();

}  // namespace zyn::shot
