#include "view3d/Sight.h"

#include <algorithm>
#include <cmath>

#include "core/VectorMath.h"

namespace zyn {

namespace {

bool showsAnything(const CParamsVue3D& camera) {
  const auto [zNear, zFar] = camera.drawnRange();
  return camera.width() != 0 && camera.height() != 0 && zNear < zFar;
}

}  // namespace

std::optional<Sight> sightThrough(const CParamsVue3D& camera, PixelPoint pixel) {
  if (!showsAnything(camera)) {
    return std::nullopt;
  }
  return CParamsVue3D(camera).sightThrough(pixel.x, pixel.y);
}

std::optional<GlMatrix> clipMatrixOf(const CParamsVue3D& camera) {
  if (!showsAnything(camera)) {
    return std::nullopt;
  }
  const Vecteur forward = camera.direction();
  const Vecteur right = normalised(cross(forward, camera.up()));
  const Vecteur up = cross(right, forward);
  const Point eye = camera.drawnEye();
  const auto [zNear, zFar] = camera.drawnRange();
  const double depth = zFar - zNear;
  GlMatrix matrix{};
  const auto setRow = [&](std::size_t row, const Vecteur& factors, double constant) {
    matrix[row] = factors.x;
    matrix[4 + row] = factors.y;
    matrix[8 + row] = factors.z;
    matrix[12 + row] = constant - dot(factors, eye - Point());
  };
  const double scale = camera.perspective() ? 2 * camera.drawnDistance() : 2;
  setRow(0, scale / camera.width() * right, 0);
  setRow(1, scale / camera.height() * up, 0);
  if (camera.perspective()) {
    setRow(2, (zFar + zNear) / depth * forward, -2 * zFar * zNear / depth);
    setRow(3, forward, 0);
  } else {
    setRow(2, 2 / depth * forward, -(zFar + zNear) / depth);
    setRow(3, {0, 0, 0}, 1);
  }
  const bool isFinite =
      std::all_of(matrix.begin(), matrix.end(), [](double value) { return std::isfinite(value); });
  return isFinite ? std::optional(matrix) : std::nullopt;
}

Point pointAt(const GlMatrix& clip, const Point& device) {
  struct Plane {
    Vecteur normal;
    double constant;
  };
  const auto planeOf = [&](std::size_t row, double value) {
    const auto factor = [&](std::size_t column) {
      return clip[4 * column + row] - value * clip[4 * column + 3];
    };
    return Plane{{factor(0), factor(1), factor(2)}, factor(3)};
  };
  const Plane x = planeOf(0, device.x);
  const Plane y = planeOf(1, device.y);
  const Plane z = planeOf(2, device.z);
  const Vecteur along = cross(x.normal, y.normal);
  const Vecteur sum = x.constant * cross(y.normal, z.normal) +
                      y.constant * cross(z.normal, x.normal) + z.constant * along;
  return Point() - 1 / dot(along, z.normal) * sum;
}

}  // namespace zyn
