#include "view2d/ViewMatrices_gl.h"

#include <cmath>
#include <initializer_list>

#include "glcontext/Projection_gl.h"

namespace zyn {

namespace {

/// Values that leave room for products and quotients in single precision.
constexpr double kLargest = 1e30;
constexpr double kSmallestExtent = 1e-30;

/// Distances from the eye.
constexpr double kNear = 1.0;
constexpr double kPlane = 2.0;
constexpr double kFar = 3.0;

bool areCoordinates(std::initializer_list<double> values) {
  for (const double value : values) {
    if (!(std::abs(value) <= kLargest)) {
      return false;
    }
  }
  return true;
}

bool isExtent(double value) {
  return std::abs(value) >= kSmallestExtent && std::abs(value) <= kLargest;
}

bool canProject(const ScaledView& scaled) {
  const CParamsVue2D& view = scaled.view;
  return areCoordinates({view.centreX(), view.centreY(), scaled.xScale, scaled.yScale}) &&
         isExtent(view.width()) && isExtent(view.height()) &&
         areCoordinates({scaled.xScale / view.width(), scaled.yScale / view.height()});
}

void showNothing() {
  loadProjectionOfNothing();
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
}

/// Loads matrices of which the first takes the view's centre to (x, y) and the second that to the
/// middle of the picture.
void loadMatrices(const ScaledView& scaled, const PicturePart& part, double translationX,
                  double translationY, double x, double y) {
  const CParamsVue2D& view = scaled.view;
  loadOrthographic(
      {x - view.width() / 2, y - view.height() / 2, view.width(), view.height(), kNear, kFar},
      part);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  glTranslated(translationX, translationY, -kPlane);
  glScaled(scaled.xScale, scaled.yScale, 1);
}

double toSinglePrecision(double value) { return static_cast<float>(value); }

/// The place of a view's centre as OpenGL's own scale has it, which is rounded: far from the origin
/// the rounding would move everything.
double underRoundedScale(double centre, double scale) {
  return scale == 0 ? centre : centre * (toSinglePrecision(scale) / scale);
}

}  // namespace

void loadView(const ScaledView& scaled, const PicturePart& part) {
  if (!canProject(scaled)) {
    showNothing();
    return;
  }
  const double centreX = underRoundedScale(scaled.view.centreX(), scaled.xScale);
  const double centreY = underRoundedScale(scaled.view.centreY(), scaled.yScale);
  const double x = toSinglePrecision(centreX);
  const double y = toSinglePrecision(centreY);
  loadMatrices(scaled, part, -x, -y, centreX - x, centreY - y);
}

void loadViewAt(const Point& origin, const ScaledView& scaled, const PicturePart& part) {
  const double x = origin.x * scaled.xScale - scaled.view.centreX();
  const double y = origin.y * scaled.yScale - scaled.view.centreY();
  if (!canProject(scaled) || !areCoordinates({x, y})) {
    showNothing();
    return;
  }
  loadMatrices(scaled, part, x, y, 0, 0);
}

}  // namespace zyn
