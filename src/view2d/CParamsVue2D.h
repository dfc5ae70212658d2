#pragma once

#include <algorithm>

#include "view/Pixels.h"

namespace zyn {

/// A rectangle in the plane, given by its bounds. Nothing keeps a lower bound below the upper one.
struct Rect2 {
  double xMin = 0.0;
  double xMax = 0.0;
  double yMin = 0.0;
  double yMax = 0.0;

  bool operator==(const Rect2& other) const = default;

  double width() const { return xMax - xMin; }
  double height() const { return yMax - yMin; }

  /// The same rectangle with its bounds in order.
  Rect2 ordered() const {
    return {std::min(xMin, xMax), std::max(xMin, xMax), std::min(yMin, yMax), std::max(yMin, yMax)};
  }
};

/// What of the plane a 2D view shows. Lengths are in plotting units: model units times the view's
/// scales. New, it shows nothing: all is 0.
class CParamsVue2D {
 public:
  /// What a view is fitted to: the centre comes from a rectangle's bounds, the size from its
  /// extents, which an outside rectangle object tells separately.
  struct Target {
    Target(const Rect2& targetBounds, double targetWidth, double targetHeight)
        : bounds(targetBounds), width(targetWidth), height(targetHeight) {}
    /*implicit*/ Target(const Rect2& rectangle)
        : Target(rectangle, rectangle.width(), rectangle.height()) {}

    Rect2 bounds;
    double width;
    double height;
  };

  CParamsVue2D() = default;
  CParamsVue2D(const CParamsVue2D&) = default;
  CParamsVue2D& operator=(const CParamsVue2D&) = default;
  virtual ~CParamsVue2D() = default;

  double centreX() const { return centreX_; }
  double centreY() const { return centreY_; }
  double halfHeight() const { return halfHeight_; }
  double width() const { return width_; }
  double height() const { return height_; }

  /// Whether it has an extent, so that there is something to see and pixels can be mapped.
  bool showsAnything() const;

  /// What it shows.
  Rect2 bounds() const;

  /// Shows the whole target, enlarged by `surplus` (a fraction of its size, in single precision),
  /// with units as wide as they are high. For a client area that is empty, the size is the enlarged
  /// target's.
  void fit(const Target& target, ClientSize client, float surplus);

  /// Changes the half-height to `halfHeight` and the extents with it, as wide as the client area,
  /// which must not be empty, asks for.
  void setHalfHeight(double halfHeight, ClientSize client);

  void moveTo(double centreX, double centreY);

 private:
  double centreX_ = 0.0;
  double centreY_ = 0.0;
  double halfHeight_ = 0.0;
  double width_ = 0.0;
  double height_ = 0.0;
};

/// A view of the plane and the scales from model units to its units.
struct ScaledView {
  CParamsVue2D view;
  double xScale = 1.0;
  double yScale = 1.0;
};

}  // namespace zyn
