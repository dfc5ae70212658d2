#pragma once

#include <array>

#include "support/ForeignObject_win.h"
#include "support/ViewHost_win.h"

namespace zyn::test {

/// The numbers of the 2D view's events.
struct GraphEvent {
  enum : DISPID {
    MouseDown = 1,
    PlusProche = 2,
    MouseSelection = 3,
    MouseSelection2 = 4,
    MouseUp = 5,
    WindowSelection = 6,
    MouseSelectionDblClick = 7,
    MouseMove = 8,
    MouseOn = 9,
    MouseOn2 = 10,
    MouseLeave = 11,
    KeyDown = 12,
    KeyUp = 13
  };
};

/// What getVueParams tells.
struct VueParams {
  double pixelWidth, pixelHeight, width, height, halfHeight, x, y;
};

/// A rectangle in the plane.
struct Area {
  double xMin, xMax, yMin, yMax;
};

/// A rectangle object of the geometry library.
ComPtr<IZYNRectangle> makeArea(const Area& area);

/// A 2D view in the system's own container.
class View2DHost : public ViewHostOf<IZYNVue2D> {
 public:
  explicit View2DHost(SIZE size = {400, 200});

  VueParams params() const;
  /// Shows exactly this area, if it is shaped as the window, by View.
  void look(const Area& area) const;
  std::array<double, 2> pointOf(int left, int top) const;
  /// Left and top of the pixel of a model point.
  std::array<int, 2> pixelOf(double x, double y) const;
  long mode() const;

  /// A scene object without a picture that occupies this area.
  ComPtr<ForeignObject> addBox(const Area& area) const;
};

/// An object that draws the area filled in one colour, under these names when it is picked.
ComPtr<ForeignObject> makePlate(const Area& area, const Rgb& colour,
                                const std::vector<unsigned>& names = {});

}  // namespace zyn::test
