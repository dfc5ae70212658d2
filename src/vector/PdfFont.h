#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "objects/text/FontFace.h"
#include "vector/PdfFile.h"
#include "vector/TrueTypeSubset.h"

namespace zyn {

/// A font of a PDF file, with the glyphs that texts use.
class PdfFont {
 public:
  PdfFont(const FontFace& face, TrueTypeSubset subset) : face_(face), subset_(std::move(subset)) {}

  /// The code of a glyph of the font in texts. `text`: what it stands for.
  std::uint16_t codeOf(std::uint16_t glyph, const std::wstring& text);
  /// To the next glyph, as the file tells it; thousandths of an em height.
  int advance(std::uint16_t code) const;

  /// Puts the font into the file; its number.
  int addTo(PdfFile& file) const;

 private:
  std::string name() const;
  std::string widths() const;
  std::string unicode() const;

  FontFace face_;
  TrueTypeSubset subset_;
  std::map<std::uint16_t, std::wstring> texts_;  ///< of codes
};

}  // namespace zyn
