#include "objects/text/DimensionLayout.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace zyn {

namespace {

constexpr std::int32_t kAlongY = 1;
constexpr std::int32_t kAlongX = 2;
constexpr std::int32_t kAligned = 3;

/// Half the angle of an arrow head: 15 degrees, with the value of pi that drawings have had.
constexpr double kArrowHalfAngle = 3.1415 / 12;

PlanePoint stretch(const PlanePoint& point, PlaneScale scale) {
  return {point.x * scale.x, point.y * scale.y};
}

bool isFinite(const PlanePoint& point) { return std::isfinite(point.x) && std::isfinite(point.y); }

bool isFinite(const DimensionShape& shape) {
  const auto finitePoint = [](const PlanePoint& point) { return isFinite(point); };
  return isFinite(shape.text) &&
         std::all_of(
             shape.lines.begin(), shape.lines.end(),
             [](const Segment& line) { return isFinite(line.from) && isFinite(line.to); }) &&
         std::all_of(shape.arrows.begin(), shape.arrows.end(), [&](const Arrow& arrow) {
           return std::all_of(arrow.begin(), arrow.end(), finitePoint);
         });
}

/// An arrow that points against `inward`, a unit vector.
Arrow arrowAt(const PlanePoint& tip, const PlanePoint& inward, double size) {
  const PlanePoint side{-inward.y, inward.x};
  const PlanePoint back = tip + size * std::cos(kArrowHalfAngle) * inward;
  const PlanePoint half = size * std::sin(kArrowHalfAngle) * side;
  return {tip, back - half, back + half};
}

/// Lengths that are given in pixels, in units of the plane.
struct PixelLengths {
  PixelLengths(const DimensionSettings& settings, double pixel)
      : textDistance(settings.textDistance * pixel),
        overshoot(settings.overshoot * pixel),
        arrow(settings.arrowLength * pixel) {}

  double textDistance;
  double overshoot;
  double arrow;
};

/// A dimension line along x. One along y is the same with the axes exchanged.
DimensionShape layOutAlongX(const PlanePoint& first, const PlanePoint& second, double offset,
                            const PixelLengths& lengths) {
  const bool above = offset > 0;
  const double outward = above ? 1 : -1;
  const double line = (above ? std::max(first.y, second.y) : std::min(first.y, second.y)) + offset;
  const double end = line + outward * lengths.overshoot;
  const double inward = first.x > second.x ? -1 : 1;

  DimensionShape shape;
  shape.lines = {Segment{first, {first.x, end}}, Segment{second, {second.x, end}},
                 Segment{{first.x, line}, {second.x, line}}};
  shape.arrows = {arrowAt({first.x, line}, {inward, 0}, lengths.arrow),
                  arrowAt({second.x, line}, {-inward, 0}, lengths.arrow)};
  shape.alongAxis = true;
  shape.text = {(first.x + second.x) / 2, line + outward * lengths.textDistance};
  shape.reference = above ? 5 : 7;
  return shape;
}

PlanePoint exchanged(const PlanePoint& point) { return {point.y, point.x}; }

DimensionShape layOutAlongY(const PlanePoint& first, const PlanePoint& second, double offset,
                            const PixelLengths& lengths) {
  DimensionShape shape = layOutAlongX(exchanged(first), exchanged(second), offset, lengths);
  for (Segment& line : shape.lines) {
    line = {exchanged(line.from), exchanged(line.to)};
  }
  for (Arrow& arrow : shape.arrows) {
    arrow = {exchanged(arrow[0]), exchanged(arrow[2]), exchanged(arrow[1])};
  }
  shape.text = exchanged(shape.text);
  shape.reference = offset > 0 ? 8 : 6;
  return shape;
}

/// The anchor that keeps a text on the side of its position to which `away` points.
std::int32_t referenceTowards(const PlanePoint& away) {
  if (away.x > 0) {
    return away.y > 0 ? 1 : 4;
  }
  return away.y > 0 ? 2 : 3;
}

DimensionShape layOutAligned(const PlanePoint& first, const PlanePoint& second, double offset,
                             const PixelLengths& lengths) {
  const PlanePoint along = (1 / lengthOf(second - first)) * (second - first);
  const double side = offset < 0 ? -1 : 1;
  const PlanePoint away{-side * along.y, side * along.x};
  const PlanePoint lineStart = first + std::abs(offset) * away;
  const PlanePoint lineEnd = second + std::abs(offset) * away;

  DimensionShape shape;
  shape.lines = {Segment{first, lineStart + lengths.overshoot * away},
                 Segment{second, lineEnd + lengths.overshoot * away}, Segment{lineStart, lineEnd}};
  if (offset > 0) {
    shape.arrows = {arrowAt(lineStart, along, lengths.arrow),
                    arrowAt(lineEnd, -1 * along, lengths.arrow)};
  }
  shape.text = 0.5 * (lineStart + lineEnd) + lengths.textDistance * away;
  shape.reference = referenceTowards(away);
  return shape;
}

/// The distance between two parallels in the scaled plane that are 1 apart in model units.
double parallelStretch(const PlanePoint& along, PlaneScale scale) {
  return std::abs(scale.x * scale.y) * lengthOf(along) / lengthOf(stretch(along, scale));
}

std::optional<DimensionShape> layOut(const DimensionSettings& settings, double pixel,
                                     PlaneScale scale) {
  const PlanePoint first = stretch(settings.first, scale);
  const PlanePoint second = stretch(settings.second, scale);
  const PixelLengths lengths(settings, pixel);
  switch (settings.type) {
    case kAlongY:
      return layOutAlongY(first, second, settings.offset * scale.x, lengths);
    case kAlongX:
      return layOutAlongX(first, second, settings.offset * scale.y, lengths);
    case kAligned:
      return layOutAligned(
          first, second, settings.offset * parallelStretch(settings.second - settings.first, scale),
          lengths);
    default:
      return std::nullopt;
  }
}

}  // namespace

std::optional<DimensionShape> layOutDimension(const DimensionSettings& settings, double pixel,
                                              PlaneScale scale) {
  auto shape = layOut(settings, pixel, scale);
  return shape && isFinite(*shape) ? shape : std::nullopt;
}

}  // namespace zyn
