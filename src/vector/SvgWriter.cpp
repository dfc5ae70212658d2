#include "vector/SvgWriter.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "core/Utf8.h"
#include "vector/NumberText.h"
#include "vector/PngEncoder.h"
#include "vector/VectorSink.h"
#include "vector/XmlText.h"

namespace zyn {

namespace {

std::string base64(const std::vector<std::uint8_t>& bytes) {
  constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t count = std::min<std::size_t>(bytes.size() - i, 3);
    std::uint32_t group = 0;
    for (std::size_t k = 0; k < 3; ++k) {
      group = group << 8 | (k < count ? bytes[i + k] : 0U);
    }
    for (std::size_t k = 0; k < 4; ++k) {
      text += k <= count ? kDigits[group >> (18 - 6 * k) & 63] : '=';
    }
  }
  return text;
}

/// The family as CSS has it: in quotes, which it must not hold itself.
std::string cssFamily(const std::wstring& family) {
  std::wstring name = family;
  std::erase_if(name, [](wchar_t letter) { return letter == L'\'' || letter == L'\\'; });
  std::string text = "'";
  text += utf8Of(name);
  return text + "', sans-serif";
}

class SvgFile final : private VectorSink {
 public:
  explicit SvgFile(const VectorPicture& picture) : height_(picture.height) {
    text_ =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" "
        "xmlns:xlink=\"http://www.w3.org/1999/xlink\" version=\"1.1\"";
    attribute("width", picture.width);
    attribute("height", picture.height);
    text_ += " viewBox=\"0 0 ";
    appendNumber(text_, picture.width);
    text_ += ' ';
    appendNumber(text_, picture.height);
    text_ += "\">\n";
    putOut(picture, *this);
    text_ += "</svg>\n";
  }

  std::string take() { return std::move(text_); }

 private:
  void beginLayer(const std::optional<PixelBox>& clip) override {
    if (!clip) {
      text_ += "<g>\n";
      return;
    }
    const std::string name = "clip" + std::to_string(++clips_);
    text_ += "<clipPath id=\"" + name + "\"><rect";
    attributes(*clip);
    text_ += "/></clipPath>\n<g clip-path=\"url(#" + name + ")\">\n";
  }

  void endLayer() override { text_ += "</g>\n"; }

  void strokeLines(const PixelLines& lines, const Stroke& stroke) override {
    text_ += "<path fill=\"none\" stroke-linejoin=\"round\"";
    paint("stroke", stroke.colour);
    attribute("stroke-width", stroke.width);
    if (!stroke.dashes.empty()) {
      text_ += " stroke-dasharray=\"";
      for (const double length : stroke.dashes) {
        appendNumber(text_, length);
        text_ += ' ';
      }
      text_.back() = '"';
    }
    path(lines, "");
  }

  void fillOutlines(const PixelLines& outlines, const DrawColour& colour) override {
    text_ += "<path";
    paint("fill", colour);
    path(outlines, "Z");
  }

  /// Lines without length have ends nevertheless.
  void fillDiscs(const std::vector<PlanePoint>& middles, double diameter,
                 const DrawColour& colour) override {
    text_ += "<path fill=\"none\" stroke-linecap=\"round\"";
    paint("stroke", colour);
    attribute("stroke-width", diameter);
    text_ += " d=\"";
    for (const PlanePoint& middle : middles) {
      text_ += 'M';
      place(middle);
      text_ += "h0";
    }
    text_ += "\"/>\n";
  }

  void showText(const DrawnText& text) override {
    text_ += "<text xml:space=\"preserve\"";
    attribute("x", text.start.x);
    attribute("y", height_ - text.start.y);
    text_ += " font-family=\"" + xmlText(cssFamily(text.face.family)) + '"';
    attribute("font-size", text.emHeight);
    text_ += text.face.bold ? " font-weight=\"bold\"" : "";
    text_ += text.face.italic ? " font-style=\"italic\"" : "";
    paint("fill", text.colour);
    if (text.isUpright) {
      text_ += " transform=\"rotate(-90 ";
      place(text.start);
      text_ += ")\"";
    }
    text_ += '>' + xmlText(text.text) + "</text>\n";
  }

  void showImage(const DrawnImage& image) override {
    text_ += "<image preserveAspectRatio=\"none\"";
    attributes(image.box);
    text_ += image.isSmooth ? "" : " style=\"image-rendering:pixelated\"";
    text_ += " xlink:href=\"data:image/png;base64," + base64(encodePng(*image.image)) + "\"/>\n";
  }

  void attribute(std::string_view name, double value) {
    text_ += ' ';
    text_ += name;
    text_ += "=\"";
    appendNumber(text_, value);
    text_ += '"';
  }

  void attributes(const PixelBox& box) {
    attribute("x", box.left);
    attribute("y", height_ - box.top);
    attribute("width", box.width());
    attribute("height", box.height());
  }

  /// Fills or strokes with a colour.
  void paint(std::string_view how, const DrawColour& colour) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    text_ += ' ';
    text_ += how;
    text_ += "=\"#";
    for (const double component : {colour.r, colour.g, colour.b}) {
      const auto byte =
          static_cast<std::size_t>(std::lround(std::clamp(component, 0.0, 1.0) * 255));
      text_ += kDigits[byte / 16];
      text_ += kDigits[byte % 16];
    }
    text_ += '"';
    if (colour.alpha < 1) {
      text_ += ' ';
      text_ += how;
      text_ += "-opacity=\"";
      appendNumber(text_, std::max(colour.alpha, 0.0), 4);
      text_ += '"';
    }
  }

  void place(const PlanePoint& at) {
    appendNumber(text_, at.x);
    text_ += ' ';
    appendNumber(text_, height_ - at.y);
  }

  void path(const PixelLines& lines, std::string_view end) {
    text_ += " d=\"";
    std::size_t line = 0;
    for (std::size_t i = 0; i < lines.points.size(); ++i) {
      const bool begins = line < lines.starts.size() && lines.starts[line] == i;
      if (begins) {
        text_ += i > 0 ? end : "";
        text_ += 'M';
        ++line;
      } else {
        text_ += ' ';
      }
      place(lines.points[i]);
    }
    text_ += end;
    text_ += "\"/>\n";
  }

  std::string text_;
  double height_;
  int clips_ = 0;
};

}  // namespace

std::string writeSvg(const VectorPicture& picture) { return SvgFile(picture).take(); }

}  // namespace zyn
