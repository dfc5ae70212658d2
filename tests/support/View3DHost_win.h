#pragma once

#include <array>
#include <vector>

#include "support/ForeignObject_win.h"
#include "support/Scene_win.h"
#include "support/ViewHost_win.h"

namespace zyn::test {

/// How a view looked at its scene when it last drew it.
struct DrawnCamera {
  Vec eye, right, up, forward;
  double width = 0, height = 0;  ///< of the view rectangle, model units
  double zNear = 0, zFar = 0;    ///< from the eye
  int pixelWidth = 0, pixelHeight = 0;

  /// The point at this distance in front of the eye.
  Vec ahead(double distance) const { return eye + distance * forward; }
  /// Where a point appears, in pixels from the top left corner of the view.
  std::array<double, 2> pixelOf(const Vec& point) const;
};

/// The camera that the current context is set up for.
DrawnCamera currentCamera();

/// The events' numbers.
enum ViewEvent : DISPID {
  kMouseDown = 1,
  kMouseMove = 2,
  kMouseSelection = 3,
  kMouseOn = 4,
  kMouseUp = 5,
  kWindowSelection = 6
};

/// A 3D view in the system's own container.
class View3DHost : public ViewHostOf<IZYNVue3D> {
 public:
  explicit View3DHost(SIZE size = {400, 200});

  void release() override;

  /// Draws now, and tells how the scene was looked at. The object that finds out is added to the
  /// scene by the first call and stays.
  DrawnCamera camera();

  /// A scene object without a picture that occupies this box.
  ComPtr<ForeignObject> addBox(const Bounds& bounds) const;

 private:
  ComPtr<ForeignObject> probe_;
  DrawnCamera camera_;
};

}  // namespace zyn::test
