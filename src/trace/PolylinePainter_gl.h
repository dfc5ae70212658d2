#pragma once

#include <memory>

#include "core/PixelBox.h"
#include "trace/PathCache.h"
#include "trace/TraceLists_gl.h"

namespace zyn {

/// What a trace looks like.
struct LineStyle {
  double r = 0.0;  ///< colour components and alpha, 0 to 1
  double g = 0.0;
  double b = 0.0;
  double alpha = 1.0;
  double width = 1.0;       ///< pixels of a screen; 1 where it is not above 0
  double pixelScale = 1.0;  ///< pixels for one pixel of a screen: above 1 in fine pictures
  bool isStable = false;    ///< TraceInWindow::isStable
};

/// Draws a line through the points in the current context, unlit; points without a neighbour as
/// points of the line's width. What makes no difference to the picture is left out; all points are
/// drawn for a feedback buffer and into a display list, where they are relative to the model-view
/// matrix under which it is called. `boxes` are those of `points`, `cache` belongs to them. The
/// state is left as it was.
void drawPolyline3D(const PointSequence& points, const RunBoxes& boxes, const LineStyle& style,
                    PathCache& cache);

/// The same in the plane z = 0. Lines may lead as far away as numbers do.
void drawPolyline2D(const PointSequence& points, const RunBoxes& boxes, const LineStyle& style,
                    PathCache& cache);

/// Where a trace in space may be kept by the current context.
struct KeptTrace {
  TraceLists& lists;
  const std::shared_ptr<DisplayLists>& home;
};

/// Draws as drawPolyline3D does, from kept lists of all points as long as single precision tells
/// where these are: a view that turns has nothing to choose anew.
void drawKeptPolyline3D(const PointSequence& points, const RunBoxes& boxes, const LineStyle& style,
                        PathCache& cache, const KeptTrace& kept);

/// Draws as drawPolyline2D does with a mapping of its own, to pixels, which the current matrices
/// take to the window; `seen` is what can be seen of them. The current line width, smoothness and
/// colour count, of which `alpha` is the opacity.
void drawPolylineInPixels(const TraceInWindow& trace, const PixelBox& seen, double alpha,
                          PathCache& cache);

}  // namespace zyn
