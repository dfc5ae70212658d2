#include "trace/WindowMapping.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace zyn {

namespace {

bool isAffine(const GlMatrix& clip) {
  for (const double value : clip) {
    if (!std::isfinite(value)) {
      return false;
    }
  }
  return clip[3] == 0 && clip[7] == 0 && clip[11] == 0 && clip[15] != 0;
}

/// A row of the matrix, from -1..1 to `start`..`start + size`.
AffineForm toRange(const GlMatrix& clip, std::size_t row, double start, double size) {
  const double factor = size / (2 * clip[15]);
  return {clip[row] * factor, clip[4 + row] * factor, clip[8 + row] * factor,
          clip[12 + row] * factor + size / 2 + start};
}

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

std::optional<WindowMapping> windowMapping(const GlMatrix& modelView, const GlMatrix& projection,
                                           std::span<const int, 4> viewport) {
  const GlMatrix clip = product(projection, modelView);
  if (!isAffine(clip)) {
    return std::nullopt;
  }
  return WindowMapping{toRange(clip, 0, viewport[0], viewport[2]),
                       toRange(clip, 1, viewport[1], viewport[3]), toRange(clip, 2, 0, 1)};
}

ClipBand::ClipBand(const WindowMapping& mapping, std::span<const int, 4> viewport, double margin)
    : sides_{atLeast(viewport[0] - kWidth, mapping.x),
             atLeast(-(viewport[0] + viewport[2] + kWidth), -mapping.x),
             atLeast(viewport[1] - kWidth, mapping.y),
             atLeast(-(viewport[1] + viewport[3] + kWidth), -mapping.y)},
      seen_(std::max(kWidth - margin, 0.0)) {}

std::optional<ClipBand::Segment> ClipBand::clip(const PlanePoint& from,
                                                const PlanePoint& to) const {
  Segment left{from, to};
  for (const AffineForm& side : sides_) {
    const double fromWithin = side.at(left.from.x, left.from.y, 0);
    const double toWithin = side.at(left.to.x, left.to.y, 0);
    if (!(fromWithin >= seen_) && !(toWithin >= seen_)) {
      return std::nullopt;
    }
    if (!(fromWithin >= 0)) {
      left.from = crossing(lineThrough(from, to), side);
      left.isFromCut = true;
    }
    if (!(toWithin >= 0)) {
      left.to = crossing(lineThrough(from, to), side);
    }
  }
  return left;
}

}  // namespace zyn
