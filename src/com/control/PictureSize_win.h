#pragma once

#include <windows.h>

#include <algorithm>
#include <cmath>

namespace zyn {

/// The largest side of a picture, and the most pixels that it has: containers tell sizes that no
/// memory holds.
inline constexpr double kLargestPictureSide = 8192;
inline constexpr double kMostPicturePixels = 1 << 24;

/// The size in which a picture of `pixels` is drawn for a container: larger ones are drawn smaller
/// and stretched. Sides are at least 1.
inline SIZE pictureSizeFor(SIZE pixels) {
  const double width = std::max(1L, pixels.cx);
  const double height = std::max(1L, pixels.cy);
  // The side first: a long strip may have few pixels, and few in height.
  const double strip = std::max(1.0, std::max(width, height) / kLargestPictureSide);
  const double area = (width / strip) * (height / strip);
  const double shrink = strip * std::max(1.0, std::sqrt(area / kMostPicturePixels));
  return {std::max(1L, static_cast<LONG>(width / shrink)),
          std::max(1L, static_cast<LONG>(height / shrink))};
}

}  // namespace zyn
