#include "objects/text/FontMetrics.h"

#include <algorithm>

namespace zyn {

namespace {

constexpr double kMillimetresPerInch = 25.4;
constexpr double kPointsPerInch = 72.0;
constexpr double kMillimetresPerMetre = 1000.0;

double topOf(const GlyphMetrics& glyph) { return glyph.originY; }

double bottomOf(const GlyphMetrics& glyph) { return double{glyph.originY} - glyph.blackBoxY; }

const GlyphMetrics& glyphOf(const FontMetrics& metrics, char character) {
  return metrics.glyphs[static_cast<unsigned char>(character)];
}

}  // namespace

double FontSize::inPixels(double pixel, double resolution) const {
  switch (unit) {
    case kMillimetre:
      return value / kMillimetresPerInch * resolution;
    case kInch:
      return value * resolution;
    case kPoint:
      return value / kPointsPerInch * resolution;
    case kModelMillimetre:
      return value / kMillimetresPerMetre / pixel;
    case kModelInch:
      return value * kMillimetresPerInch / kMillimetresPerMetre / pixel;
    case kModel:
      return value / pixel;
    default:
      return value;
  }
}

void FontMetrics::measureLines() {
  digits = {bottomOf(glyphs['0']), topOf(glyphs['0'])};
  for (std::size_t digit = '1'; digit <= '9'; ++digit) {
    digits.bottom = std::min(digits.bottom, bottomOf(glyphs[digit]));
    digits.top = std::max(digits.top, topOf(glyphs[digit]));
  }
  // Ten times the margin above: room for accents on capitals, almost none under descenders.
  const TextLine letters{bottomOf(glyphs['p']), topOf(glyphs['M'])};
  text = {letters.bottom - 0.02 * letters.height(), letters.top + 0.2 * letters.height()};
}

TextBox measureText(const FontMetrics& metrics, std::string_view text, const TextLine& line) {
  TextBox box{.left = 0.0, .right = 0.0, .bottom = line.bottom, .top = line.top};
  if (text.empty()) {
    return box;
  }
  for (const char character : text.substr(0, text.size() - 1)) {
    box.right += glyphOf(metrics, character).cellIncX;
  }
  const GlyphMetrics& last = glyphOf(metrics, text.back());
  box.right += double{last.originX} + last.blackBoxX;
  box.left = glyphOf(metrics, text.front()).originX;
  return box;
}

PlanePoint anchorOf(const TextBox& box, std::int32_t reference) {
  const double centre = (box.left + box.right) / 2.0;
  const double middle = (box.bottom + box.top) / 2.0;
  switch (reference) {
    case 1:
      return {box.left, box.bottom};
    case 2:
      return {box.right, box.bottom};
    case 3:
      return {box.right, box.top};
    case 4:
      return {box.left, box.top};
    case 5:
      return {centre, box.bottom};
    case 6:
      return {box.right, middle};
    case 7:
      return {centre, box.top};
    case 8:
      return {box.left, middle};
    case 9:
      return {centre, middle};
    default:
      return {};
  }
}

}  // namespace zyn
