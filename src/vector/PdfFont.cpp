#include "vector/PdfFont.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace zyn {

namespace {

int thousandths(double em) { return static_cast<int>(std::lround(1000 * em)); }

bool isPlain(wchar_t letter) {
  return (letter >= L'A' && letter <= L'Z') || (letter >= L'a' && letter <= L'z') ||
         (letter >= L'0' && letter <= L'9');
}

}  // namespace

std::uint16_t PdfFont::codeOf(std::uint16_t glyph, const std::wstring& text) {
  const std::uint16_t code = subset_.add(glyph);
  if (!text.empty()) {
    texts_.emplace(code, text);
  }
  return code;
}

int PdfFont::advance(std::uint16_t code) const { return thousandths(subset_.advance(code)); }

/// Six letters that tell subsets apart, and the family, as PDF has names.
std::string PdfFont::name() const {
  std::uint32_t hash = 2166136261U;
  for (const auto& [code, text] : texts_) {
    for (const wchar_t unit : text) {
      hash = (hash ^ static_cast<std::uint32_t>(unit) ^ std::uint32_t{code} << 16U) * 16777619U;
    }
  }
  std::string name = "/";
  for (int i = 0; i < 6; ++i) {
    name += static_cast<char>('A' + hash % 26);
    hash /= 26;
  }
  name += '+';
  std::ranges::copy_if(face_.family, std::back_inserter(name), isPlain);
  if (face_.bold || face_.italic) {
    name += '-';
    name += face_.bold ? "Bold" : "";
    name += face_.italic ? "Italic" : "";
  }
  return name;
}

std::string PdfFont::widths() const {
  std::string widths = "[0 [";
  for (std::size_t i = 0; i < subset_.size(); ++i) {
    widths += std::to_string(advance(static_cast<std::uint16_t>(i))) + ' ';
  }
  return widths + "]]";
}

/// What codes stand for.
std::string PdfFont::unicode() const {
  std::string map =
      "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n/CIDSystemInfo << /Registry "
      "(Adobe) /Ordering (UCS) /Supplement 0 >> def\n/CMapName /Adobe-Identity-UCS def\n/CMapType "
      "2 def\n1 begincodespacerange\n<0000> <FFFF>\nendcodespacerange\n";
  constexpr std::size_t kMost = 100;  // in one block
  std::size_t left = texts_.size();
  std::size_t inBlock = 0;
  for (const auto& [code, text] : texts_) {
    if (inBlock == 0) {
      inBlock = std::min(left, kMost);
      map += std::to_string(inBlock) + " beginbfchar\n";
    }
    map += '<';
    appendHex(map, std::wstring(1, static_cast<wchar_t>(code)));
    map += "> <";
    appendHex(map, text);
    map += ">\n";
    --left;
    if (--inBlock == 0) {
      map += "endbfchar\n";
    }
  }
  return map + "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n";
}

int PdfFont::addTo(PdfFile& file) const {
  const std::vector<std::uint8_t> bytes = subset_.file();
  const int program = file.addStream(bytes, "/Length1 " + std::to_string(bytes.size()));
  const std::string name = this->name();
  std::string box;
  for (const double side : subset_.box()) {
    box += std::to_string(thousandths(side)) + ' ';
  }
  constexpr int kSymbolic = 4;
  constexpr int kItalic = 64;
  const std::string ascent = std::to_string(thousandths(subset_.ascent()));
  const int descriptor = file.add(
      "<< /Type /FontDescriptor /FontName " + name + " /Flags " +
      std::to_string(kSymbolic | (face_.italic ? kItalic : 0)) + " /FontBBox [" + box +
      "] /ItalicAngle " + (face_.italic ? "-12" : "0") + " /Ascent " + ascent + " /Descent " +
      std::to_string(thousandths(subset_.descent())) + " /CapHeight " + ascent + " /StemV " +
      (face_.bold ? "140" : "80") + " /FontFile2 " + pdfReference(program) + " >>");
  const int glyphs =
      file.add("<< /Type /Font /Subtype /CIDFontType2 /BaseFont " + name +
               " /CIDSystemInfo << /Registry (Adobe) /Ordering (Identity) /Supplement 0 >> "
               "/FontDescriptor " +
               pdfReference(descriptor) + " /W " + widths() + " /CIDToGIDMap /Identity >>");
  const int map = file.addStream(unicode(), "");
  return file.add("<< /Type /Font /Subtype /Type0 /BaseFont " + name +
                  " /Encoding /Identity-H /DescendantFonts [" + pdfReference(glyphs) +
                  "] /ToUnicode " + pdfReference(map) + " >>");
}

}  // namespace zyn
