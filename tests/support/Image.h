#pragma once

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <vector>

namespace zyn::test {

struct Rgb {
  int r = 0;
  int g = 0;
  int b = 0;
  bool operator==(const Rgb&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Rgb& c) {
  return out << '(' << c.r << ", " << c.g << ", " << c.b << ')';
}

/// Largest difference of two colours in one component, 0 to 255.
int difference(const Rgb& a, const Rgb& b);

/// The pixels of a picture; rows from the top.
class Image {
 public:
  Image() = default;
  Image(int width, int height)
      : width_(width),
        height_(height),
        pixels_(static_cast<size_t>(width) * static_cast<size_t>(height)) {}

  int width() const { return width_; }
  int height() const { return height_; }
  /// x from the left, y from the top; throws outside the picture.
  const Rgb& at(int x, int y) const { return pixels_.at(index(x, y)); }
  Rgb& at(int x, int y) { return pixels_.at(index(x, y)); }

  bool operator==(const Image&) const = default;

  /// How many pixels have exactly this colour.
  int count(const Rgb& colour) const;

 private:
  size_t index(int x, int y) const;

  int width_ = 0;
  int height_ = 0;
  std::vector<Rgb> pixels_;
};

/// Mean difference of two pictures of one size, in steps of 255 per component.
double meanDifference(const Image& a, const Image& b);

/// Smallest rectangle around all pixels of one colour; empty (right < left) when there is none.
struct PixelBox {
  int left;
  int top;
  int right;
  int bottom;
  bool empty() const { return right < left; }
  double centreX() const { return (left + right + 1) / 2.0; }
  double centreY() const { return (top + bottom + 1) / 2.0; }
};
PixelBox boxOf(const Image& image, const Rgb& colour);

}  // namespace zyn::test
