#pragma once

#include <array>

#include "core/Box3.h"
#include "core/GlMatrix.h"
#include "core/PlaneRegion.h"
#include "core/Point.h"

namespace zyn {

/// What a view asks a scene object that has to tell how much of it lies in a region of the view's
/// pixels. What near and far planes cut off is not there.
class RegionQuery {
 public:
  /// `clip` maps model points to OpenGL's clip space; pixels are measured from the upper left
  /// corner of the view. For the query's life the region stays.
  RegionQuery(const PlaneRegion& region, const GlMatrix& clip, double pixelWidth,
              double pixelHeight, bool asksForWhole);

  /// The same about what a matrix has moved.
  RegionQuery moved(const GlMatrix& matrix) const;

  /// Whether an object of which this much has been seen is one of those that are asked for.
  bool isMetBy(Coverage coverage) const {
    return coverage == Coverage::kWhole || (coverage == Coverage::kPart && !asksForWhole_);
  }

  /// Whether more to see cannot change that.
  bool isSettledBy(Coverage coverage) const {
    return coverage == Coverage::kPart ||
           coverage == (asksForWhole_ ? Coverage::kNone : Coverage::kWhole);
  }

  const PlaneRegion& region() const { return *region_; }
  bool asksForWhole() const { return asksForWhole_; }

  Coverage ofPoint(const Point& point) const;
  Coverage ofLine(const Point& a, const Point& b) const;
  Coverage ofTriangle(const Point& a, const Point& b, const Point& c) const;

  /// Of what lies in a box: kNone or kWhole where that is sure of anything in it, which may be
  /// nothing at all; kPart where it depends.
  Coverage ofBox(const Box3& box) const;

 private:
  using Homogeneous = std::array<double, 4>;

  /// Of a convex polygon after it has been cut by the planes.
  static constexpr std::size_t kMostCorners = 6;
  struct Polygon {
    std::array<Homogeneous, kMostCorners> corners;
    std::size_t count = 0;

    void add(const Homogeneous& corner) { corners[count++] = corner; }
  };

  Homogeneous clipped(const Point& point) const;
  static double depthIn(const Homogeneous& corner, double side);
  static Polygon cut(const Polygon& polygon, double side);
  Coverage ofPolygon(const Polygon& polygon) const;
  bool isOutside(const std::array<Homogeneous, 8>& corners) const;

  const PlaneRegion* region_;
  GlMatrix clip_;
  double pixelWidth_;
  double pixelHeight_;
  bool asksForWhole_;
};

}  // namespace zyn
