#include "objects/text/TextBox.h"

namespace zyn {

namespace {

const GlyphMetrics& glyphOf(const FontMetrics& metrics, char character) {
  return metrics.glyphs[static_cast<unsigned char>(character)];
}

}  // namespace

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
