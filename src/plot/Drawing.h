#pragma once

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "core/PixelBox.h"
#include "core/PixelImage.h"
#include "core/PlanePoint.h"
#include "graph/SeriesShapes.h"
#include "objects/text/FontFace.h"
#include "objects/text/ShapedText.h"
#include "trace/PathCache.h"

namespace zyn {

/// What a graph looks like as plain values, for whoever puts it out: OpenGL, or a vector file. All
/// places and sizes are in pixels of the picture, from its lower left corner to the right and
/// upwards; edges of pixels are whole numbers.

/// Components and opacity, 0 to 1.
struct DrawColour {
  double r = 0.0;
  double g = 0.0;
  double b = 0.0;
  double alpha = 1.0;

  bool operator==(const DrawColour&) const = default;
};

struct Stroke {
  DrawColour colour{};
  double width = 1.0;
  bool isSmooth = false;         ///< with soft edges on a screen; vector files know no other
  std::vector<double> dashes{};  ///< lengths drawn and left out by turns; none: a full line
  double leastDot = 0.0;         ///< of points on their own

  double dot() const { return std::max(width, leastDot); }
};

struct DrawnLines {
  Stroke stroke;
  PixelLines lines;
};

/// The line through all points of a series, of which whoever draws it takes what can be seen.
struct DrawnTrace {
  Stroke stroke;
  std::shared_ptr<const void> owner;  ///< keeps what the others point to
  const PointSequence* points = nullptr;
  const RunBoxes* boxes = nullptr;  ///< of the points
  PathCache* cache = nullptr;       ///< of the points
  WindowMapping mapping{};
};

/// What lies between lines, which are as areaOf makes them, and a height.
struct DrawnArea {
  DrawColour colour{};
  PixelLines edge;
  double base = 0.0;
};

/// Convex ones, closed by themselves.
struct DrawnPolygons {
  DrawColour colour{};
  PixelLines outlines;
};

struct DrawnBoxes {
  DrawColour colour{};
  std::vector<PixelBox> boxes;
};

/// As hosts number them.
enum class MarkerShape { kNone, kCircle, kSquare, kTriangle, kDiamond, kCross, kPlus };

struct DrawnMarkers {
  MarkerShape shape = MarkerShape::kCircle;
  double size = 7.0;  ///< width and height
  DrawColour colour{};
  bool isSmooth = true;
  double lineWidth = 1.0;  ///< of cross and plus
  std::vector<PlanePoint> middles{};
};

struct DrawnText {
  std::string text;                          ///< UTF-8
  FontFace face{};                           ///< in which it was laid out
  std::shared_ptr<const ShapedText> shaped;  ///< as it was laid out
  double emHeight = 12.0;
  PlanePoint start{};      ///< of the baseline
  bool isUpright = false;  ///< reads upwards
  DrawColour colour{};
};

/// A picture stretched to a box.
struct DrawnImage {
  std::shared_ptr<const PixelImage> image;
  PixelBox box{};
  bool isSmooth = false;  ///< interpolated between the middles of its pixels
};

using DrawnItem = std::variant<DrawnLines, DrawnTrace, DrawnArea, DrawnPolygons, DrawnBoxes,
                               DrawnMarkers, DrawnText, DrawnImage>;

/// Drawn in order, nothing outside of the clip.
struct DrawnLayer {
  std::optional<PixelBox> clip{};
  std::vector<DrawnItem> items;
};

using Drawing = std::vector<DrawnLayer>;

}  // namespace zyn
