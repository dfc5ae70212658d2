#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "plot/Drawing.h"
#include "plot/PlotLayout.h"

namespace zyn::test {

/// What a character of the font below is black of: signs between the lines of digits, letters down
/// to below the baseline, all others (raised digits, accents) higher.
inline std::pair<double, double> blockHeights(std::string_view character) {
  if (character.size() > 1) {
    return {0, 0.85};
  }
  const bool isSign =
      std::string_view("0123456789+-.:").find(character[0]) != std::string_view::npos;
  return isSign ? std::pair(0.0, 0.7) : std::pair(-0.2, 0.75);
}

/// Lays a text out in a font whose characters are blocks half an em wide, narrow dots and blanks.
inline std::shared_ptr<const ShapedText> layOutBlocks(std::string_view text, bool isBold) {
  auto shaped = std::make_shared<ShapedText>();
  shaped->text = {-0.22, 0.9};
  shaped->digits = {0, 0.7};
  for (std::size_t i = 0; i < text.size();) {
    std::size_t size = 1;
    while (i + size < text.size() &&
           (static_cast<unsigned char>(text[i + size]) & 0xC0U) == 0x80U) {
      ++size;
    }
    const std::string_view character = text.substr(i, size);
    i += size;
    const bool isNarrow = character == "." || character == " " || character == ":";
    const double advance = (isNarrow ? 0.25 : 0.55) * (isBold ? 1.1 : 1.0);
    if (character != " ") {
      const auto [bottom, top] = blockHeights(character);
      const double width = advance - 0.05;
      auto glyph = std::make_shared<GlyphShape>();
      glyph->contours.push_back({{0, bottom}, {width, bottom}, {width, top}, {0, top}});
      shaped->left = shaped->glyphs.empty() ? shaped->width : shaped->left;
      shaped->right = shaped->width + width;
      shaped->glyphs.push_back({glyph, {shaped->width, 0}});
    }
    shaped->width += advance;
  }
  return shaped;
}

/// The same for layouts, which ask again and again.
inline std::shared_ptr<const ShapedText> shapeBlocks(std::string_view text, const FontFace& face) {
  static std::unordered_map<std::string, std::shared_ptr<const ShapedText>> known;
  auto& shaped = known[std::string(face.bold ? "b" : "r").append(text)];
  if (!shaped) {
    shaped = layOutBlocks(text, face.bold);
  }
  return shaped;
}

/// What is black of a text in the picture.
inline zyn::PixelBox inkOf(const DrawnText& text) {
  constexpr double kFar = std::numeric_limits<double>::infinity();
  zyn::PixelBox ink{kFar, -kFar, kFar, -kFar};
  for (const PlacedGlyph& glyph : text.shaped->glyphs) {
    for (const PlanePoint& point : glyph.shape->contours.front()) {
      PlanePoint at = text.emHeight * (glyph.at + point);
      at = text.start + (text.isUpright ? PlanePoint{-at.y, at.x} : at);
      ink.left = std::min(ink.left, at.x);
      ink.right = std::max(ink.right, at.x);
      ink.bottom = std::min(ink.bottom, at.y);
      ink.top = std::max(ink.top, at.y);
    }
  }
  return ink;
}

/// All of one kind that a drawing holds, in order.
template <class Item>
std::vector<Item> itemsOf(const Drawing& drawing) {
  std::vector<Item> found;
  for (const DrawnLayer& layer : drawing) {
    for (const DrawnItem& item : layer.items) {
      if (const auto* one = std::get_if<Item>(&item)) {
        found.push_back(*one);
      }
    }
  }
  return found;
}

}  // namespace zyn::test
