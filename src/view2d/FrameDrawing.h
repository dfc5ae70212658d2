#pragma once

#include "plot/Drawing.h"
#include "plot/PlotLayout.h"
#include "view2d/FrameLayout.h"

namespace zyn {

/// Where the frame of a graph lies in a picture.
struct FramePlace {
  PlanePoint origin;  ///< of the graph, in pixels from the lower left corner
  double x = 1.0;     ///< pixels for one of the layout, below 0 where an axis is mirrored
  double y = 1.0;
  double pixelScale = 1.0;  ///< pixels for one pixel of a screen
  const FontMetrics* metrics = nullptr;
  const PixelImage* pictureX = nullptr;  ///< of the titles
  const PixelImage* pictureY = nullptr;
};

/// What the frame of a graph shows. `shape` lays out its texts, which are given in UTF-8 by
/// `decode` of the bytes that the frame has.
DrawnLayer drawingOf(const FrameLayout& layout, const FramePlace& place, const ShapeText& shape,
                     const std::function<std::string(const std::string& bytes)>& decode);

}  // namespace zyn
