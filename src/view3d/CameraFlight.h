#pragma once

#include "view3d/CParamsVue3D.h"

namespace zyn {

/// The smooth way of a camera to its aim, which begins at the time `start` and takes `duration`,
/// above 0, in any unit.
class CameraFlight {
 public:
  /// None of the two may have a fault.
  CameraFlight(const CParamsVue3D& from, const CParamsVue3D& aim, double start, double duration)
      : from_(from), aim_(aim), start_(start), duration_(duration) {}

  const CParamsVue3D& aim() const { return aim_; }

  bool isOver(double now) const { return !(now < start_ + duration_); }

  /// The camera on its way, gently from rest to rest; the aim itself once the flight is over.
  CParamsVue3D cameraAt(double now) const;

  /// Applies to both ends of the way what applies to the camera on it: the window was resized, the
  /// scene was measured.
  template <class Change>
  void adjust(Change change) {
    change(from_);
    change(aim_);
  }

 private:
  CParamsVue3D from_;
  CParamsVue3D aim_;
  double start_;
  double duration_;
};

}  // namespace zyn
