#include "objects/dimension/CoteLayout.h"

#include <algorithm>
#include <cmath>

#include "core/VectorMath.h"
#include "objects/dimension/CoteShape.h"

namespace zyn {

namespace {

constexpr double kOvershootPX = 5.0;   ///< of extension lines past the dimension line
constexpr double kPictureGapPX = 4.0;  ///< between picture and text
constexpr double kGripPX = 10.0;       ///< side of the square around a measured point
constexpr double kCoverPX = 1.0;       ///< to which lines are covered, to all sides

/// How far a line may lean, in pixels, and still be drawn as a horizontal or vertical one.
constexpr double kStraightPX = 0.5;

/// Of a length: below it there is but rounding.
constexpr double kRounding = 1e-9;

/// Beyond it OpenGL, which computes in single precision, has no room for a matrix product.
constexpr double kLargest = 1e18;

TextBox operator*(double factor, const TextBox& box) {
  return {factor * box.left, factor * box.right, factor * box.bottom, factor * box.top};
}

/// Directions in which a rectangle lies, each as long as a pixel.
struct Axes {
  Vecteur right;
  Vecteur up;

  Vecteur step(const PlanePoint& pixels) const { return pixels.x * right + pixels.y * up; }
};

Axes screenAxes(const PixelFrame& frame) { return {frame.right(), frame.up()}; }

Quad cornersOf(const TextBox& box, const Point& origin, const Axes& axes) {
  return {origin + axes.step({box.left, box.bottom}), origin + axes.step({box.right, box.bottom}),
          origin + axes.step({box.right, box.top}), origin + axes.step({box.left, box.top})};
}

Quad squareAround(const Point& centre, double side, const PixelFrame& frame) {
  const double half = side / 2;
  return cornersOf({-half, half, -half, half}, centre, screenAxes(frame));
}

Point between(const Point& a, const Point& b) { return a + 0.5 * (b - a); }

/// A step of so many pixels along a vector.
Vecteur pixelsAlong(const Vecteur& direction, double pixels, const PixelFrame& frame) {
  return pixels / frame.pixelsOf(direction) * direction;
}

/// An end of the dimension line.
struct Foot {
  Point measured;
  Point projected;  ///< the measured point, into the plane
  Point point;
  PixelFrame frame;       ///< at the foot
  PixelFrame pointFrame;  ///< at the measured point
};

/// Where the dimension line runs.
struct DimensionLine {
  const ScreenMap& screen;
  CotePlane plane;
  Vecteur outward;  ///< across the line, away from the measured points; length 1
  Vecteur towards;  ///< along it, from the first to the second foot; length 1
  double length;
  std::array<Foot, 2> feet;
  Point anchor;  ///< of the text
  PixelFrame anchorFrame;

