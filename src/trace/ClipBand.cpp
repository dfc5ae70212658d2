#include "trace/ClipBand.h"

#include <algorithm>
#include <cmath>

namespace zyn {

namespace {

/// The width of the band in pixels: far more than that of any line.
constexpr double kBand = 4096;

/// Where the form is not less than a value.
AffineForm atLeast(double low, AffineForm form) {
  form.constant -= low;
  return form;
}

/// a * b - c * d, exact to the last digits even where the products are almost equal.
double differenceOfProducts(double a, double b, double c, double d) {
  const double cd = c * d;
  return std::fma(a, b, -cd) + std::fma(-c, d, cd);
}

/// Zero on the straight line through two points; scaled so that products stay finite.
AffineForm lineThrough(const PlanePoint& p, const PlanePoint& q) {
  const double size =
      std::max({1.0, std::fabs(p.x), std::fabs(p.y), std::fabs(q.x), std::fabs(q.y)});
  const double scale = std::ldexp(1.0, -std::ilogb(size));
  return {p.y * scale - q.y * scale, q.x * scale - p.x * scale, 0,
          differenceOfProducts(p.x * scale, q.y, q.x * scale, p.y)};
}

/// Calculated from the lines, not along the segment, whose ends may be too far away to tell one
/// place of the view from another.
PlanePoint crossing(const AffineForm& line, const AffineForm& side) {
  const double w = line.x * side.y - line.y * side.x;
  return {(line.y * side.constant - line.constant * side.y) / w,
          (line.constant * side.x - line.x * side.constant) / w};
}

}  // namespace

ClipBand::ClipBand(const WindowMapping& mapping, std::span<const int, 4> viewport)
    : sides_{atLeast(viewport[0] - kBand, mapping.x),
             atLeast(-(viewport[0] + viewport[2] + kBand), -mapping.x),
             atLeast(viewport[1] - kBand, mapping.y),
             atLeast(-(viewport[1] + viewport[3] + kBand), -mapping.y)} {}

std::optional<ClipBand::Segment> ClipBand::clip(const PlanePoint& from,
                                                const PlanePoint& to) const {
  Segment left{from, to};
  for (const AffineForm& side : sides_) {
    const bool isFromWithin = side.at(left.from.x, left.from.y, 0) >= 0;
    const bool isToWithin = side.at(left.to.x, left.to.y, 0) >= 0;
    if (!isFromWithin && !isToWithin) {
      return std::nullopt;
    }
    if (!isFromWithin) {
      left.from = crossing(lineThrough(from, to), side);
      left.isFromCut = true;
    }
    if (!isToWithin) {
      left.to = crossing(lineThrough(from, to), side);
    }
  }
  return left;
}

}  // namespace zyn
