#include "objects/text/GlyphPixels.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "objects/text/TextCoverage.h"

namespace zyn {

namespace {

// What glyphs are kept for, in steps that do not change the look of a text.
constexpr int kPhases = 64;  ///< places between two pixels along each axis
constexpr double kStepsOfEm = 64;
constexpr double kStepsOfOpacity = 1024;

/// How many of those places count as one. Glyphs of a text share their height between pixels, but
/// not the error of their places along the line, so that the height has to be the more exact.
struct PhaseSteps {
  explicit PhaseSteps(double em) : x(isSmall(em) ? 2 : 4), y(isSmall(em) ? 1 : 2) {}

  int x;
  int y;

 private:
  static bool isSmall(double em) { return em < 12; }
};

int down(double value) { return static_cast<int>(std::floor(value)); }
int up(double value) { return static_cast<int>(std::ceil(value)); }

/// A place as a pixel and a phase.
struct PixelPlace {
  PixelPlace(double position, int step)
      : PixelPlace(step * static_cast<int>(std::lround(position * kPhases / step))) {}

  int pixel;
  int phase;

 private:
  explicit PixelPlace(int steps)
      : pixel(down(static_cast<double>(steps) / kPhases)), phase(steps - pixel * kPhases) {}
};

TextBox extentOf(const GlyphShape& shape) {
  constexpr double kFar = std::numeric_limits<double>::max();
  TextBox result{kFar, -kFar, kFar, -kFar};
  for (const Contour& contour : shape.contours) {
    for (const PlanePoint& point : contour) {
      result.left = std::min(result.left, point.x);
      result.right = std::max(result.right, point.x);
      result.bottom = std::min(result.bottom, point.y);
      result.top = std::max(result.top, point.y);
    }
  }
  return result;
}

/// What is seen of the background of a glyph that starts at this place.
PixelCover rasterise(const GlyphShape& shape, const PlanePoint& at, double em, double opacity) {
  const TextBox extent = extentOf(shape);
  if (extent.left > extent.right) {
    return {};
  }
  const int left = down(at.x + em * extent.left - 0.5);
  const int bottom = down(at.y + em * extent.bottom - 0.5);
  TextCoverage coverage(left, bottom, up(at.x + em * extent.right + 0.5) - left,
                        up(at.y + em * extent.top + 0.5) - bottom);
  coverage.add(shape, at, em, opacity);
  return {left, bottom, coverage.width(), coverage.height(), coverage.background()};
}

std::uint8_t product(int a, int b) {
  const int scaled = a * b + 128;
  return static_cast<std::uint8_t>((scaled + (scaled >> 8)) >> 8);
}

/// A glyph's picture over a text's, of which it may lie partly outside.
void multiply(PixelCover& whole, const PixelCover& part, int x, int y) {
  const int left = x + part.left - whole.left;
  const int bottom = y + part.bottom - whole.bottom;
  const int first = std::max(0, -left);
  const int last = std::min(part.width, whole.width - left);
  for (int row = std::max(0, -bottom); row < std::min(part.height, whole.height - bottom); ++row) {
    std::uint8_t* const to =
        whole.bytes.data() + static_cast<std::ptrdiff_t>(bottom + row) * whole.width + left;
    const std::uint8_t* const from =
        part.bytes.data() + static_cast<std::ptrdiff_t>(row) * part.width;
    for (int i = first; i < last; ++i) {
      to[i] = product(to[i], from[i]);
    }
  }
}

}  // namespace

const PixelCover& GlyphPixels::glyphOf(unsigned char code, int phaseX, int phaseY,
                                       const PixelText& text) {
  const auto em = std::lround(text.em * kStepsOfEm);
  const auto opacity = std::lround(text.opacity * kStepsOfOpacity);
  std::uint64_t key = code;
  for (const long part : {static_cast<long>(phaseX), static_cast<long>(phaseY), em, opacity}) {
    key = key << 13 | static_cast<std::uint64_t>(part);  // none is larger than 8191
  }
  const auto found = glyphs_.find(key);
  if (found != glyphs_.end()) {
    return found->second;
  }
  const PlanePoint at = {static_cast<double>(phaseX) / kPhases,
                         static_cast<double>(phaseY) / kPhases};
  PixelCover made = rasterise((*shapes_)[code], at, static_cast<double>(em) / kStepsOfEm,
                              static_cast<double>(opacity) / kStepsOfOpacity);
  const std::size_t bytes = made.bytes.size() + sizeof(PixelCover) + sizeof(key);
  const PixelCover& kept = glyphs_.emplace(key, std::move(made)).first->second;
  bytes_ += bytes;
  return kept;
}

CoverBox GlyphPixels::place(const PixelText& text, int width, int height,
                            std::vector<PixelGlyph>& glyphs) {
  CoverBox box;
  const PhaseSteps steps(text.em);
  double pen = text.start.x;
  const double reach = 4 * text.em;  // glyphs are smaller
  if (text.start.y < -reach || text.start.y > height + reach) {
    return box;
  }
  const PixelPlace y(text.start.y, steps.y);
  for (const char character : text.text) {
    const auto code = static_cast<unsigned char>(character);
    if (pen > -reach && pen < width + reach) {
      const PixelPlace x(pen, steps.x);
      const PixelCover& glyph = glyphOf(code, x.phase, y.phase, text);
      const int left = x.pixel + glyph.left;
      const int bottom = y.pixel + glyph.bottom;
      const CoverBox seen = {std::max(left, 0), std::max(bottom, 0),
                             std::min(left + glyph.width, width),
                             std::min(bottom + glyph.height, height)};
      if (!seen.isEmpty()) {
        glyphs.push_back({&glyph, x.pixel, y.pixel});
        box.unite(seen);
      }
    }
    pen += text.em * static_cast<double>(metrics_.glyphs[code].cellIncX);
  }
  return box;
}

void GlyphPixels::forgetMany() {
  if (bytes_ > kMostBytes) {
    glyphs_.clear();
    bytes_ = 0;
  }
}

void CoverBox::unite(const CoverBox& other) {
  if (other.isEmpty()) {
    return;
  }
  *this = isEmpty() ? other
                    : CoverBox{std::min(left, other.left), std::min(bottom, other.bottom),
                               std::max(right, other.right), std::max(top, other.top)};
}

PixelCover coverOf(std::span<const PixelGlyph> glyphs, const CoverBox& box) {
  PixelCover whole{box.left, box.bottom, box.right - box.left, box.top - box.bottom, {}};
  whole.bytes.assign(box.area(), 255);
  for (const PixelGlyph& glyph : glyphs) {
    multiply(whole, *glyph.background, glyph.x, glyph.y);
  }
  std::transform(whole.bytes.begin(), whole.bytes.end(), whole.bytes.begin(),
                 [](std::uint8_t seen) { return static_cast<std::uint8_t>(255 - seen); });
  return whole;
}

}  // namespace zyn
