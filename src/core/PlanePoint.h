#pragma once

namespace zyn {

/// A point of a plane.
struct PlanePoint {
  double x = 0.0;
  double y = 0.0;
};

}  // namespace zyn
