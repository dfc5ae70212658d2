#include "view3d/AxisLetter_gl.h"

#include <cmath>
#include <initializer_list>

#include "glcontext/gl_api.h"

namespace zyn {

namespace {

/// From one point to another; the letter reaches from -1 to 1 both ways.
struct Stroke {
  double fromX;
  double fromY;
  double toX;
  double toY;
};

std::initializer_list<Stroke> strokesOf(char letter) {
  static constexpr std::initializer_list<Stroke> kX = {{-1, -1, 1, 1}, {-1, 1, 1, -1}};
  static constexpr std::initializer_list<Stroke> kY = {{0, -1, 0, 0}, {0, 0, -1, 1}, {0, 0, 1, 1}};
  static constexpr std::initializer_list<Stroke> kZ = {
      {-1, 1, 1, 1}, {1, 1, -1, -1}, {-1, -1, 1, -1}};
  switch (letter) {
    case 'X':
      return kX;
    case 'Y':
      return kY;
    default:
      return kZ;
  }
}

/// The four corners of a stroke, which ends half its width beyond both points.
void drawStroke(const Stroke& stroke, const LetterPlacement& placement) {
  const double scaleX = kLetterAspect * placement.height / 2;
  const double scaleY = placement.height / 2;
  const double fromX = placement.x + scaleX * stroke.fromX;
  const double fromY = placement.y + scaleY * stroke.fromY;
  const double toX = placement.x + scaleX * stroke.toX;
  const double toY = placement.y + scaleY * stroke.toY;
  const double length = std::hypot(toX - fromX, toY - fromY);
  const double alongX = placement.stroke / 2 * (toX - fromX) / length;
  const double alongY = placement.stroke / 2 * (toY - fromY) / length;
  glVertex2d(fromX - alongX + alongY, fromY - alongY - alongX);
  glVertex2d(toX + alongX + alongY, toY + alongY - alongX);
  glVertex2d(toX + alongX - alongY, toY + alongY + alongX);
  glVertex2d(fromX - alongX - alongY, fromY - alongY + alongX);
}

}  // namespace

void drawAxisLetter(char letter, const LetterPlacement& placement) {
  glBegin(GL_QUADS);
  for (const Stroke& stroke : strokesOf(letter)) {
    drawStroke(stroke, placement);
  }
  glEnd();
}

}  // namespace zyn
