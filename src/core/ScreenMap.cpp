#include "core/ScreenMap.h"

#include <cmath>
#include <cstddef>

#include "core/VectorMath.h"

namespace zyn {

namespace {

double element(const GlMatrix& matrix, std::size_t row, std::size_t column) {
  return matrix[4 * column + row];
}

bool isFinite(const Vecteur& v) {
  return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

}  // namespace

PixelFrame::PixelFrame(const Vecteur& right, const Vecteur& up, const Vecteur& away)
    : right_(right), up_(up) {
  // A pixel away is as long as one across.
  const double length = std::sqrt(right.norm() * up.norm());
  const Vecteur pixelAway = length / away.norm() * away;
  const double volume = dot(right, cross(up, pixelAway));
  rows_ = {1 / volume * cross(up, pixelAway), 1 / volume * cross(pixelAway, right),
           1 / volume * cross(right, up)};
}

PlanePoint PixelFrame::onScreen(const Vecteur& step) const {
  return {dot(rows_[0], step), dot(rows_[1], step)};
}

double PixelFrame::pixelsOf(const Vecteur& step) const {
  return std::hypot(dot(rows_[0], step), dot(rows_[1], step), dot(rows_[2], step));
}

ScreenMap::ScreenMap() : rows_{} {
  for (const Row row : {kX, kY, kDepth, kW}) {
    rows_[row][row] = 1;
  }
}

ScreenMap::ScreenMap(const GlMatrix& modelview, const Lens& lens) : rows_{} {
  const GlMatrix clip = product(lens.projection, modelview);
  const double halfWidth = lens.viewport[2] / 2;
  const double halfHeight = lens.viewport[3] / 2;
  for (std::size_t column = 0; column < 4; ++column) {
    const double w = element(clip, kW, column);
    rows_[kX][column] = halfWidth * element(clip, kX, column) + (lens.viewport[0] + halfWidth) * w;
    rows_[kY][column] =
        halfHeight * element(clip, kY, column) + (lens.viewport[1] + halfHeight) * w;
    rows_[kDepth][column] = element(clip, kDepth, column);
    rows_[kW][column] = w;
  }
}

ScreenMap ScreenMap::orthographic(const Point& origin, const Vecteur& right, const Vecteur& up) {
  ScreenMap map;
  const auto setRow = [&](Row row, const Vecteur& step) {
    const Vecteur v = 1 / dot(step, step) * step;
    map.rows_[row] = {v.x, v.y, v.z, -dot(v, origin - Point())};
  };
  setRow(kX, right);
  setRow(kY, up);
  setRow(kDepth, cross(right, up));
  return map;
}

ScreenMap ScreenMap::perspective(const Point& origin, const Vecteur& right, const Vecteur& up,
                                 const Point& eye) {
  ScreenMap map;
  const Vecteur across = cross(right, up);
  const Vecteur w = -1 / dot(across, eye - origin) * across;  // 1 at the origin, 0 at the eye
  // From the eye a point is drawn out to w = 1.
  const auto setRow = [&](Row row, const Vecteur& step) {
    const Vecteur v = 1 / dot(step, step) * step;
    const Vecteur slope = v + dot(v, eye - origin) * w;
    map.rows_[row] = {slope.x, slope.y, slope.z, -dot(slope, eye - Point())};
  };
  setRow(kX, right);
  setRow(kY, up);
  map.rows_[kDepth] = {0, 0, 0, 1};
  map.rows_[kW] = {w.x, w.y, w.z, -dot(w, eye - Point())};
  return map;
}

std::optional<PixelFrame> ScreenMap::at(const Point& point) const {
  const Homogeneous image = transform(point);
  const Vecteur x = gradient(kX, image);
  const Vecteur y = gradient(kY, image);
  const Vecteur depth = gradient(kDepth, image);
  const double volume = dot(x, cross(y, depth));
  const Vecteur right = 1 / volume * cross(y, depth);
  const Vecteur up = 1 / volume * cross(depth, x);
  const Vecteur away = 1 / volume * cross(x, y);
  if (!isFinite(right) || !isFinite(up) || !isFinite(away)) {
    return std::nullopt;
  }
  return PixelFrame(right, up, away);
}

PlanePoint ScreenMap::pixelOf(const Point& point) const {
  const Homogeneous image = transform(point);
  return {image[kX] / image[kW], image[kY] / image[kW]};
}

ScreenMap::Homogeneous ScreenMap::transform(const Point& point) const {
  Homogeneous image{};
  for (const Row row : {kX, kY, kDepth, kW}) {
    const Homogeneous& r = rows_[row];
    image[row] = r[0] * point.x + r[1] * point.y + r[2] * point.z + r[3];
  }
  return image;
}

Vecteur ScreenMap::gradient(Row row, const Homogeneous& image) const {
  const double w = image[kW];
  const auto along = [&](std::size_t axis) {
    return (rows_[row][axis] * w - image[row] * rows_[kW][axis]) / (w * w);
  };
  return {along(0), along(1), along(2)};
}

}  // namespace zyn
