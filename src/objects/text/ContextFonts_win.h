#pragma once

#include <windows.h>

#include <memory>

#include "contract/TextView_win.h"
#include "objects/text/FontRegister_win.h"

namespace zyn {

/// Gives the current context its outline fonts, with outline lines that smooth the edges of the
/// filled glyphs only if asked for. Lists that are there already stay as they are: other lists may
/// call them. Without a font of the system, there are none.
void buildOutlineFonts(CGLFontContext& fonts, bool outlineLines);

/// Gives the current context its fonts, and registers them, for as long as this lives. The context
/// has to be current again when it ends.
class ContextFonts {
 public:
  ContextFonts(FontOwner owner, bool outlineLines);
  ~ContextFonts();
  ContextFonts(const ContextFonts&) = delete;
  ContextFonts& operator=(const ContextFonts&) = delete;

  const std::shared_ptr<CGLFontContext>& fonts() const { return fonts_; }

  /// What a view with this context tells its texts.
  TextView view(double viewHeight, double pixelScale = 1.0) const {
    return {fonts_, context_, viewHeight, pixelScale};
  }

 private:
  std::shared_ptr<CGLFontContext> fonts_;
  HGLRC context_;
};

}  // namespace zyn
