#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "core/PlanePoint.h"

namespace zyn {

/// How the plane of a 2D view is stretched against model units.
struct PlaneScale {
  double x = 1.0;
  double y = 1.0;
};

/// What a linear dimension measures and how it is drawn.
struct DimensionSettings {
  std::int32_t type = 0;           ///< 1 along y, 2 along x, 3 along the points; any other: none
  PlanePoint first;                ///< measured points, model units
  PlanePoint second;               ///< model units
  double offset = 0.0;             ///< signed, of the dimension line from the points, model units
  std::int32_t textDistance = 15;  ///< of the text from the dimension line, pixels
  std::int32_t overshoot = 5;      ///< of the extension lines past the dimension line, pixels
  std::int32_t arrowLength = 15;   ///< pixels

  bool isDimension() const { return type >= 1 && type <= 3; }
};

struct Segment {
  PlanePoint from;
  PlanePoint to;
};

/// Corners of a filled arrow head, counter-clockwise from its tip.
using Arrow = std::array<PlanePoint, 3>;

/// A linear dimension, in model units times the plane's scale.
struct DimensionShape {
  std::array<Segment, 3> lines;  ///< extension lines of the first and the second point, dimension
                                 ///< line
  std::vector<Arrow> arrows;     ///< at the ends of the dimension line, or none
  bool alongAxis = false;        ///< all lines are parallel to the axes
  PlanePoint text;               ///< position of the text
  std::int32_t reference = 0;    ///< the point of the text's box that lies there, see anchorOf
};

/// Lays a dimension out where one pixel is `pixel` units of the scaled plane. None for a type that
/// is no dimension, and where points, offset or pixel leave no finite shape (an aligned dimension
/// of two equal points, infinite or not-a-number coordinates).
std::optional<DimensionShape> layOutDimension(const DimensionSettings& settings, double pixel,
                                              PlaneScale scale = {});

}  // namespace zyn
