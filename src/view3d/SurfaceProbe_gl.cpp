#include "view3d/SurfaceProbe_gl.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "core/VectorMath.h"
#include "glcontext/FrameReading_gl.h"
#include "glcontext/StateGuards_gl.h"
#include "view3d/Sight.h"
#include "view3d/ViewPass3D_gl.h"

namespace zyn {

namespace {

/// The pixel is drawn as so many by so many, so that those around its centre tell how the surface
/// slopes.
constexpr int kSide = 3;
constexpr std::size_t kCentre = 4;

/// Depths as the buffer holds them, from 0 to 1 where nothing is drawn, row by row from below.
using Depths = std::array<double, kSide * kSide>;

Depths readDepths(int x, int y) {
  const FrameReading reading;
  glPixelTransferf(GL_DEPTH_SCALE, 1);
  glPixelTransferf(GL_DEPTH_BIAS, 0);
  std::array<GLuint, kSide * kSide> values{};
  glReadPixels(x, y, kSide, kSide, GL_DEPTH_COMPONENT, GL_UNSIGNED_INT, values.data());
  Depths depths{};
  std::transform(values.begin(), values.end(), depths.begin(), [](GLuint value) {
    return value / static_cast<double>(std::numeric_limits<GLuint>::max());
  });
  return depths;
}

/// Draws a pixel of the viewport over a square of it, and reads its depths.
Depths drawDepths(const CParamsVue3D& camera, PixelPoint pixel, const GLint* viewport,
                  const std::function<void()>& drawList) {
  const double width = viewport[2];
  const double height = viewport[3];
  const int x = std::min(pixel.x, viewport[2] - kSide);
  const int y = std::min(viewport[3] - 1 - pixel.y, viewport[3] - kSide);
  const BalancedStacks stacks;
  const PushedAttributes changed(GL_VIEWPORT_BIT | GL_SCISSOR_BIT | GL_COLOR_BUFFER_BIT |
                                 GL_DEPTH_BUFFER_BIT | GL_ENABLE_BIT);
  const PushedMatrix projection(GL_PROJECTION);
  const PushedMatrix modelview(GL_MODELVIEW);
  glViewport(x, y, kSide, kSide);
  glScissor(x, y, kSide, kSide);
  glEnable(GL_SCISSOR_TEST);
  glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
  glDepthMask(GL_TRUE);
  glClear(GL_DEPTH_BUFFER_BIT);
  loadCamera(camera, {pixel.x / width, (pixel.x + 1) / width, 1 - (pixel.y + 1) / height,
                      1 - pixel.y / height});
  drawList();
  return readDepths(x, y);
}

using Points = std::array<std::optional<Point>, kSide * kSide>;

/// The points that are drawn at the places of the pixel; none where nothing is.
Points pointsOf(const Depths& depths, const CParamsVue3D& camera, PixelPoint pixel,
                const GlMatrix& clip) {
  Points points;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const std::size_t column = i % kSide;
    const std::size_t row = i / kSide;
    const double x = pixel.x + (static_cast<double>(column) + 0.5) / kSide;
    const double y = pixel.y + 1 - (static_cast<double>(row) + 0.5) / kSide;
    if (depths[i] < 1) {
      points[i] = pointAt(clip, {2 * x / camera.pixelWidth() - 1, 1 - 2 * y / camera.pixelHeight(),
                                 2 * depths[i] - 1});
    }
  }
  return points;
}

/// The step from the centre to what is drawn beside it in a row (`by` 1) or a column (kSide), on
/// the side where the depth is nearer to its own.
std::optional<Vecteur> stepAt(const Points& points, const Depths& depths, std::size_t by) {
  const auto change = [&](std::size_t at) { return std::abs(depths[at] - depths[kCentre]); };
  const std::size_t before = kCentre - by;
  const std::size_t after = kCentre + by;
  if (points[after] && (!points[before] || change(after) < change(before))) {
    return *points[after] - *points[kCentre];
  }
  return points[before] ? std::optional(*points[kCentre] - *points[before]) : std::nullopt;
}

/// Towards the viewer; against the line of sight where too little is drawn to tell.
Vecteur normalOf(const Points& points, const Depths& depths, const Vecteur& sight) {
  const auto right = stepAt(points, depths, 1);
  const auto up = stepAt(points, depths, kSide);
  if (!right || !up) {
    return -sight;
  }
  const Vecteur normal = normalised(cross(*right, *up));
  return dot(normal, sight) > 0 ? -normal : normal;
}

}  // namespace

std::optional<SurfaceHit> probeSurface(const CParamsVue3D& camera, PixelPoint pixel,
                                       const std::function<void()>& drawList) {
  GLint viewport[4] = {};
  glGetIntegerv(GL_VIEWPORT, viewport);
  const auto sight = sightThrough(camera, pixel);
  const auto clip = clipMatrixOf(camera);
  if (!sight || !clip || viewport[2] < kSide || viewport[3] < kSide) {
    return std::nullopt;
  }
  const Depths depths = drawDepths(camera, pixel, viewport, drawList);
  const Points points = pointsOf(depths, camera, pixel, *clip);
  if (!points[kCentre]) {
    return std::nullopt;
  }
  const Vecteur& direction = sight->ray.direction;
  return SurfaceHit{dot(*points[kCentre] - sight->ray.origin, direction),
                    normalOf(points, depths, direction)};
}

}  // namespace zyn
