#include "contract/RegionQuery.h"

#include <algorithm>
#include <span>

namespace zyn {

namespace {

/// Of depths, beyond the near and the far plane.
constexpr double kNear = 1.0;
constexpr double kFar = -1.0;

}  // namespace

RegionQuery::RegionQuery(const PlaneRegion& region, const GlMatrix& clip, double pixelWidth,
                         double pixelHeight, bool asksForWhole)
    : region_(&region),
      clip_(clip),
      pixelWidth_(pixelWidth),
      pixelHeight_(pixelHeight),
      asksForWhole_(asksForWhole) {}

RegionQuery RegionQuery::moved(const GlMatrix& matrix) const {
  return {*region_, product(clip_, matrix), pixelWidth_, pixelHeight_, asksForWhole_};
}

RegionQuery::Homogeneous RegionQuery::clipped(const Point& p) const {
  Homogeneous image{};
  for (std::size_t row = 0; row < image.size(); ++row) {
    image[row] = clip_[row] * p.x + clip_[4 + row] * p.y + clip_[8 + row] * p.z + clip_[12 + row];
  }
  return image;
}

/// How far a corner lies behind the near plane or before the far one; negative outside.
double RegionQuery::depthIn(const Homogeneous& corner, double side) {
  return corner[3] + side * corner[2];
}

/// What is left of a polygon on the inner side of a plane.
RegionQuery::Polygon RegionQuery::cut(const Polygon& polygon, double side) {
  Polygon left;
  for (std::size_t i = 0; i < polygon.count; ++i) {
    const Homogeneous& corner = polygon.corners[i];
    const Homogeneous& next = polygon.corners[(i + 1) % polygon.count];
    const double depth = depthIn(corner, side);
    const double nextDepth = depthIn(next, side);
    if (depth >= 0) {
      left.add(corner);
    }
    if ((depth >= 0) != (nextDepth >= 0) && polygon.count > 1) {
      const double t = depth / (depth - nextDepth);
      Homogeneous between{};
      for (std::size_t row = 0; row < between.size(); ++row) {
        between[row] = corner[row] + t * (next[row] - corner[row]);
      }
      left.add(between);
    }
  }
  return left;
}

Coverage RegionQuery::ofPolygon(const Polygon& polygon) const {
  const Polygon left = cut(cut(polygon, kNear), kFar);
  std::array<PlanePoint, kMostCorners> pixels;
  for (std::size_t i = 0; i < left.count; ++i) {
    const Homogeneous& corner = left.corners[i];
    pixels[i] = {(corner[0] / corner[3] + 1) / 2 * pixelWidth_,
                 (1 - corner[1] / corner[3]) / 2 * pixelHeight_};
  }
  return region_->ofPolygon(std::span(pixels.data(), left.count));
}

Coverage RegionQuery::ofPoint(const Point& point) const {
  Polygon polygon;
  polygon.add(clipped(point));
  return ofPolygon(polygon);
}

Coverage RegionQuery::ofLine(const Point& a, const Point& b) const {
  Polygon polygon;
  polygon.add(clipped(a));
  polygon.add(clipped(b));
  return ofPolygon(polygon);
}

Coverage RegionQuery::ofTriangle(const Point& a, const Point& b, const Point& c) const {
  Polygon polygon;
  polygon.add(clipped(a));
  polygon.add(clipped(b));
  polygon.add(clipped(c));
  return ofPolygon(polygon);
}

/// Whether all corners lie beyond one of the sides of the space that the region's bounds show.
bool RegionQuery::isOutside(const std::array<Homogeneous, 8>& corners) const {
  const PlaneBox& b = region_->bounds();
  const double left = 2 * (b.xMin - PlaneRegion::kTouch) / pixelWidth_ - 1;
  const double right = 2 * (b.xMax + PlaneRegion::kTouch) / pixelWidth_ - 1;
  const double top = 1 - 2 * (b.yMin - PlaneRegion::kTouch) / pixelHeight_;
  const double bottom = 1 - 2 * (b.yMax + PlaneRegion::kTouch) / pixelHeight_;
  const auto all = [&](auto isBeyond) {
    return std::all_of(corners.begin(), corners.end(), isBeyond);
  };
  return all([](const Homogeneous& c) { return depthIn(c, kNear) < 0; }) ||
         all([](const Homogeneous& c) { return depthIn(c, kFar) < 0; }) ||
         all([&](const Homogeneous& c) { return c[0] < left * c[3]; }) ||
         all([&](const Homogeneous& c) { return c[0] > right * c[3]; }) ||
         all([&](const Homogeneous& c) { return c[1] < bottom * c[3]; }) ||
         all([&](const Homogeneous& c) { return c[1] > top * c[3]; });
}

Coverage RegionQuery::ofBox(const Box3& box) const {
  std::array<Homogeneous, 8> corners{};
  std::size_t i = 0;
  for (const double x : {box.xMin, box.xMax}) {
    for (const double y : {box.yMin, box.yMax}) {
      for (const double z : {box.zMin, box.zMax}) {
        corners[i++] = clipped({x, y, z});
      }
    }
  }
  if (isOutside(corners)) {
    return Coverage::kNone;
  }
  const bool isUncut = std::all_of(corners.begin(), corners.end(), [](const Homogeneous& c) {
    return depthIn(c, kNear) >= 0 && depthIn(c, kFar) >= 0;
  });
  constexpr std::size_t kSides[6][4] = {{0, 1, 3, 2}, {4, 5, 7, 6}, {0, 1, 5, 4},
                                        {2, 3, 7, 6}, {0, 2, 6, 4}, {1, 3, 7, 5}};
  const bool isWhole =
      isUncut && std::all_of(std::begin(kSides), std::end(kSides), [&](auto side) {
        Polygon polygon;
        std::for_each(side, side + 4, [&](std::size_t corner) { polygon.add(corners[corner]); });
        return ofPolygon(polygon) == Coverage::kWhole;
      });
  return isWhole ? Coverage::kWhole : Coverage::kPart;
}

}  // namespace zyn
