#pragma once

#include <memory>

#include "objects/text/GlyphShapes_gl.h"

namespace zyn {

/// The shapes of the text font's characters, made once per process; the last byte, which is never
/// drawn, has none. Any thread.
std::shared_ptr<const GlyphShapes> textGlyphs();

}  // namespace zyn
