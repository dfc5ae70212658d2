#include "view2d/FrameDrawing.h"

#include <cmath>
#include <memory>
#include <string_view>

namespace zyn {

namespace {

DrawColour colourOf(const GraphColour& colour, double alpha = 1.0) {
  return {colour[0], colour[1], colour[2], alpha};
}

class FrameWriter {
 public:
  FrameWriter(const FrameLayout& layout, const FramePlace& place, const ShapeText& shape,
              const std::function<std::string(const std::string&)>& decode)
      : layout_(layout), place_(place), shape_(shape), decode_(decode) {}

  DrawnLayer layer;

  void write(const FrameLayout::LineGroup& group) {
    DrawnLines lines;
    lines.stroke.colour = colourOf(group.colour, group.alpha);
    lines.stroke.width = group.width * place_.pixelScale;
    for (const FrameLayout::Line& line : group.lines) {
      lines.lines.starts.push_back(lines.lines.points.size());
      lines.lines.points.push_back(at(line.from));
      lines.lines.points.push_back(at(line.to));
    }
    layer.items.emplace_back(std::move(lines));
  }

  void writeArrows() {
    DrawnPolygons arrows{colourOf(layout_.colour), {}};
    for (const FrameLayout::Arrow& arrow : layout_.arrows) {
      arrows.outlines.starts.push_back(arrows.outlines.points.size());
      for (const PlanePoint& corner : arrow) {
        arrows.outlines.points.push_back(at(corner));
      }
    }
    layer.items.emplace_back(std::move(arrows));
  }

  void write(const PlacedLabel& label) {
    writeDigits(label.label, {label.box.left, label.box.bottom}, layout_.labelFont.size);
    if (!label.exponent.empty()) {
      writeDigits(label.exponent, label.exponentStart, layout_.labelFont.exponentSize);
    }
  }

  void write(const PlacedTitle& title, const PixelImage* picture) {
    for (const PlacedTitle::Text& text : title.texts) {
      writeText(text.text, text.start, text.scale);
    }
    if (title.picture && picture && !picture->isEmpty()) {
      const PlanePoint corner = at(*title.picture);
      layer.items.emplace_back(
          DrawnImage{std::make_shared<const PixelImage>(*picture),
                     {corner.x, corner.x + picture->width * place_.pixelScale, corner.y,
                      corner.y + picture->height * place_.pixelScale}});
    }
  }

 private:
  PlanePoint at(const PlanePoint& point) const {
    return {place_.origin.x + place_.x * point.x, place_.origin.y + place_.y * point.y};
  }

  /// As large as the digits that the layout has measured.
  void writeDigits(const std::string& digits, const PlanePoint& start, int size) {
    constexpr std::string_view kMany = "0000000000";
    const TextLine& line = place_.metrics->digits;
    const double own = measureText(*place_.metrics, kMany, line).right;
    const double em = own > 0 ? layout_.labelFont.textWidth(kMany, size) / own : 0.0;
    writeText(digits, {start.x, start.y - em * line.bottom}, em);
  }

  void writeText(const std::string& bytes, const PlanePoint& start, double em) {
    DrawnText text;
    text.text = decode_(bytes);
    text.shaped = shape_(text.text, text.face);
    text.emHeight = em * std::fabs(place_.y);
    text.start = at(start);
    text.colour = colourOf(layout_.colour);
    layer.items.emplace_back(std::move(text));
  }

  const FrameLayout& layout_;
  const FramePlace& place_;
  const ShapeText& shape_;
  const std::function<std::string(const std::string&)>& decode_;
};

}  // namespace

DrawnLayer drawingOf(const FrameLayout& layout, const FramePlace& place, const ShapeText& shape,
                     const std::function<std::string(const std::string& bytes)>& decode) {
  FrameWriter writer(layout, place, shape, decode);
  for (const FrameLayout::LineGroup& group : layout.lines) {
    writer.write(group);
  }
  writer.writeArrows();
  for (const PlacedLabel& label : layout.labels) {
    writer.write(label);
  }
  writer.write(layout.titleX, place.pictureX);
  writer.write(layout.titleY, place.pictureY);
  return std::move(writer.layer);
}

}  // namespace zyn
