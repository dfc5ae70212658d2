#include "view2d/Grid_gl.h"

#include <algorithm>
#include <cmath>

#include "core/Point.h"
#include "glcontext/StateGuards_gl.h"
#include "view2d/Multiples.h"
#include "view2d/ViewMatrices_gl.h"

namespace zyn {

namespace {

/// Lines go on beyond the viewport by a tenth of its half.
constexpr double kOverhang = 1.1;

/// Lines of one direction beyond the visible area.
constexpr double kOutside = 3;

/// One direction of the plane: what the view shows of it, in model units.
struct Extent {
  Extent(double centre, double size, double scale)
      : middle(centre / scale), half(std::abs(size / scale) / 2) {}

  double middle;
  double half;
};

/// The multiples of a step that are visible, with some beyond.
Multiples linesOf(const Extent& extent, double step, int pixels) {
  return Multiples::between(extent.middle - extent.half - step, extent.middle + extent.half + step,
                            step, pixels + kOutside);
}

template <class Line>
void drawLines(const Extent& extent, double step, int pixels, Line line) {
  const Multiples multiples = linesOf(extent, step, pixels);
  glBegin(GL_LINES);
  for (int i = 0; i < multiples.count(); ++i) {
    line(multiples.value(i) - extent.middle);
  }
  glEnd();
}

}  // namespace

void drawGrid(const Grid& grid, const ScaledView& scaled, double pixelScale) {
  GLint viewport[4] = {};
  glGetIntegerv(GL_VIEWPORT, viewport);
  const Extent x(scaled.view.centreX(), scaled.view.width(), scaled.xScale);
  const Extent y(scaled.view.centreY(), scaled.view.height(), scaled.yScale);
  loadViewAt({x.middle, y.middle, 0}, scaled);

  const PushedAttributes colour(GL_CURRENT_BIT);
  const AutoGLLighting unlit(AutoGLLighting::kOff);
  const AutoGLLineWidth width(pixelScale);
  glColor3fv(grid.colour.data());
  const double top = kOverhang * y.half;
  const double right = kOverhang * x.half;
  drawLines(x, grid.stepX, viewport[2], [top](double place) {
    glVertex2d(place, -top);
    glVertex2d(place, top);
  });
  drawLines(y, grid.stepY, viewport[3], [right](double place) {
    glVertex2d(-right, place);
    glVertex2d(right, place);
  });
}

}  // namespace zyn
