#include "plot/TextPlacer.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace zyn {

namespace {

constexpr std::string_view kEllipsis = "\u2026";
/// Less than so many characters of a text say nothing.
constexpr std::size_t kLeastCharacters = 3;

/// Where its characters end.
std::vector<std::size_t> characterEnds(std::string_view text) {
  std::vector<std::size_t> ends;
  for (std::size_t i = 1; i <= text.size(); ++i) {
    if (i == text.size() || (static_cast<unsigned char>(text[i]) & 0xC0U) != 0x80U) {
      ends.push_back(i);
    }
  }
  return ends;
}

}  // namespace

double centred(double middle, double length, double size, double edge) {
  return std::clamp(middle - length / 2, edge, std::max(edge, size - edge - length));
}

bool isPlainNumber(std::string_view text) {
  return text.find_first_not_of("0123456789+-.:eEx ") == std::string_view::npos;
}

LaidText TextPlacer::layOut(std::string_view text, const TextStyle& style) const {
  LaidText laid;
  const std::shared_ptr<const ShapedText> shaped = page_.shape(text, style.face);
  const double em = style.emHeight;
  const TextLine& line = isPlainNumber(text) ? shaped->digits : shaped->text;
  laid.box = {em * shaped->left, em * shaped->right, em * line.bottom, em * line.top};
  laid.digits = {em * shaped->digits.bottom, em * shaped->digits.top};
  laid.drawn = {.text = std::string(text),
                .face = style.face,
                .shaped = shaped,
                .emHeight = em,
                .colour = style.colour};
  return laid;
}

double TextPlacer::widthOf(std::string_view text, const TextStyle& style) const {
  const std::shared_ptr<const ShapedText> shaped = page_.shape(text, style.face);
  return style.emHeight * (shaped->right - shaped->left);
}

LaidText TextPlacer::layOutWithin(double width, std::string_view text,
                                  const TextStyle& style) const {
  if (widthOf(text, style) <= width) {
    return layOut(text, style);
  }
  const std::vector<std::size_t> ends = characterEnds(text);
  const auto shortened = [&](std::size_t characters) {
    std::string_view part = text.substr(0, ends[characters - 1]);
    part = part.substr(0, part.find_last_not_of(' ') + 1);
    return std::string(part).append(kEllipsis);
  };
  std::size_t least = kLeastCharacters - 1;
  for (std::size_t most = ends.size(); most > least + 1;) {
    const std::size_t middle = (least + most) / 2;
    (widthOf(shortened(middle), style) <= width ? least : most) = middle;
  }
  return least < kLeastCharacters ? LaidText() : layOut(shortened(least), style);
}

std::vector<LaidText> TextPlacer::layOutLines(double width, std::string_view text,
                                              const TextStyle& style) const {
  std::size_t end = text.size();
  while (end != std::string_view::npos && end > 0 && widthOf(text.substr(0, end), style) > width) {
    end = text.rfind(' ', end - 1);
  }
  const bool isBroken = end != std::string_view::npos && end > 0 && end < text.size();
  std::vector<LaidText> lines{layOutWithin(width, isBroken ? text.substr(0, end) : text, style)};
  if (isBroken) {
    lines.push_back(layOutWithin(width, text.substr(end + 1), style));
  }
  std::erase_if(lines, [](const LaidText& line) { return line.isEmpty(); });
  return lines;
}

TextLine TextPlacer::lineOf(const TextStyle& style) const {
  const TextLine line = page_.shape("0", style.face)->text;
  return {style.emHeight * line.bottom, style.emHeight * line.top};
}

TextLine TextPlacer::digitsOf(const TextStyle& style) const {
  const TextLine line = page_.shape("0", style.face)->digits;
  return {style.emHeight * line.bottom, style.emHeight * line.top};
}

PixelBox TextPlacer::boxAt(const LaidText& text, const PlanePoint& start, bool isUpright) {
  const PixelBox& box = text.box;
  if (isUpright) {
    return {start.x - box.top, start.x - box.bottom, start.y + box.left, start.y + box.right};
  }
  return {start.x + box.left, start.x + box.right, start.y + box.bottom, start.y + box.top};
}

bool TextPlacer::isFree(const PixelBox& box) const {
  return PixelBox{0, page_.width, 0, page_.height}.holds(box) &&
         std::ranges::none_of(taken_, [&](const PixelBox& other) { return box.overlaps(other); });
}

bool TextPlacer::put(const LaidText& text, const PlanePoint& start, bool isUpright) {
  const PlanePoint at{std::round(start.x), std::round(start.y)};
  const PixelBox box = boxAt(text, at, isUpright);
  if (text.isEmpty() || !isFree(box)) {
    return false;
  }
  taken_.push_back(box);
  texts_.push_back(text.drawn);
  texts_.back().start = at;
  texts_.back().isUpright = isUpright;
  return true;
}

}  // namespace zyn
