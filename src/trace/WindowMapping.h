#pragma once

#include <array>
#include <optional>
#include <span>

#include "core/Box3.h"
#include "core/GlMatrix.h"
#include "core/PlanePoint.h"

namespace zyn {

/// An affine function of model coordinates.
struct AffineForm {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  double constant = 0.0;

  double at(double px, double py, double pz) const {
    return ((x * px + y * py) + z * pz) + constant;
  }

  bool operator==(const AffineForm&) const = default;
  AffineForm operator-() const { return {-x, -y, -z, -constant}; }

  /// Its least and its greatest value in a box. Computed like `at`, so that rounding does not bring
  /// the value at a point of the box out of them.
  double lowest(const Box3& box) const {
    return at(x < 0 ? box.xMax : box.xMin, y < 0 ? box.yMax : box.yMin,
              z < 0 ? box.zMax : box.zMin);
  }
  double highest(const Box3& box) const {
    return at(x < 0 ? box.xMin : box.xMax, y < 0 ? box.yMin : box.yMax,
              z < 0 ? box.zMin : box.zMax);
  }
};

/// Where OpenGL draws model points: window coordinates in pixels from the lower left corner of the
/// window, and depth.
struct WindowMapping {
  AffineForm x;
  AffineForm y;
  AffineForm depth;  ///< 0 near to 1 far
};

/// The mapping of these matrices and of this viewport (left,
/// bottom, width, height). None where it is not affine: with perspective, or values that are not
/// finite.
std::optional<WindowMapping> windowMapping(const GlMatrix& modelView, const GlMatrix& projection,
                                           std::span<const int, 4> viewport);

/// What is seen of the plane z = 0, with a generous band around it. Segments are cut off at its
/// edge in double precision: OpenGL, in single precision, loses those that lead very far away.
class ClipBand {
 public:
  /// What is left of a segment.
  struct Segment {
    PlanePoint from;
    PlanePoint to;
    bool isFromCut = false;  ///< it enters at `from`
  };

  /// The width of the band in pixels: far more than that of any line.
  static constexpr double kWidth = 4096;

  /// Around a viewport (left, bottom, width, height). `margin`: what so many pixels outside of it
  /// may be seen of a line.
  ClipBand(const WindowMapping& mapping, std::span<const int, 4> viewport, double margin = kWidth);

  /// None where nothing is left, or nothing of it can be seen. Ends within the band stay exactly as
  /// they are.
  std::optional<Segment> clip(const PlanePoint& from, const PlanePoint& to) const;

 private:
  std::array<AffineForm, 4> sides_;  ///< not negative within
  double seen_;                      ///< their value where something can be seen
};

}  // namespace zyn
