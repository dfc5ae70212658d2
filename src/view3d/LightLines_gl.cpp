#include "view3d/LightLines_gl.h"

#include <cmath>

#include "glcontext/StateGuards_gl.h"
#include "glcontext/SurfaceState_gl.h"

namespace zyn {

namespace {

struct Colour {
  double r;
  double g;
  double b;
};

Colour lineColour(const LightBlock& lights, LightBlock::Light light) {
  const bool one = light == LightBlock::Light::kOne;
  const std::vector<double> values =
      lights.get(one ? LightBlock::Section::kLight1 : LightBlock::Section::kLight2);
  const Colour colour{values[1], values[2], values[3]};
  const bool white = colour.r == 1.0 && colour.g == 1.0 && colour.b == 1.0;
  return white ? Colour{0, 0, 0} : colour;
}

/// In eye coordinates.
void drawLine(const LightBlock::Values4& towardsLight, double length, double middle) {
  glBegin(GL_LINES);
  glVertex3d(length * towardsLight[0], length * towardsLight[1], length * towardsLight[2] - middle);
  glVertex3d(0, 0, -middle);
  glEnd();
}

}  // namespace

void drawLightLines(const CParamsVue3D& camera, const LightBlock& lights) {
  const auto [zNear, zFar] = camera.drawnRange();
  const double middle = camera.perspective() ? camera.drawnDistance() : (zFar + zNear) / 2;
  const double length = std::hypot(camera.height(), camera.width(), zFar - zNear) / 2;
  if (!std::isfinite(length)) {
    return;
  }
  const PushedMatrix modelview(GL_MODELVIEW);
  glLoadIdentity();
  const AutoGLLighting lighting(AutoGLLighting::kOff);
  for (const auto light : {LightBlock::Light::kOne, LightBlock::Light::kTwo}) {
    if (lights.isDrawn(light)) {
      const Colour colour = lineColour(lights, light);
      const AutoGLColor guard(colour.r, colour.g, colour.b, 1.0, kBothFaces);
      drawLine(lights.position(light), length, middle);
    }
  }
}

}  // namespace zyn
