#pragma once

#include <windows.h>

#include <memory>

#include "objects/FontRegister_win.h"

namespace zyn {

/// Builds the outline fonts of the current context on its device context, with outline lines that
/// smooth the edges of the filled glyphs if asked for.
void buildOutlineFonts(CGLFontContext& fonts, HDC dc, bool outlineLines);

/// Gives the current context its fonts, and registers them, for as long as this lives. The context
/// has to be current again when it ends.
class ContextFonts {
 public:
  ContextFonts(FontOwner owner, HDC dc, bool outlineLines);
  ~ContextFonts();
  ContextFonts(const ContextFonts&) = delete;
  ContextFonts& operator=(const ContextFonts&) = delete;

  const std::shared_ptr<CGLFontContext>& fonts() const { return fonts_; }

 private:
  std::shared_ptr<CGLFontContext> fonts_;
};

}  // namespace zyn
