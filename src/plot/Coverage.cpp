#include "plot/Coverage.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numbers>

namespace zyn {

namespace {

/// The pixels around a figure.
PixelBox boundsOf(const std::vector<Contour>& figure) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  PixelBox box{kInfinity, -kInfinity, kInfinity, -kInfinity};
  for (const Contour& contour : figure) {
    for (const PlanePoint& point : contour) {
      box.left = std::min(box.left, std::floor(point.x));
      box.right = std::max(box.right, std::floor(point.x) + 1);
      box.bottom = std::min(box.bottom, std::floor(point.y));
      box.top = std::max(box.top, std::floor(point.y) + 1);
    }
  }
  return box;
}

/// Adds up what lies to the right of edges: the sum along a row is what a pixel is covered by.
class AreaSums {
 public:
  AreaSums(int width, int height)
      : width_(static_cast<std::size_t>(width)),
        sums_((width_ + 1) * static_cast<std::size_t>(height)) {}

  void addEdge(const PlanePoint& from, const PlanePoint& to) {
    if (from.y == to.y) {
      return;
    }
    const double sign = from.y < to.y ? 1 : -1;
    const PlanePoint& low = from.y < to.y ? from : to;
    const PlanePoint& high = from.y < to.y ? to : from;
    const double slope = (high.x - low.x) / (high.y - low.y);
    const double xLow = std::min(from.x, to.x);
    const double xHigh = std::max(from.x, to.x);
    for (double row = std::floor(low.y); row < high.y; ++row) {
      const double bottom = std::max(row, low.y);
      const double top = std::min(row + 1, high.y);
      const double x0 = std::clamp(low.x + (bottom - low.y) * slope, xLow, xHigh);
      const double x1 = std::clamp(low.x + (top - low.y) * slope, xLow, xHigh);
      addInRow(static_cast<std::size_t>(row), std::min(x0, x1), std::max(x0, x1),
               sign * (top - bottom));
    }
  }

  std::vector<std::uint8_t> covered() const {
    std::vector<std::uint8_t> pixels;
    pixels.reserve(sums_.size());
    for (auto row = sums_.begin(); row != sums_.end();
         row += static_cast<std::ptrdiff_t>(width_) + 1) {
      double sum = 0;
      for (std::size_t column = 0; column < width_; ++column) {
        sum += row[static_cast<std::ptrdiff_t>(column)];
        pixels.push_back(
            static_cast<std::uint8_t>(std::lround(255 * std::min(std::fabs(sum), 1.0))));
      }
    }
    return pixels;
  }

 private:
  /// An edge from `left` to `right` within a row, of which it crosses `height`.
  void addInRow(std::size_t row, double left, double right, double height) {
    double* const sums = &sums_[row * (width_ + 1)];
    const auto first = static_cast<std::size_t>(left);
    const auto last = std::min(static_cast<std::size_t>(right), width_ - 1);
    for (std::size_t column = first; column <= last; ++column) {
      const double start = std::max(left, static_cast<double>(column));
      const double end = std::min(right, static_cast<double>(column) + 1);
      const double part = right > left ? height * (end - start) / (right - left) : height;
      const double within = (start + end) / 2 - static_cast<double>(column);
      sums[column] += part * (1 - within);
      sums[column + 1] += part * within;
    }
  }

  std::size_t width_;
  std::vector<double> sums_;
};

Contour polygon(int corners, double radius, double start) {
  Contour contour;
  for (int i = 0; i < corners; ++i) {
    const double angle = start + 2 * std::numbers::pi * i / corners;
    contour.push_back({radius * std::cos(angle), radius * std::sin(angle)});
  }
  return contour;
}

/// Two bars `width` wide that cross each other.
Contour plus(double half, double width) {
  const double in = std::min(width / 2, half);
  return {{in, -half}, {in, -in}, {half, -in}, {half, in},   {in, in},   {in, half},
          {-in, half}, {-in, in}, {-half, in}, {-half, -in}, {-in, -in}, {-in, -half}};
}

Contour turned(Contour contour, double angle) {
  for (PlanePoint& point : contour) {
    point = {point.x * std::cos(angle) - point.y * std::sin(angle),
             point.x * std::sin(angle) + point.y * std::cos(angle)};
  }
  return contour;
}

}  // namespace

Coverage coverageOf(const std::vector<Contour>& figure) {
  const PixelBox box = boundsOf(figure);
  if (box.isEmpty()) {
    return {};
  }
  Coverage coverage{static_cast<int>(box.left),
                    static_cast<int>(box.bottom),
                    static_cast<int>(box.width()),
                    static_cast<int>(box.height()),
                    {}};
  AreaSums sums(coverage.width, coverage.height);
  for (const Contour& contour : figure) {
    PlanePoint before = contour.empty() ? PlanePoint{} : contour.back();
    for (const PlanePoint& point : contour) {
      const PlanePoint origin{box.left, box.bottom};
      sums.addEdge(before - origin, point - origin);
      before = point;
    }
  }
  coverage.pixels = sums.covered();
  return coverage;
}

std::vector<Contour> outlineOf(const DrawnMarkers& marker) {
  constexpr int kRound = 48;
  const double half = marker.size / 2;
  switch (marker.shape) {
    case MarkerShape::kNone:
      break;
    case MarkerShape::kCircle:
      return {polygon(kRound, half, 0)};
    case MarkerShape::kSquare: {
      const double side = half * 0.9;  // to look as large as the circle
      return {{{-side, -side}, {side, -side}, {side, side}, {-side, side}}};
    }
    case MarkerShape::kTriangle:
      return {{{-half, -0.75 * half}, {half, -0.75 * half}, {0, half}}};
    case MarkerShape::kDiamond:
      return {polygon(4, half * 1.1, 0)};
    case MarkerShape::kCross:
      return {turned(plus(half * 1.15, marker.lineWidth), std::numbers::pi / 4)};
    case MarkerShape::kPlus:
      return {plus(half, marker.lineWidth)};
  }
  return {};
}

}  // namespace zyn
