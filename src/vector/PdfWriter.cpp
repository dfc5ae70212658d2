#include "vector/PdfWriter.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "core/Utf8.h"
#include "vector/NumberText.h"
#include "vector/PdfFile.h"
#include "vector/PdfFont.h"
#include "vector/SimpleText.h"
#include "vector/VectorSink.h"

namespace zyn {

namespace {

bool isRightToLeft(wchar_t unit) {
  return (unit >= 0x0590 && unit <= 0x08FF) || (unit >= 0xFB1D && unit <= 0xFDFF) ||
         (unit >= 0xFE70 && unit <= 0xFEFC);
}

/// Whether glyphs stand for all of a text, in the order in which they are seen: readers turn such
/// texts round by themselves.
bool isTurnedRound(const std::wstring& told, const std::wstring& all) {
  return std::any_of(all.begin(), all.end(), isRightToLeft) &&
         std::ranges::is_permutation(told, all);
}

class PdfPage final : private VectorSink {
 public:
  PdfPage(const VectorPicture& picture, const ReadFaceTable& read)
      : picture_(picture), read_(read) {
    putOut(picture, *this);
  }

  std::vector<std::uint8_t> file() {
    std::string fonts;
    for (std::size_t i = 0; i < fonts_.size(); ++i) {
      if (fonts_[i].font) {
        fonts += nameOf('F', i) + ' ' + pdfReference(fonts_[i].font->addTo(file_)) + ' ';
      }
    }
    std::string box = "[0 0 ";
    appendNumber(box, picture_.width);
    box += ' ';
    appendNumber(box, picture_.height);
    const int pages = file_.reserve();
    const int content = file_.addStream(content_, "");
    const int page = file_.add(
        "<< /Type /Page /Parent " + pdfReference(pages) + " /MediaBox " + box +
        "] /Group << /Type /Group /S /Transparency /CS /DeviceRGB >> /Resources << /Font << " +
        fonts + ">> /ExtGState << " + opacities() + ">> /XObject << " + images_ +
        ">> >> /Contents " + pdfReference(content) + " >>");
    file_.put(pages, "<< /Type /Pages /Count 1 /Kids [" + pdfReference(page) + "] >>");
    const int root = file_.add("<< /Type /Catalog /Pages " + pdfReference(pages) + " >>");
    return file_.finished(root, file_.add("<< /Producer (ZYNVue) >>"));
  }

 private:
  void beginLayer(const std::optional<PixelBox>& clip) override {
    content_ += "q\n";
    if (clip) {
      numbers({clip->left, clip->bottom, clip->width(), clip->height()});
      content_ += "re W n\n";
    }
  }

  void endLayer() override { content_ += "Q\n"; }

  void strokeLines(const PixelLines& lines, const Stroke& stroke) override {
    begin("RG", stroke.colour);
    numbers({stroke.width});
    content_ += "w 1 j ";
    if (!stroke.dashes.empty()) {
      content_ += '[';
      for (const double length : stroke.dashes) {
        numbers({length});
      }
      content_ += "] 0 d ";
    }
    path(lines, "");
    content_ += "S\nQ\n";
  }

  void fillOutlines(const PixelLines& outlines, const DrawColour& colour) override {
    begin("rg", colour);
    path(outlines, "h ");
    content_ += "f\nQ\n";
  }

  /// Lines without length have ends nevertheless.
  void fillDiscs(const std::vector<PlanePoint>& middles, double diameter,
                 const DrawColour& colour) override {
    begin("RG", colour);
    numbers({diameter});
    content_ += "w 1 J ";
    for (const PlanePoint& at : middles) {
      numbers({at.x, at.y});
      content_ += "m ";
      numbers({at.x, at.y});
      content_ += "l ";
    }
    content_ += "S\nQ\n";
  }

  void showText(const DrawnText& text) override {
    if (!text.shaped) {
      return;
    }
    const std::vector<FontGlyph>& glyphs = text.shaped->fontGlyphs;
    std::wstring told;
    bool hasFonts = !glyphs.empty();
    for (const FontGlyph& glyph : glyphs) {
      told += glyph.text;
      hasFonts = hasFonts && fontOf(text.shaped->fonts[glyph.font]).font;
    }
    const std::wstring all = wideOf(text.text);
    const bool isTold = hasFonts && (told == all || isTurnedRound(told, all));
    if (!isTold) {
      content_ += "/Span << /ActualText " + pdfText(all) + " >> BDC\n";
    }
    if (hasFonts) {
      showGlyphs(text);
    } else {
      fillOutlines(contoursOf(text), text.colour);
    }
    content_ += isTold ? "" : "EMC\n";
  }

  void showImage(const DrawnImage& image) override {
    const PixelImage& pixels = *image.image;
    std::vector<std::uint8_t> colours;
    std::vector<std::uint8_t> alphas;
    for (int y = pixels.height - 1; y >= 0; --y) {
      for (int x = 0; x < pixels.width; ++x) {
        const auto at = 4 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(pixels.width) +
                             static_cast<std::size_t>(x));
        colours.insert(colours.end(), &pixels.pixels[at], &pixels.pixels[at + 3]);
        alphas.push_back(pixels.pixels[at + 3]);
      }
    }
    const std::string entries = "/Type /XObject /Subtype /Image /Width " +
                                std::to_string(pixels.width) + " /Height " +
                                std::to_string(pixels.height) + " /BitsPerComponent 8 " +
                                (image.isSmooth ? "/Interpolate true " : "");
    std::string mask;
    if (std::ranges::any_of(alphas, [](std::uint8_t alpha) { return alpha < 255; })) {
      mask =
          " /SMask " + pdfReference(file_.addStream(alphas, entries + "/ColorSpace /DeviceGray"));
    }
    const int number = file_.addStream(colours, entries + "/ColorSpace /DeviceRGB" + mask);
    const std::string name = "/I" + std::to_string(number);
    images_ += name + ' ' + pdfReference(number) + ' ';
    content_ += "q ";
    numbers({image.box.width(), 0, 0, image.box.height(), image.box.left, image.box.bottom});
    content_ += "cm " + name + " Do Q\n";
  }

