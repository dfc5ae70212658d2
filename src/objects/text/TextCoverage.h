#pragma once

#include <cstdint>
#include <vector>

#include "core/PlanePoint.h"
#include "objects/text/GlyphShape.h"

namespace zyn {

/// How much of each pixel of a rectangle a text covers, opacity and smooth edges included: what
/// filled glyphs with smooth outlines over them give when OpenGL (Mesa) blends them.
class TextCoverage {
 public:
  /// `left`, `bottom`: the pixel that comes first, rows from bottom to top.
  TextCoverage(int left, int bottom, int width, int height);

  /// Adds a glyph that starts at this point, in pixels, where an em is `em` pixels high. What lies
  /// outside the rectangle is left out.
  void add(const GlyphShape& glyph, const PlanePoint& at, double em, double opacity);

  int width() const { return width_; }
  int height() const { return height_; }

  /// How much of what is behind is seen, row by row, 255 for all.
  std::vector<std::uint8_t> background() const;

 private:
  float& seenAt(int x, int y) { return seen_[index(x, y)]; }
  std::size_t index(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
           static_cast<std::size_t>(x);
  }
  void fill(const std::vector<Contour>& contours, const PlanePoint& at, double em, float opacity);
  void countTurns(const PlanePoint& from, const PlanePoint& to);
  void outline(const Contour& contour, const PlanePoint& at, double em, float opacity);
  void drawLine(const PlanePoint& from, const PlanePoint& to, float opacity);

  int left_;
  int bottom_;
  int width_;
  int height_;
  std::vector<float> seen_;  ///< of what is behind
  std::vector<int> turns_;   ///< by which the winding number changes, of the glyph filled last
};

}  // namespace zyn
