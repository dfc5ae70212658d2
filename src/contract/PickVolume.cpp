#include "contract/PickVolume.h"

#include <algorithm>
#include <cmath>

namespace zyn {

namespace {

/// Single precision rounds by 6e-8 of the largest term; three matrices and a sum of four multiply
/// that.
constexpr double kRelativeMargin = 1e-5;

/// Of the half width of the volume.
constexpr double kMargin = 0.01;

/// Coordinates beyond which nobody knows what single precision makes of them.
constexpr double kLargest = 1e18;

/// The larger product of the factor and the ends of a range.
double largest(double factor, double low, double high) {
  return std::max(factor * low, factor * high);
}

/// How far from 0 a range lies, or more; not finite for one that is not.
double reach(double low, double high) { return std::abs(low) + std::abs(high); }

}  // namespace

PickVolume::PickVolume(const GlMatrix& projection, const GlMatrix& modelView)
    : modelView_(modelView), sides_{sideOf(projection, 0, 1), sideOf(projection, 0, -1),
                                    sideOf(projection, 1, 1), sideOf(projection, 1, -1),
                                    sideOf(projection, 2, 1), sideOf(projection, 2, -1)} {
  for (std::size_t column = 0; column < 4; ++column) {
    for (std::size_t i = 0; i < 4; ++i) {
      depth_[column] += projection[4 * i + 3] * modelView[4 * column + i];
    }
  }
}

PickVolume::Side PickVolume::sideOf(const GlMatrix& projection, std::size_t axis,
                                    double sign) const {
  Side side{};
  for (std::size_t i = 0; i < 4; ++i) {
    const double depth = (1 + kMargin) * projection[4 * i + 3];
    const double across = sign * projection[4 * i + axis];
    const double magnitude = std::abs(depth) + std::abs(across);
    for (std::size_t column = 0; column < 4; ++column) {
      side.distance[column] += (depth + across) * modelView_[4 * column + i];
      side.magnitude[column] += magnitude * std::abs(modelView_[4 * column + i]);
    }
    if (i < 2) {
      side.eyeDistance[i] = depth + across;
      side.eyeMagnitude[i] = magnitude;
    }
  }
  return side;
}

bool PickVolume::mayMeet(const Box3& box) const {
  const double x = reach(box.xMin, box.xMax);
  const double y = reach(box.yMin, box.yMax);
  const double z = reach(box.zMin, box.zMax);
  if (!(x + y + z < kLargest)) {
    return true;
  }
  return std::none_of(sides_.begin(), sides_.end(), [&](const Side& side) {
    const auto& [dx, dy, dz, d] = side.distance;
    const auto& [mx, my, mz, m] = side.magnitude;
    return largest(dx, box.xMin, box.xMax) + largest(dy, box.yMin, box.yMax) +
               largest(dz, box.zMin, box.zMax) + d +
               kRelativeMargin * (mx * x + my * y + mz * z + m) <
           0;
  });
}

bool PickVolume::mayMeet(const Point& point, const ScreenRectangle& around) const {
  const double x = std::abs(point.x);
  const double y = std::abs(point.y);
  const double z = std::abs(point.z);
  const double across = reach(around.left, around.right);
  const double up = reach(around.bottom, around.top);
  if (!(x + y + z + across + up < kLargest)) {
    return true;
  }
  return std::none_of(sides_.begin(), sides_.end(), [&](const Side& side) {
    const auto& [dx, dy, dz, d] = side.distance;
    const auto& [mx, my, mz, m] = side.magnitude;
    const double distance = dx * point.x + dy * point.y + dz * point.z + d +
                            largest(side.eyeDistance[0], around.left, around.right) +
                            largest(side.eyeDistance[1], around.bottom, around.top);
    const double magnitude =
        mx * x + my * y + mz * z + m + side.eyeMagnitude[0] * across + side.eyeMagnitude[1] * up;
    return distance + kRelativeMargin * magnitude < 0;
  });
}

double PickVolume::depthOf(const Point& point) const {
  return depth_[0] * point.x + depth_[1] * point.y + depth_[2] * point.z + depth_[3];
}

double PickVolume::axisLength(std::size_t axis) const {
  const double* const column = &modelView_[4 * axis];
  return std::hypot(column[0], column[1], column[2]);
}

bool PickVolume::isAxisReversed(std::size_t axis) const {
  return std::signbit(modelView_[5 * axis]);
}

}  // namespace zyn
