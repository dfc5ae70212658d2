#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "glcontext/StateGuards_gl.h"
#include "plotview/PlotFrame.h"
#include "scene/CListTrace_com.h"
#include "view/CursorGlyph_gl.h"
#include "view2d/CParamsVue2D.h"

namespace zyn {

/// How a graph is drawn into the current context.
struct PlotPass {
  std::optional<Float4> flat{};  ///< the background, in place of that of the theme
  PicturePart part{};            ///< that the viewport shows
  ListPass list{};  ///< for drawable objects; the height of the view is set by the pass
};

/// The view in which drawable objects meet the first axes at the bottom and on the left of a graph
/// that is laid out: its plotting units are pixels.
ScaledView mainPlotView(const Plot& plot, const PlotFrame& frame);

/// A graph that is laid out, as it is to be drawn, whatever becomes of it meanwhile.
struct PlotPicture {
  PlotPicture(const Plot& plot, const PlotFrame& frame);

  PlanePoint size;
  PlotThemeKind theme;
  std::shared_ptr<const PlotLayout> layout;
  std::vector<PlannedEntry> entries;
  PlotPlace place;  ///< of the first axes at the bottom and on the left
  Drawing cursors;
};

/// Clears, then draws background, grid, what is plotted, the objects of the view's own list, axes,
/// texts and cursors. Objects may do anything meanwhile, change the graph included. The projection
/// is given back.
void drawPlot(const PlotPicture& picture, CListTrace& drawList, const PlotPass& pass);

/// Whether one of the drawable objects that a graph shows may take fonts.
bool holdsTexts(const Plot& plot);

/// Draws the cursor glyph at a point of those axes.
void drawPlotCursor(const Plot& plot, const PlotFrame& frame, const CursorGlyph& glyph,
                    const std::array<double, 2>& position);

/// Draws what can be picked of a graph by itself: entries with names, which `nameOf` tells.
void drawPlotNames(const PlotFrame& frame,
                   const std::function<std::int32_t(const PlotItem&)>& nameOf,
                   const PicturePart& part);

/// Whether objects are to be drawn for it: the current context is then to be one with a viewport as
/// large as the picture.
bool showsObjects(const Plot& plot, const CListTrace& drawList);

/// The whole graph as values, which drawPlot would draw.
Drawing drawingOf(const PlotPicture& picture, CListTrace& drawList, const ListPass& objects);

}  // namespace zyn
