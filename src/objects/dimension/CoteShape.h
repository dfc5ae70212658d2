#pragma once

#include <cstdint>

#include "core/Point.h"
#include "core/Vecteur.h"

namespace zyn {

/// What a dimension measures and where it is drawn, in space. Lengths are in model units unless
/// they say otherwise.
struct CoteShape {
  enum Type : std::int32_t { kVertical = 1, kHorizontal = 2, kAligned = 3 };

  /// 1 vertical, 2 horizontal, 3 along the points; any other value: a text only. Vertical and
  /// horizontal are those of the plane, seen from its normal's side: along y and x in a plane
  /// parallel to these, else with z upright.
  std::int32_t type = 0;

  Point position;              ///< of the text where there is nothing else
  std::int32_t reference = 0;  ///< what of the text lies there, see anchorOf

  Point first;  ///< measured points; the plane goes through the first
  Point second;

  /// Of the dimension line, projected into the plane; null for the one that the type gives.
  Vecteur direction{0, 0, 0};
  Vecteur normal;  ///< of the plane; null counts as +Z

  /// Of the dimension line from the points, positive to the left of its direction.
  double offset = 0.0;

  /// Of the text from the middle of the dimension line, towards the second point.
  double along = 0.0;

  std::int32_t textDistance = 15;  ///< of the text from the dimension line, pixels
  std::int32_t arrowLength = 15;   ///< pixels
  std::int32_t arrowWidth = 5;     ///< pixels
  bool arrowsInside = true;        ///< inside the dimension line, where there is room
  bool alwaysReadable = true;      ///< the text faces the viewer, instead of lying in the plane

  /// Whether there is a dimension line.
  bool isLine() const { return type >= kVertical && type <= kAligned; }
};

/// The plane in which a dimension lies, as vectors of length 1.
struct CotePlane {
  explicit CotePlane(const CoteShape& shape);

  Vecteur normal;
  Vecteur along;    ///< direction of the dimension line
  Vecteur across;   ///< to the left of it
  Vecteur reading;  ///< direction in which text lies that does not face the viewer
};

}  // namespace zyn
