#pragma once

#include <array>
#include <cstddef>

#include "plot/Drawing.h"

namespace zyn {

/// Colours of a graph. As hosts number them: 0 light, 1 dark.
enum class PlotThemeKind { kLight, kDark };

struct PlotTheme {
  DrawColour background;  ///< of the whole picture
  DrawColour plot;        ///< of the plot area
  DrawColour text;
  DrawColour axis;
  DrawColour grid;
  DrawColour fineGrid;
  DrawColour legend;                 ///< behind its entries
  DrawColour hidden;                 ///< of entries whose series are hidden
  std::array<DrawColour, 10> cycle;  ///< of series without a colour, told apart by anybody
};

/// By how much opaque colours differ in lightness: 1 not at all, 21 as black and white do.
double contrast(const DrawColour& a, const DrawColour& b);

const PlotTheme& themeOf(PlotThemeKind kind);

}  // namespace zyn
