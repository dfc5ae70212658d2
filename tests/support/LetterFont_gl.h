#pragma once

#include "objects/text/CGLFontContext_gl.h"

namespace zyn::test {

/// Gives the fonts of the current context shapes and lists of glyphs that are written with strokes
/// like letters: every character is a ring, an upright and a slanting bar of its own.
void giveLetters(CGLFontContext& fonts);

}  // namespace zyn::test
