#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "graph/Ticks.h"
#include "plot/Drawing.h"
#include "plot/PlotAxis.h"
#include "plot/PlotBar.h"
#include "plot/PlotTheme.h"

namespace zyn {

/// Lays out a text (UTF-8) in a font.
using ShapeText =
    std::function<std::shared_ptr<const ShapedText>(std::string_view text, const FontFace& face)>;

/// What a graph is laid out for.
struct PlotPage {
  double width = 0.0;  ///< pixels
  double height = 0.0;
  double pixelScale = 1.0;  ///< pixels for one pixel of a screen of 96 dots per inch
  ShapeText shape;
};

/// Room around the plot area, in pixels of a screen; 0: what axes and texts need.
struct PlotMargins {
  double left = 0.0;
  double top = 0.0;
  double right = 0.0;
  double bottom = 0.0;
};

/// What a graph says around its plot area.
struct PlotTexts {
  std::string title;     ///< UTF-8
  std::string subtitle;  ///< UTF-8
  double points = 9.0;   ///< size of the font of axes; titles are larger
};

/// An axis to be laid out.
struct ShownAxis {
  const PlotAxis* axis = nullptr;
  ValueRange range{};  ///< that it shows now
  bool isVisible = true;
};

/// An axis in its place.
struct AxisLayout {
  AxisScale scale;  ///< in pixels from the left, or from the lower edge of the picture
  Ticks ticks;
  PixelBox box;  ///< that takes the mouse: line, labels, title; empty for one that is not visible
};

/// As hosts number them.
enum class LegendPlace {
  kWhereLeastIsHidden,
  kBottomLeft,
  kBottomRight,
  kTopRight,
  kTopLeft,
  kRight,
  kBelow
};

/// What stands for a series in the legend: a piece of it, drawn in a box.
struct LegendEntry {
  std::string name;  ///< UTF-8
  bool isShown = true;
  std::function<void(const PixelBox& box, DrawnLayer& layer)> drawSample;
};

struct LegendSettings {
  bool isVisible = false;
  LegendPlace place = LegendPlace::kWhereLeastIsHidden;
  /// Where it lay before, and stays while it hides hardly more there than elsewhere.
  std::optional<PlanePoint> spot{};
};

/// What is asked for.
struct PlotInput {
  const PlotPage* page = nullptr;
  const PlotTheme* theme = nullptr;
  PlotMargins margins{};
  PlotTexts texts{};
  std::vector<ShownAxis> axes;  ///< those of one side from the plot area outwards
  std::vector<PlotBar> bars{};  ///< on the right of the axes there
  LegendSettings legend{};
  std::vector<LegendEntry> entries;
  /// How much of what is plotted a box would hide, for a plot area with these axes.
  std::function<double(const PixelBox& box, const PixelBox& area,
                       const std::vector<AxisLayout>& axes)>
      hiddenBy;
};

/// A graph without what is plotted.
struct PlotLayout {
  PixelBox area;                 ///< in which is plotted
  std::vector<AxisLayout> axes;  ///< as they were asked for
  PixelBox legend;               ///< empty where there is none
  /// Where it lies by itself within the plot area: from 0 to 1 of what it leaves free.
  std::optional<PlanePoint> legendSpot{};
  std::vector<PixelBox> entries;  ///< in the legend, as they were asked for
  Drawing behind;                 ///< a layer of grounds: picture, plot area; then grids
  Drawing inFront;                ///< axes, texts, legend
};

/// Lays a graph out in any size: the plot area gets what axes and texts leave, no text leaves the
/// picture or overlaps another; where there is no room, texts are left out, the least important
/// first, and the plot area is never empty.
PlotLayout layOutPlot(const PlotInput& input);

}  // namespace zyn