  double pixelsLong() const {
    return length * (feet[0].frame.pixelsOf(towards) + feet[1].frame.pixelsOf(towards)) / 2;
  }
};

bool isOutwardLeft(const CoteShape& shape) {
  return shape.type == CoteShape::kAligned ? !(shape.offset < 0) : shape.offset > 0;
}

std::optional<DimensionLine> measure(const CoteShape& shape, const ScreenMap& screen) {
  const CotePlane plane(shape);
  const Vecteur span = shape.second - shape.first;
  const double along = dot(span, plane.along);
  const double across = dot(span, plane.across);
  const bool left = isOutwardLeft(shape);
  const double height = shape.offset + (left ? std::max(0.0, across) : std::min(0.0, across));
  const Vecteur towards = along < 0 ? -plane.along : plane.along;
  const double length = std::abs(along);

  const Point foot1 = shape.first + height * plane.across;
  const Point foot2 = foot1 + along * plane.along;
  const Point anchor = foot1 + (length / 2 + shape.along) * towards;
  const auto atFirst = screen.at(shape.first);
  const auto atSecond = screen.at(shape.second);
  const auto atFoot1 = screen.at(foot1);
  const auto atFoot2 = screen.at(foot2);
  const auto atAnchor = screen.at(anchor);
  if (!atFirst || !atSecond || !atFoot1 || !atFoot2 || !atAnchor) {
    return std::nullopt;
  }
  const Point projected = shape.first + along * plane.along + across * plane.across;
  return DimensionLine{screen,
                       plane,
                       left ? plane.across : -plane.across,
                       towards,
                       length,
                       {Foot{shape.first, shape.first, foot1, *atFoot1, *atFirst},
                        Foot{shape.second, projected, foot2, *atFoot2, *atSecond}},
                       anchor,
                       *atAnchor};
}

// --- lines and arrows ----------------------------------------------------------------------------

/// Around a line that leads by `lean` over the screen, also where that is nowhere.
Quad coverOf(const Point& from, const Point& to, const PlanePoint& lean, const ScreenMap& screen) {
  const double length = lengthOf(lean);
  const PlanePoint along = length > 0 ? kCoverPX / length * lean : PlanePoint{kCoverPX, 0};
  const PlanePoint across{-along.y, along.x};
  const auto start = screen.at(from);
  const auto end = screen.at(to);
  if (!start || !end) {
    return {from, from, to, to};
  }
  const Axes first = screenAxes(*start);
  const Axes last = screenAxes(*end);
  return {from - first.step(along) - first.step(across), to + last.step(along) - last.step(across),
          to + last.step(along) + last.step(across), from - first.step(along) + first.step(across)};
}

void addLine(CoteLayout& layout, const Point& from, const Point& to, const PixelFrame& frame,
             const ScreenMap& screen) {
  const PlanePoint lean = frame.onScreen(to - from);
  layout.lines.push_back({from, to,
                          std::abs(lean.x) > kStraightPX && std::abs(lean.y) > kStraightPX,
                          coverOf(from, to, lean, screen)});
}

/// From the measured point into the plane, and in it past the dimension line.
void addExtension(CoteLayout& layout, const DimensionLine& line, const Foot& foot) {
  const Vecteur rise = foot.projected - foot.measured;
  const double largest = (line.feet[1].measured - line.feet[0].measured).norm();
  if (rise.norm() > kRounding * largest) {
    addLine(layout, foot.measured, foot.projected, foot.frame, line.screen);
  }
  const Point end = foot.point + pixelsAlong(line.outward, kOvershootPX, foot.frame);
  addLine(layout, foot.projected, end, foot.frame, line.screen);
}

/// A length in pixels, which hosts may set to anything.
double pixelCount(std::int32_t given) { return std::max(given, 0); }

bool fitArrows(const CoteShape& shape, const DimensionLine& line) {
  return shape.arrowsInside &&
         line.pixelsLong() >= 2 * pixelCount(shape.arrowLength) + pixelCount(shape.arrowWidth);
}

/// From foot to foot, on to the text where that stands outside, and on as a tail behind arrows that
/// stand outside.
void addDimensionLine(CoteLayout& layout, const CoteShape& shape, const DimensionLine& line,
                      bool arrowsInside) {
  const double text = line.length / 2 + shape.along;
  const auto tail = [&](const Foot& foot) {
    return arrowsInside ? 0.0
                        : 2 * pixelCount(shape.arrowLength) / foot.frame.pixelsOf(line.towards);
  };
  const double start = std::min(text, -tail(line.feet[0]));
  const double end = std::max(text, line.length + tail(line.feet[1]));
  const Point& origin = line.feet[0].point;
  addLine(layout, origin + start * line.towards, origin + end * line.towards, line.anchorFrame,
          line.screen);
}

/// An arrow head with its tip on the foot and its base in the direction of `backwards`.
void addArrow(CoteLayout& layout, const CoteShape& shape, const Foot& foot,
              const Vecteur& backwards, const Vecteur& across) {
  const Point base = foot.point + pixelsAlong(backwards, pixelCount(shape.arrowLength), foot.frame);
  const Vecteur half = pixelsAlong(across, pixelCount(shape.arrowWidth) / 2, foot.frame);
  layout.arrows.push_back({foot.point, base - half, base + half});
}

std::vector<Quad> gripsOf(const CoteShape& shape, const Foot& foot, const Vecteur& backwards) {
  std::vector<Quad> grips = {squareAround(foot.measured, kGripPX, foot.pointFrame)};
  const double length = pixelCount(shape.arrowLength);
  if (length > 0) {
    const Point middle = foot.point + pixelsAlong(backwards, length / 2, foot.frame);
    grips.push_back(
        squareAround(middle, std::max(length, pixelCount(shape.arrowWidth)), foot.frame));
  }
  return grips;
}

void addEnds(CoteLayout& layout, const CoteShape& shape, const DimensionLine& line,
             bool arrowsInside) {
  for (const std::size_t end : {0U, 1U}) {
    const Foot& foot = line.feet[end];
    const Vecteur backwards = (end == 0) == arrowsInside ? line.towards : -line.towards;
    addExtension(layout, line, foot);
    if (shape.arrowLength > 0) {
      addArrow(layout, shape, foot, backwards, line.plane.across);
    }
    layout.grips[end] = gripsOf(shape, foot, backwards);
  }
}

// --- text and picture ----------------------------------------------------------------------------

/// The unit vector, in pixels, that stands square on a line on the screen, on the side of
/// `outward`; where the line is seen end on, that of `outward` itself.
PlanePoint screenNormal(const PixelFrame& frame, const Vecteur& along, const Vecteur& outward) {
  const PlanePoint line = frame.onScreen(along);
  const PlanePoint side = frame.onScreen(outward);
  const double lineLength = lengthOf(line);
  const double sideLength = lengthOf(side);
  if (lineLength <= kRounding * sideLength) {
    return 1 / sideLength * side;
  }
  const PlanePoint normal = 1 / lineLength * PlanePoint{-line.y, line.x};
  const double agreement = normal.x * side.x + normal.y * side.y;
  const bool isAmbiguous = std::abs(agreement) <= kRounding * lineLength;
  const double decisive = !isAmbiguous ? agreement : normal.y != 0 ? normal.y : normal.x;
  return decisive < 0 ? -1 * normal : normal;
}

/// Where text and picture go.
struct Spot {
  const CoteShape& shape;
  CotePlane plane;
  Point point;
  PixelFrame frame;
  const DimensionLine* line = nullptr;

