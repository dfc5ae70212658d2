#include "view3d/ScenePass_gl.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "glcontext/Projection_gl.h"
#include "glcontext/StateGuards_gl.h"
#include "view/PixelScale_gl.h"
#include "view3d/Lights_gl.h"

namespace zyn {

namespace {

/// Squares of coordinates must stay finite in single precision, in which GLU and OpenGL calculate.
constexpr double kLargest = 1e18;
constexpr double kSmallestExtent = 1e-18;

bool areCoordinates(std::initializer_list<double> values) {
  return std::all_of(values.begin(), values.end(),
                     [](double value) { return std::abs(value) <= kLargest; });
}

bool isExtent(double value) {
  return std::abs(value) >= kSmallestExtent && std::abs(value) <= kLargest;
}

bool canProject(const CParamsVue3D& camera) {
  const Point eye = camera.drawnEye();
  const Point& target = camera.target();
  const Vecteur& up = camera.up();
  const auto [zNear, zFar] = camera.drawnRange();
  return areCoordinates(
             {eye.x, eye.y, eye.z, target.x, target.y, target.z, up.x, up.y, up.z, zNear, zFar}) &&
         isExtent(camera.width()) && isExtent(camera.height()) && isExtent(zFar - zNear);
}

/// The view rectangle, in the plane through the target, and the depth range.
ViewRectangle rectangleOf(const CParamsVue3D& camera) {
  const auto [zNear, zFar] = camera.drawnRange();
  return {-camera.width() / 2, -camera.height() / 2, camera.width(), camera.height(), zNear, zFar};
}

void loadEyeSpace() {
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
}

}  // namespace

void loadProjection(const CParamsVue3D* camera, const PicturePart& part) {
  if (!camera) {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
  } else if (!canProject(*camera)) {
    loadProjectionOfNothing();
  } else if (camera->perspective()) {
    loadPerspective(rectangleOf(*camera), camera->drawnDistance(), part);
  } else {
    loadOrthographic(rectangleOf(*camera), part);
  }
}

void lookAlong(const CParamsVue3D& camera) {
  if (!canProject(camera)) {
    return;
  }
  const Point eye = camera.drawnEye();
  const Point& target = camera.target();
  const Vecteur& up = camera.up();
  glMatrixMode(GL_MODELVIEW);
  gluLookAt(eye.x, eye.y, eye.z, target.x, target.y, target.z, up.x, up.y, up.z);
}

void drawGradientBackground(const std::array<float, 3>& topColour, const PicturePart& part) {
  const PushedAttributes attributes(GL_ALL_ATTRIB_BITS);
  const PushedMatrix projection(GL_PROJECTION);
  glLoadIdentity();
  glOrtho(2 * part.left - 1, 2 * part.right - 1, 2 * part.bottom - 1, 2 * part.top - 1, -1, 1);
  const PushedMatrix modelview(GL_MODELVIEW);
  glLoadIdentity();

  glDepthMask(GL_FALSE);
  glDisable(GL_DEPTH_TEST);
  glDisable(GL_LIGHTING);
  glDisable(GL_CULL_FACE);
  glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);

  glBegin(GL_QUADS);
  glColor4f(1, 1, 1, 0);
  glVertex2f(-1, -1);
  glVertex2f(1, -1);
  glColor4f(topColour[0], topColour[1], topColour[2], 1);
  glVertex2f(1, 1);
  glVertex2f(-1, 1);
  glEnd();
}

void drawScene(const ScenePass& pass, const std::function<void()>& drawList) {
  loadProjection(pass.camera, pass.part);
  loadEyeSpace();
  applyLights(pass.lights);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  if (pass.gradient) {
    drawGradientBackground(*pass.gradient, pass.part);
  }
  if (!pass.camera) {
    return;
  }
  lookAlong(*pass.camera);
  const PixelScale scale(pass.pixelScale);
  const BalancedStacks stacks;
  drawList();
}

}  // namespace zyn
