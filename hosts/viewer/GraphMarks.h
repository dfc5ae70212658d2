#pragma once

#include <string>
#include <vector>

#include "viewer/Plot.h"

namespace zyn::viewer {

/// A line of a graph's frame, in plotting units; its width in pixels.
struct MarkLine {
  double x1;
  double y1;
  double x2;
  double y2;
  double width;
  bool isGrid = false;
};

/// Which point of a text lies at its place, as IZYNGLTexte.setPosition counts them.
enum class TextAnchor : int {
  kBottomLeft = 1,
  kTopRight = 3,
  kRightMiddle = 6,
  kTopCentre = 7,
  kLeftMiddle = 8,
};

/// A text of a graph's frame; its height in pixels.
struct MarkText {
  double x;
  double y;
  TextAnchor anchor;
  std::string text;
  int height;
};

/// Axes, graduations, numbers and titles.
struct GraphMarks {
  std::vector<MarkLine> lines;
  std::vector<MarkText> texts;
};

/// The frame of a graph as a graph view draws it, for pictures made without one. `pixel` is the
/// size of a pixel in plotting units.
GraphMarks graphMarks(const Plot& plot, const PlotScale& scale, double pixel);

/// One name of a legend, in plotting units: a short line and the text behind it.
struct LegendEntry {
  MarkLine line;
  MarkText text;
};

/// The names of the traces in rows above the graph, one for each trace as far as there is room.
std::vector<LegendEntry> legendOf(const Plot& plot, const PlotScale& scale);

}  // namespace zyn::viewer