  Vecteur upwards() const { return cross(plane.normal, plane.reading); }

  Axes axes(bool facesViewer) const {
    return facesViewer
               ? screenAxes(frame)
               : Axes{pixelsAlong(plane.reading, 1, frame), pixelsAlong(upwards(), 1, frame)};
  }

  /// From the line, in pixels along the axes.
  PlanePoint outward(bool facesViewer) const {
    return facesViewer ? screenNormal(frame, line->towards, line->outward)
                       : PlanePoint{0, dot(upwards(), line->outward) < 0 ? -1.0 : 1.0};
  }

  /// From the origin of a box (pixels) to what of it lies at the point. Beside a line it is moved
  /// out until all of `block` lies behind the text's distance.
  PlanePoint anchor(const TextBox& box, const TextBox& block, bool facesViewer) const {
    if (!line) {
      return anchorOf(box, shape.reference);
    }
    const PlanePoint away = outward(facesViewer);
    const double reach =
        (std::abs(away.x) * (block.right - block.left) + std::abs(away.y) * block.height()) / 2;
    constexpr std::int32_t kCentre = 9;
    return anchorOf(block, kCentre) - (shape.textDistance + reach) * away;
  }

  Point originOf(const TextBox& box, const TextBox& block, bool facesViewer) const {
    return point - axes(facesViewer).step(anchor(box, block, facesViewer));
  }
};

/// Around a text (pixels) and the picture to its left.
TextBox blockOf(const TextBox& text, const CoteContent& content) {
  if (!(content.pictureWidth > 0)) {
    return text;
  }
  const double middle = (text.bottom + text.top) / 2;
  const double half = std::max(text.height(), content.pictureHeight) / 2;
  return {text.left - kPictureGapPX - content.pictureWidth, text.right, middle - half,
          middle + half};
}

std::optional<PlacedText> placeText(const Spot& spot, const CoteContent& content) {
  const double height = content.size.inPixels(spot.frame.pixel(), content.resolution);
  const double em = height / content.text.height();
  if (!(em > 0) || content.text.right <= content.text.left) {
    return std::nullopt;
  }
  const bool facesViewer = spot.shape.alwaysReadable;
  const TextBox box = em * content.text;
  const Axes axes = spot.axes(facesViewer);
  const Point origin = spot.originOf(box, blockOf(box, content), facesViewer);
  return PlacedText{origin, em * axes.right,         em * axes.up, cornersOf(box, origin, axes),
                    height, content.size.isInModel()};
}

/// To the left of the text, or in its place where there is none.
PlacedPicture placePicture(const Spot& spot, const CoteContent& content,
                           const std::optional<PlacedText>& text) {
  const TextBox box{0, content.pictureWidth, 0, content.pictureHeight};
  const Axes axes = screenAxes(spot.frame);
  if (!text) {
    const Point origin = spot.originOf(box, box, true);
    return {origin, {}, cornersOf(box, origin, axes)};
  }
  const Point at = between(text->corners[0], text->corners[3]);
  const PlanePoint offset{-kPictureGapPX - content.pictureWidth, -content.pictureHeight / 2};
  return {at, offset, cornersOf(box, at + axes.step(offset), axes)};
}

void addContent(CoteLayout& layout, const Spot& spot, const CoteContent& content) {
  layout.anchor = spot.point;
  layout.text = placeText(spot, content);
  if (content.pictureWidth > 0) {
    layout.picture = placePicture(spot, content, layout.text);
  }
}

// --- what OpenGL can draw ------------------------------------------------------------------------

bool isDrawable(const Point& p) {
  return std::abs(p.x) <= kLargest && std::abs(p.y) <= kLargest && std::abs(p.z) <= kLargest;
}

template <class Points>
bool areDrawable(const Points& points) {
  return std::all_of(points.begin(), points.end(), [](const Point& p) { return isDrawable(p); });
}

bool isDrawable(const CoteLayout& layout) {
  const auto isLineDrawable = [](const CoteLine& line) {
    return isDrawable(line.from) && isDrawable(line.to) && areDrawable(line.cover);
  };
  const auto areGripsDrawable = [](const std::vector<Quad>& grips) {
    return std::all_of(grips.begin(), grips.end(), areDrawable<Quad>);
  };
  return isDrawable(layout.anchor) &&
         std::all_of(layout.lines.begin(), layout.lines.end(), isLineDrawable) &&
         std::all_of(layout.arrows.begin(), layout.arrows.end(), areDrawable<CoteArrow>) &&
         std::all_of(layout.grips.begin(), layout.grips.end(), areGripsDrawable) &&
         (!layout.text || areDrawable(layout.text->corners)) &&
         (!layout.picture || areDrawable(layout.picture->corners));
}

std::optional<CoteLayout> checked(CoteLayout layout) {
  return isDrawable(layout) ? std::optional(std::move(layout)) : std::nullopt;
}

}  // namespace

std::optional<CoteLayout> layOutCote(const CoteShape& shape, const CoteContent& content,
                                     const ScreenMap& screen) {
  CoteLayout layout;
  if (!shape.isLine()) {
    if (const auto frame = screen.at(shape.position)) {
      addContent(layout, {shape, CotePlane(shape), shape.position, *frame}, content);
      return checked(std::move(layout));
    }
    return std::nullopt;
  }
  const auto line = measure(shape, screen);
  if (!line) {
    return std::nullopt;
  }
  const bool arrowsInside = fitArrows(shape, *line);
  addEnds(layout, shape, *line, arrowsInside);
  addDimensionLine(layout, shape, *line, arrowsInside);
  addContent(layout, {shape, line->plane, line->anchor, line->anchorFrame, &*line}, content);
  return checked(std::move(layout));
}

}  // namespace zyn
