#pragma once

#include <string>
#include <vector>

#include "viewer/Plot.h"

namespace zyn::viewer {

/// A line, in plotting units; its width in pixels.
struct MarkLine {
  double x1;
  double y1;
  double x2;
  double y2;
  double width;
};

/// Which point of a text lies at its place, as IZYNGLTexte.setPosition counts them.
enum class TextAnchor : int { kLeftMiddle = 8 };

/// A text; its height in pixels.
struct MarkText {
  double x;
  double y;
  TextAnchor anchor;
  std::string text;
  int height;
};

/// One name of a legend, in plotting units: a short line and the text behind it.
struct LegendEntry {
  MarkLine line;
  MarkText text;
};

/// The names of the traces in rows above the graph, one for each trace as far as there is room.
std::vector<LegendEntry> legendOf(const Plot& plot, const PlotScale& scale);

}  // namespace zyn::viewer
