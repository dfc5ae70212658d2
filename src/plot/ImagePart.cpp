#include "plot/ImagePart.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace zyn {

namespace {

/// Where a pixel comes from along one axis: two pixels, and how much it has of the second one.
struct Source {
  std::size_t first;
  std::size_t second;
  double part;
};

std::vector<Source> sourcesOf(double from, double to, double start, double end, int count,
                              bool isSmooth) {
  const double last = count - 1;
  std::vector<Source> sources;
  for (double pixel = from; pixel < to; ++pixel) {
    const double place = (pixel + 0.5 - start) / (end - start) * count;
    const double at = std::clamp(isSmooth ? place - 0.5 : std::floor(place), 0.0, last);
    const auto first = static_cast<std::size_t>(at);
    sources.push_back({first, std::min(first + 1, static_cast<std::size_t>(count - 1)),
                       at - static_cast<double>(first)});
  }
  return sources;
}

std::uint8_t mixed(std::uint8_t a, std::uint8_t b, std::uint8_t c, std::uint8_t d,
                   const Source& across, const Source& up) {
  return static_cast<std::uint8_t>(
      std::lround(std::lerp(std::lerp(a, b, across.part), std::lerp(c, d, across.part), up.part)));
}

}  // namespace

PixelImage stretchedPart(const PixelImage& image, const PixelBox& box, const PixelBox& part,
                         bool isSmooth) {
  const auto across = sourcesOf(part.left, part.right, box.left, box.right, image.width, isSmooth);
  const auto up = sourcesOf(part.bottom, part.top, box.bottom, box.top, image.height, isSmooth);
  PixelImage result{static_cast<int>(across.size()), static_cast<int>(up.size()), {}};
  result.pixels.reserve(4 * across.size() * up.size());
  const auto at = [&](std::size_t row, std::size_t column) {
    return &image.pixels[4 * (row * static_cast<std::size_t>(image.width) + column)];
  };
  for (const Source& y : up) {
    for (const Source& x : across) {
      for (std::size_t i = 0; i < 4; ++i) {
        result.pixels.push_back(mixed(at(y.first, x.first)[i], at(y.first, x.second)[i],
                                      at(y.second, x.first)[i], at(y.second, x.second)[i], x, y));
      }
    }
  }
  return result;
}

}  // namespace zyn
