#include "support/Image.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace zyn::test {

int difference(const Rgb& a, const Rgb& b) {
  return std::max({std::abs(a.r - b.r), std::abs(a.g - b.g), std::abs(a.b - b.b)});
}

size_t Image::index(int x, int y) const {
  if (x < 0 || x >= width_ || y < 0 || y >= height_) {
    throw std::out_of_range("pixel outside the image");
  }
  return static_cast<size_t>(y) * static_cast<size_t>(width_) + static_cast<size_t>(x);
}

int Image::count(const Rgb& colour) const {
  return static_cast<int>(std::count(pixels_.begin(), pixels_.end(), colour));
}

double meanDifference(const Image& a, const Image& b) {
  if (a.width() != b.width() || a.height() != b.height() || a.width() * a.height() == 0) {
    throw std::invalid_argument("images of different or no size");
  }
  double sum = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) {
      const Rgb& p = a.at(x, y);
      const Rgb& q = b.at(x, y);
      sum += std::abs(p.r - q.r) + std::abs(p.g - q.g) + std::abs(p.b - q.b);
    }
  }
  return sum / (3.0 * a.width() * a.height());
}

PixelBox boxOf(const Image& image, const Rgb& colour) {
  PixelBox box = {image.width(), image.height(), -1, -1};
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (image.at(x, y) != colour) continue;
      box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x),
             std::max(box.bottom, y)};
    }
  }
  return box;
}

}  // namespace zyn::test
