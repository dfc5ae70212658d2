#pragma once

#include <windows.h>

#include <memory>
#include <vector>

#include "objects/text/CGLFontContext_gl.h"
#include "platform/Mutex_win.h"

namespace zyn {

/// What owns a rendering context, in the order in which an object that draws text looks for it.
enum class FontOwner { View2D, BitmapContext2D, View3D, BitmapContext3D };

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

}  // namespace zyn
