#include "objects/PickVolume.h"

#include <algorithm>
#include <cmath>

namespace zyn {

namespace {

/// Single precision rounds by 6e-8 of the largest term; three matrices and a sum of four multiply
/// that.
constexpr double kRelativeMargin = 1e-5;

/// Of the half width of the volume.
constexpr double kMargin = 0.01;

PickVolume::Matrix product(const PickVolume::Matrix& a, const PickVolume::Matrix& b) {
  PickVolume::Matrix result{};
  for (std::size_t column = 0; column < 4; ++column) {
    for (std::size_t row = 0; row < 4; ++row) {
      for (std::size_t i = 0; i < 4; ++i) {
        result[4 * column + row] += a[4 * i + row] * b[4 * column + i];
      }
    }
  }
  return result;
}

/// The largest value over a box of a linear function, margin included.
double largestOver(const Box3& box, const std::array<double, 4>& factors) {
  const std::array<double, 6> terms = {factors[0] * box.xMin, factors[0] * box.xMax,
                                       factors[1] * box.yMin, factors[1] * box.yMax,
                                       factors[2] * box.zMin, factors[2] * box.zMax};
  double largest = factors[3];
  double magnitude = std::abs(factors[3]);
  for (std::size_t axis = 0; axis < 3; ++axis) {
    largest += std::max(terms[2 * axis], terms[2 * axis + 1]);
    magnitude += std::max(std::abs(terms[2 * axis]), std::abs(terms[2 * axis + 1]));
  }
  return largest + kRelativeMargin * magnitude;
}

}  // namespace

PickVolume::PickVolume(const Matrix& projection, const Matrix& modelView)
    : clip_(product(projection, modelView)) {}

bool PickVolume::mayMeet(const Box3& box) const {
  for (std::size_t axis = 0; axis < 3; ++axis) {
    for (const double side : {1.0, -1.0}) {
      std::array<double, 4> distance{};  // from the volume's side: negative outside
      for (std::size_t i = 0; i < 4; ++i) {
        distance[i] = (1 + kMargin) * clip_[4 * i + 3] + side * clip_[4 * i + axis];
      }
      if (largestOver(box, distance) < 0) {
        return false;
      }
    }
  }
  return true;
}

}  // namespace zyn
