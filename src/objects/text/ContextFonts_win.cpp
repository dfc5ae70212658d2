#include "objects/text/ContextFonts_win.h"

#include "objects/text/TextFont_win.h"
#include "objects/text/TextGlyphs_win.h"

namespace zyn {

// Compiled from shapes that the process makes once: wglUseFontOutlines takes tens of milliseconds
// for every context, and on some systems (Wine) loses memory at each call and leaves out the glyphs
// whose contours cross, letters with a cedilla or a ring mostly.
void buildOutlineFonts(CGLFontContext& fonts, bool outlineLines) {
  const auto metrics = textFontMetrics();
  if (metrics->text.height() <= 0) {
    return;
  }
  GLuint filled = fonts.filledLists();
  if (filled == 0) {
    filled = compileFilledGlyphs(*textGlyphs(), *metrics);
  }
  GLuint outlines = outlineLines ? fonts.outlineLists() : 0;
  if (outlineLines && outlines == 0) {
    outlines = compileGlyphOutlines(*textGlyphs(), *metrics);
  }
  fonts.setGlyphs(*metrics, filled, outlines, textGlyphs());
}

ContextFonts::ContextFonts(FontOwner owner, bool outlineLines)
    : fonts_(std::make_shared<CGLFontContext>()), context_(wglGetCurrentContext()) {
  buildOutlineFonts(*fonts_, outlineLines);
  FontRegister::instance().enter(owner, context_, fonts_);
}

ContextFonts::~ContextFonts() {
  FontRegister::instance().leave(fonts_.get());
  fonts_->release();
}

}  // namespace zyn
