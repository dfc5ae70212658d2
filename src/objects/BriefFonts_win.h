#pragma once

#include <string_view>

#include "objects/CGLFontContext_gl.h"

namespace zyn {

/// Fonts of the current rendering context, which is not one of ours, for a scope: they hold the
/// characters of one text. The context has to be current again when the scope ends, and keeps
/// nothing of them.
///
/// The shapes of the characters are kept for the process, so that a host may draw texts this way
/// in every frame: the system's own fonts of display lists take tens of milliseconds to make, and
/// some systems lose memory each time.
class BriefFonts {
 public:
  explicit BriefFonts(std::string_view text);
  ~BriefFonts() { fonts_.release(); }
  BriefFonts(const BriefFonts&) = delete;
  BriefFonts& operator=(const BriefFonts&) = delete;

  const CGLFontContext& fonts() const { return fonts_; }

 private:
  CGLFontContext fonts_;
};

}  // namespace zyn
