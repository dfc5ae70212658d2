#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

#include "objects/text/FontMetrics.h"

namespace zyn {

struct CloseFont {
  void operator()(HFONT font) const { DeleteObject(font); }
};
using UniqueFont = std::unique_ptr<std::remove_pointer_t<HFONT>, CloseFont>;

/// The font that all text is drawn with, `height` as LOGFONT has it; null where the system has
/// none.
UniqueFont makeTextFont(LONG height = 0);

/// A font selected into a device context for a scope.
class SelectedFont {
 public:
  SelectedFont(HDC dc, HFONT font) : dc_(dc), previous_(SelectObject(dc, font)) {}
  ~SelectedFont() { SelectObject(dc_, previous_); }
  SelectedFont(const SelectedFont&) = delete;
  SelectedFont& operator=(const SelectedFont&) = delete;

  explicit operator bool() const { return previous_ != nullptr; }

 private:
  HDC dc_;
  HGDIOBJ previous_;
};

/// The measures of the font's glyphs, as rendering contexts have them, without a rendering context;
/// all 0 where the system has no such font.
std::shared_ptr<const FontMetrics> textFontMetrics();

}  // namespace zyn
