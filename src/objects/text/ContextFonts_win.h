#pragma once

#include <windows.h>

#include <memory>
#include <vector>

#include "contract/TextView_win.h"
#include "objects/text/CGLFontContext_gl.h"
#include "platform/Mutex_win.h"

namespace zyn {

/// What owns a rendering context, in the order in which an object that draws text looks for it.
enum class FontOwner { kView2D, kBitmapContext2D, kView3D, kBitmapContext3D };

/// The fonts of the module's live rendering contexts, found by the context that is current. Entries
/// come and go with their contexts (ContextFonts), from the thread of each.
class FontRegister {
 public:
  static FontRegister& instance();

  void enter(FontOwner owner, HGLRC context, const std::shared_ptr<CGLFontContext>& fonts);
  void leave(const CGLFontContext* fonts) noexcept;

  /// The fonts to draw with in `context`; null where it is not one of ours, and in a 3D bitmap
  /// context, which hands its fonts to the labels that are added to it.
  std::shared_ptr<CGLFontContext> find(HGLRC context);

 private:
  struct Entry {
    FontOwner owner;
    HGLRC context;
    std::shared_ptr<CGLFontContext> fonts;
  };

  Mutex mutex_;
  std::vector<Entry> entries_;
};

/// The fonts that a view has told of, if its context is the current one; null otherwise.
std::shared_ptr<CGLFontContext> fontsOf(const TextView& view);

/// The fonts of the current context, if it is one of ours; `view`, what an object was told last,
/// is of that context afterwards.
std::shared_ptr<CGLFontContext> fontsToDrawWith(TextView& view);

/// Gives the current context its outline fonts, with outline lines that smooth the edges of the
/// filled glyphs only if asked for. Without a font of the system, there are none.
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
  TextView view(double viewHeight, double pixelScale) const {
    return {fonts_, context_, viewHeight, pixelScale};
  }

 private:
  std::shared_ptr<CGLFontContext> fonts_;
  HGLRC context_;
};

/// What a view tells its objects in the current context, of which these are the fonts, or which has
/// none.
inline TextView textViewOf(const ContextFonts* fonts, double viewHeight, double pixelScale) {
  return fonts ? fonts->view(viewHeight, pixelScale)
               : TextView{{}, wglGetCurrentContext(), viewHeight, pixelScale};
}

}  // namespace zyn