  struct KnownFont {
    FontFace face;
    std::unique_ptr<PdfFont> font;  ///< null for one that cannot be embedded
    std::size_t index = 0;
  };

  KnownFont& fontOf(const FontFace& face) {
    const auto known = std::ranges::find(fonts_, face, &KnownFont::face);
    if (known != fonts_.end()) {
      return *known;
    }
    auto subset = TrueTypeSubset::make([&](std::string_view name) { return read_(face, name); });
    fonts_.push_back({face, subset ? std::make_unique<PdfFont>(face, std::move(*subset)) : nullptr,
                      fonts_.size()});
    return fonts_.back();
  }

  void showGlyphs(const DrawnText& text) {
    begin("rg", text.colour);
    content_ += "BT ";
    const std::vector<FontGlyph>& glyphs = text.shaped->fontGlyphs;
    for (std::size_t i = 0; i < glyphs.size();) {
      std::size_t end = i + 1;
      while (end < glyphs.size() && glyphs[end].font == glyphs[i].font &&
             glyphs[end].at.y == glyphs[i].at.y) {
        ++end;
      }
      showRun(text, std::span(glyphs).subspan(i, end - i));
      i = end;
    }
    content_ += "ET\nQ\n";
  }

  /// Glyphs of one font on one line.
  void showRun(const DrawnText& text, std::span<const FontGlyph> glyphs) {
    const KnownFont& known = fontOf(text.shaped->fonts[glyphs.front().font]);
    content_ += nameOf('F', known.index) + ' ';
    numbers({text.emHeight});
    content_ += text.isUpright ? "Tf 0 1 -1 0 " : "Tf 1 0 0 1 ";
    const PlanePoint start = placeOf(text, glyphs.front().at);
    numbers({start.x, start.y});
    content_ += "Tm [<";
    int pen = 0;  // in thousandths of an em height
    for (const FontGlyph& glyph : glyphs) {
      const int place = static_cast<int>(std::lround(1000 * (glyph.at.x - glyphs.front().at.x)));
      if (std::abs(place - pen) > 1) {  // more than what rounding makes
        content_ += '>' + std::to_string(pen - place) + '<';
        pen = place;
      }
      const std::uint16_t code = known.font->codeOf(glyph.number, glyph.text);
      appendHex(content_, std::wstring(1, static_cast<wchar_t>(code)));
      pen += known.font->advance(code);
    }
    content_ += ">] TJ ";
  }

  static PlanePoint placeOf(const DrawnText& text, const PlanePoint& at) {
    const PlanePoint moved = text.isUpright ? PlanePoint{-at.y, at.x} : at;
    return text.start + text.emHeight * moved;
  }

  static PixelLines contoursOf(const DrawnText& text) {
    PixelLines lines;
    for (const PlacedGlyph& glyph : text.shaped->glyphs) {
      for (const Contour& contour : glyph.shape->contours) {
        lines.starts.push_back(lines.points.size());
        for (const PlanePoint& point : contour) {
          lines.points.push_back(placeOf(text, glyph.at + point));
        }
      }
    }
    return lines;
  }

  static std::string nameOf(char kind, std::size_t index) {
    return std::string("/") + kind + std::to_string(index + 1);
  }

  /// Saves the state and sets a colour, `how` as PDF has it.
  void begin(std::string_view how, const DrawColour& colour) {
    content_ += "q ";
    for (const double component : {colour.r, colour.g, colour.b}) {
      appendNumber(content_, std::clamp(component, 0.0, 1.0), 4);
      content_ += ' ';
    }
    content_ += how;
    content_ += ' ';
    if (colour.alpha < 1) {
      const auto alpha = static_cast<int>(std::lround(1000 * std::max(colour.alpha, 0.0)));
      const auto known = alphas_.emplace(alpha, alphas_.size()).first;
      content_ += nameOf('G', known->second) + " gs ";
    }
  }

  std::string opacities() const {
    std::string states;
    for (const auto& [alpha, index] : alphas_) {
      std::string value;
      appendNumber(value, alpha / 1000.0, 3);
      states += nameOf('G', index) + " << /ca " + value + " /CA " + value + " >> ";
    }
    return states;
  }

  void numbers(std::initializer_list<double> values) {
    for (const double value : values) {
      appendNumber(content_, value);
      content_ += ' ';
    }
  }

  void path(const PixelLines& lines, std::string_view end) {
    std::size_t line = 0;
    for (std::size_t i = 0; i < lines.points.size(); ++i) {
      const bool begins = line < lines.starts.size() && lines.starts[line] == i;
      if (begins) {
        content_ += i > 0 ? end : "";
        ++line;
      }
      numbers({lines.points[i].x, lines.points[i].y});
      content_ += begins ? "m " : "l\n";
    }
    content_ += end;
  }

  const VectorPicture& picture_;
  const ReadFaceTable& read_;
  PdfFile file_;
  std::string content_;
  std::vector<KnownFont> fonts_;
  std::map<int, std::size_t> alphas_;  ///< in thousandths
  std::string images_;
};

}  // namespace

std::vector<std::uint8_t> writePdf(const VectorPicture& picture, const ReadFaceTable& read) {
  return PdfPage(picture, read).file();
}

}  // namespace zyn
