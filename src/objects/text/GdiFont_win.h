#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <type_traits>
#include <vector>

#include "objects/text/CharacterRanges.h"
#include "objects/text/FontFace.h"
#include "objects/text/FontMetrics.h"
#include "objects/text/GlyphShape.h"

namespace zyn {

struct CloseFont {
  void operator()(HFONT font) const { DeleteObject(font); }
};
using UniqueFont = std::unique_ptr<std::remove_pointer_t<HFONT>, CloseFont>;

/// What the system is asked for a face by, `height` as it has it.
LOGFONTW logicalFont(const FontFace& face, LONG height);

/// The font of the system that is nearest to a face, `height` as LOGFONT has it; null where the
/// system gives none.
UniqueFont makeFont(const FontFace& face, LONG height = 0);

/// A font selected into a device context for a scope.
class SelectedFont {
 public:
  SelectedFont(HDC dc, HFONT font) : dc_(dc), previous_(SelectObject(dc, font)) {}
  ~SelectedFont() { SelectObject(dc_, previous_); }
  SelectedFont(const SelectedFont&) = delete;
  SelectedFont& operator=(const SelectedFont&) = delete;

 private:
  HDC dc_;
  HGDIOBJ previous_;
};

/// Units of the design of the font that is selected into `dc` in an em height; 0 for a font without
/// outlines, and where the system refuses to tell.
UINT designUnits(HDC dc);

/// A table of its file, by its number; none where the system does not tell.
std::optional<std::vector<std::uint8_t>> fontTable(HDC dc, DWORD number);

/// The characters that it has glyphs for; clears `isWhole` where the system does not tell of all.
CharacterRanges charactersOf(HDC dc, bool& isWhole);

/// How a glyph of it is asked for: by its byte with GetGlyphOutlineA, by its number or its
/// character with GetGlyphOutlineW.
struct GlyphQuestion {
  DWORD(WINAPI* ask)(HDC, UINT, UINT, GLYPHMETRICS*, DWORD, void*, const MAT2*);
  UINT glyph;
  UINT format = 0;  ///< GGO_GLYPH_INDEX for its number
};

/// Its measures, for a font that is `em` units of the device context high; none where the font
/// cannot tell.
std::optional<GlyphMetrics> glyphMetrics(HDC dc, const GlyphQuestion& question, double em);

/// Its contours, in em heights; curves become lines, of which 1024 to an em are exact enough. Empty
/// for a blank; none where the font cannot tell.
std::optional<std::vector<Contour>> glyphContours(HDC dc, const GlyphQuestion& question, double em);

}  // namespace zyn
