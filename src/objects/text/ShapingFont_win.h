#pragma once

#include <windows.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <unordered_map>

#include "objects/text/CharacterRanges.h"
#include "objects/text/FontFace.h"
#include "objects/text/FontMetrics.h"
#include "objects/text/GdiFont_win.h"
#include "objects/text/GlyphShape.h"
#include "objects/text/Uniscribe_win.h"

namespace zyn {

/// A font of the system that texts are shaped with, as large as it was designed, so that nothing is
/// rounded. Keeps the glyphs that have been asked for. Device contexts that it is given have it
/// selected.
class ShapingFont {
 public:
  struct Glyph {
    std::shared_ptr<const GlyphShape> shape;  ///< null for a blank
    double left = 0.0;                        ///< ends of what is seen, em heights
    double right = 0.0;
    double advance = 0.0;  ///< to the next one
  };

  /// Null where the system has no font with outlines for the face. Clears `isWhole` where it
  /// refuses something.
  static std::shared_ptr<ShapingFont> make(HDC dc, const FontFace& face, bool& isWhole);

  ShapingFont(HDC dc, const FontFace& face, UniqueFont font, double em, bool& isWhole);

  const FontFace& face() const { return face_; }
  HFONT handle() const { return font_.get(); }
  /// Units of a device context in an em height.
  double em() const { return em_; }
  const TextLine& textLine() const { return text_; }
  const TextLine& digitLine() const { return digits_; }
  const CharacterRanges& characters() const { return characters_; }
  SCRIPT_CACHE* scriptCache() { return cache_.get(); }

  /// By its number; none where the system refuses to tell.
  std::optional<Glyph> glyph(HDC dc, WORD number);

 private:
  void measureLines(HDC dc, bool& isWhole);

  FontFace face_;
  UniqueFont font_;
  double em_;
  CharacterRanges characters_;
  TextLine text_;
  TextLine digits_;
  ScriptCache cache_;
  std::unordered_map<WORD, Glyph> glyphs_;
};

}  // namespace zyn
