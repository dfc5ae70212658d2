#pragma once

#include <array>
#include <optional>
#include <vector>

#include "core/PlanePoint.h"
#include "core/Point.h"
#include "core/ScreenMap.h"
#include "core/Vecteur.h"
#include "objects/dimension/CoteShape.h"
#include "objects/text/FontMetrics.h"

namespace zyn {

/// Corners of a rectangle, counter-clockwise from its lower left one.
using Quad = std::array<Point, 4>;

struct CoteLine {
  Point from;
  Point to;
  bool isSlanted = false;  ///< neither horizontal nor vertical on the screen
  Quad cover{};            ///< around it
};

/// Corners of a filled arrow head, its tip first.
using CoteArrow = std::array<Point, 3>;

/// What a dimension shows beside its lines.
struct CoteContent {
  TextBox text;  ///< em heights; without width for no text
  FontSize size;
  double resolution = 72.0;   ///< dots per inch
  double pictureWidth = 0.0;  ///< pixels; 0 for no picture
  double pictureHeight = 0.0;
};

/// A text in space.
struct PlacedText {
  Point origin;            ///< start of the baseline
  Vecteur right;           ///< an em along the baseline
  Vecteur up;              ///< an em upwards
  Quad corners;            ///< of its box
  double height = 0.0;     ///< of its line, pixels
  bool isInModel = false;  ///< whether that depends on the view
};

/// A picture, parallel to the screen.
struct PlacedPicture {
  Point at;
  PlanePoint offset;  ///< of the picture's lower left corner from there, pixels
  Quad corners;
};

/// A dimension laid out for a screen.
struct CoteLayout {
  std::vector<CoteLine> lines;
  std::vector<CoteArrow> arrows;
  Point anchor;                    ///< by which text and picture are placed
  std::optional<PlacedText> text;  ///< none for an empty one or a height that is not above 0
  std::optional<PlacedPicture> picture;

  /// What can be taken hold of at each end: squares around the measured point and the arrow head.
  std::array<std::vector<Quad>, 2> grips;
};

/// Lays a dimension out. None where the screen or the shape leaves nothing that can be drawn:
/// a map that cannot be turned round, coordinates that are not finite or beyond single precision.
std::optional<CoteLayout> layOutCote(const CoteShape& shape, const CoteContent& content,
                                     const ScreenMap& screen);

}  // namespace zyn
