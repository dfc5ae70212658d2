#include "view3d/Trihedron_gl.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "core/VectorMath.h"
#include "glcontext/StateGuards_gl.h"
#include "glcontext/gl_api.h"
#include "view3d/AxisLetter_gl.h"
#include "view3d/TrihedronLetters.h"
#include "view3d/TrihedronPlacement.h"

namespace zyn {

namespace {

/// Clamped to 1, the far plane.
constexpr GLclampd kClearDepth = 10.0;

/// The slice of the depth range in front of the scene.
constexpr GLclampd kFrontSlice = 0.01;

// Lengths in parts of an axis.
constexpr double kPrismRadius = 0.05;
constexpr double kHeadStart = 0.68;
constexpr int kPrismSides = 6;
constexpr int kHeadSides = 18;

/// However fine the pixels: an axis takes a quarter of the view's shorter side then.
constexpr double kLargestScale = 3.0;

struct Axis {
  char letter;
  std::array<double, 3> colour;  ///< stands out on white and on black
  Vecteur along;
  Vecteur aside;
  Vecteur acrossBoth;
};

const std::array<Axis, 3>& axes() {
  static const Vecteur x(1, 0, 0);
  static const Vecteur y(0, 1, 0);
  static const Vecteur z(0, 0, 1);
  static const std::array<Axis, 3> all{Axis{'X', {0.90, 0.10, 0.10}, x, y, z},
                                       Axis{'Y', {0.05, 0.62, 0.12}, y, z, x},
                                       Axis{'Z', {0.15, 0.35, 1.00}, z, x, y}};
  return all;
}

/// Draws the solid of one axis. Coordinates are the scene's directions in parts of an axis.
class AxisSolid {
 public:
  AxisSolid(const Axis& axis, const TrihedronPlacement& placement)
      : axis_(axis),
        light_(normalised(0.35 * placement.right + 0.45 * placement.up +
                          0.8 * placement.towardsViewer)) {}

  void draw() const {
    drawPrism();
    drawHead();
  }

 private:
  /// Perpendicular to the axis, `turn` of the way around it.
  Vecteur around(double turn) const {
    const double angle = 2 * std::numbers::pi * turn;
    return std::cos(angle) * axis_.aside + std::sin(angle) * axis_.acrossBoth;
  }

  void vertex(double along, double radius, double turn) const {
    const Vecteur v = along * axis_.along + radius * around(turn);
    glVertex3d(v.x, v.y, v.z);
  }

  /// The axis's colour, darker where the surface turns away from the light.
  void shade(const Vecteur& normal) const {
    const double brightness = 0.6 + 0.4 * std::max(0.0, dot(normal, light_));
    glColor3d(brightness * axis_.colour[0], brightness * axis_.colour[1],
              brightness * axis_.colour[2]);
  }

  void drawPrism() const {
    glBegin(GL_QUADS);
    for (int side = 0; side < kPrismSides; ++side) {
      const double turn = static_cast<double>(side) / kPrismSides;
      const double next = static_cast<double>(side + 1) / kPrismSides;
      shade(around((turn + next) / 2));
      vertex(0, kPrismRadius, turn);
      vertex(0, kPrismRadius, next);
      vertex(kHeadStart, kPrismRadius, next);
      vertex(kHeadStart, kPrismRadius, turn);
    }
    glEnd();
    shade(-axis_.along);
    drawFan(0, 0, kPrismRadius, kPrismSides, false);
  }

  void drawHead() const {
    drawFan(1, kHeadStart, kAxisHeadRadius, kHeadSides, true);
    shade(-axis_.along);
    drawFan(kHeadStart, kHeadStart, kAxisHeadRadius, kHeadSides, false);
  }

  /// From a point of the axis to a circle around it.
  void drawFan(double tip, double start, double radius, int sides, bool shaded) const {
    glBegin(GL_TRIANGLE_FAN);
    if (shaded) {
      shade(axis_.along);
    }
    vertex(tip, 0, 0);
    for (int side = 0; side <= sides; ++side) {
      const double turn = static_cast<double>(side) / sides;
      if (shaded) {
        shade(normalised(radius * axis_.along + (tip - start) * around(turn)));
      }
      vertex(start, radius, turn);
    }
    glEnd();
  }

  const Axis& axis_;
  Vecteur light_;
};

/// Maps lengths in parts of an axis, the screen's directions and the axes' origin to the viewport.
void loadScreenProjection(const CParamsVue3D& camera, const TrihedronPlacement& placement) {
  const Vecteur offset = placement.origin - camera.target();
  const double x = dot(offset, placement.right) / placement.length;
  const double y = dot(offset, placement.up) / placement.length;
  const double halfWidth = camera.width() / placement.length / 2;
  const double halfHeight = camera.height() / placement.length / 2;
  glLoadIdentity();
  glOrtho(-halfWidth - x, halfWidth - x, -halfHeight - y, halfHeight - y, -2, 2);
}

/// Turns the scene's directions into the screen's.
void loadOrientation(const TrihedronPlacement& placement) {
  const auto& [origin, length, right, up, back] = placement;
  const GLdouble matrix[16] = {right.x, up.x, back.x, 0, right.y, up.y, back.y, 0,
                               right.z, up.z, back.z, 0, 0,       0,    0,      1};
  glLoadMatrixd(matrix);
}

void setSolidState() {
  glDisable(GL_LIGHTING);
  glDisable(GL_CULL_FACE);
  glEnable(GL_DEPTH_TEST);
  glDepthFunc(GL_LESS);
  glDepthMask(GL_TRUE);
  glDepthRange(0, kFrontSlice);
  glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
  glShadeModel(GL_SMOOTH);
}

void drawLetters(const TrihedronPlacement& placement, double pixel) {
  glDisable(GL_DEPTH_TEST);
  std::array<PlanePoint, 3> tips;
  std::ranges::transform(axes(), tips.begin(), [&](const Axis& axis) -> PlanePoint {
    return {dot(axis.along, placement.right), dot(axis.along, placement.up)};
  });
  const std::array<LetterPlacement, 3> letters = placeLetters(tips, pixel);
  for (std::size_t axis = 0; axis < letters.size(); ++axis) {
    glColor3dv(axes()[axis].colour.data());
    drawAxisLetter(axes()[axis].letter, letters[axis]);
  }
}

/// Height of a pixel in parts of an axis.
double pixelOf(const CParamsVue3D& camera, const TrihedronPlacement& placement) {
  GLint viewport[4] = {};
  glGetIntegerv(GL_VIEWPORT, viewport);
  return camera.height() / std::max(viewport[3], 1) / placement.length;
}

}  // namespace

void drawTrihedron(const CParamsVue3D& camera, double pixelScale) {
  glClearDepth(kClearDepth);
  const double scale = std::min(pixelScale, kLargestScale);
  const auto placement = TrihedronPlacement::in(camera, scale);
  if (!placement) {
    return;
  }
  const PushedAttributes attributes(GL_ALL_ATTRIB_BITS);
  const PushedMatrix projection(GL_PROJECTION);
  loadScreenProjection(camera, *placement);
  const PushedMatrix modelview(GL_MODELVIEW);
  loadOrientation(*placement);
  setSolidState();
  for (const Axis& axis : axes()) {
    AxisSolid(axis, *placement).draw();
  }
  glLoadIdentity();
  drawLetters(*placement, scale * pixelOf(camera, *placement));
}

}  // namespace zyn
