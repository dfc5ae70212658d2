#pragma once

#include <windows.h>

#include <array>
#include <string>
// After windows.h:
#include <GL/gl.h>

namespace zyn::bench {

/// The display lists of glyphs that a view makes for its texts, made by the plain system calls in
/// the current rendering context and left to it.
class GlyphLists {
 public:
  explicit GlyphLists(HDC dc);

  GLuint filled() const { return filled_; }
  GLuint outlines() const { return outlines_; }
  /// In em heights.
  double widthOf(const std::string& text) const;

 private:
  static constexpr GLuint kGlyphs = 255;

  GLuint make(HDC dc, int format);

  std::array<GLYPHMETRICSFLOAT, kGlyphs> metrics_ = {};
  GLuint filled_ = 0;
  GLuint outlines_ = 0;
};

}  // namespace zyn::bench
