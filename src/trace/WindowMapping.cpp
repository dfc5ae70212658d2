#include "trace/WindowMapping.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace zyn {

namespace {

using Matrix = std::array<double, 16>;

Matrix product(std::span<const double, 16> a, std::span<const double, 16> b) {
  Matrix result{};
  for (std::size_t column = 0; column < 4; ++column) {
    for (std::size_t row = 0; row < 4; ++row) {
      for (std::size_t i = 0; i < 4; ++i) {
        result[4 * column + row] += a[4 * i + row] * b[4 * column + i];
      }
    }
  }
  return result;
}

bool isAffine(const Matrix& clip) {
  for (const double value : clip) {
    if (!std::isfinite(value)) {
      return false;
    }
  }
  return clip[3] == 0 && clip[7] == 0 && clip[11] == 0 && clip[15] != 0;
}

/// A row of the matrix, from -1..1 to `start`..`start + size`.
AffineForm toRange(const Matrix& clip, std::size_t row, double start, double size) {
  const double factor = size / (2 * clip[15]);
  return {clip[row] * factor, clip[4 + row] * factor, clip[8 + row] * factor,
          clip[12 + row] * factor + size / 2 + start};
}

}  // namespace

std::optional<WindowMapping> windowMapping(std::span<const double, 16> modelView,
                                           std::span<const double, 16> projection,
                                           std::span<const int, 4> viewport) {
  const Matrix clip = product(projection, modelView);
  if (!isAffine(clip)) {
    return std::nullopt;
  }
  return WindowMapping{toRange(clip, 0, viewport[0], viewport[2]),
                       toRange(clip, 1, viewport[1], viewport[3]), toRange(clip, 2, 0, 1)};
}

}  // namespace zyn
