#pragma once

#include "trace/PathCache.h"

namespace zyn {

/// What a trace looks like.
struct LineStyle {
  double r = 0.0;  ///< colour components and alpha, 0 to 1
  double g = 0.0;
  double b = 0.0;
  double alpha = 1.0;
  double width = 1.0;  ///< in widths of the view's plain line
};

/// Draws a line through the points in the current context, unlit; points without a neighbour as
/// points of the line's width. What makes no difference to the picture is left out. `boxes` are
/// those of `points`, `cache` belongs to them. The state is left as it was.
void drawPolyline3D(const PointSequence& points, const RunBoxes& boxes, const LineStyle& style,
                    PathCache& cache);

/// The same in the plane z = 0. Lines may lead as far away as numbers do.
void drawPolyline2D(const PointSequence& points, const RunBoxes& boxes, const LineStyle& style,
                    PathCache& cache);

}  // namespace zyn
