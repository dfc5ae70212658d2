#pragma once

#include <memory>
#include <string_view>

#include "objects/text/FontFace.h"
#include "objects/text/ShapedText.h"

namespace zyn {

/// Lays out a line of text (UTF-16) in a font: all scripts and both directions, with glyphs of
/// other installed fonts for what it lacks, and its sign for what none has. A family that is not
/// installed gives the font that the system takes in its place. Needs no rendering context; fonts
/// and outlines of glyphs are kept for the process. Any thread.
///
/// Where the system refuses something, as much as possible is laid out and `isWhole` cleared.
/// Throws std::bad_alloc.
std::shared_ptr<const ShapedText> shapeText(std::wstring_view text, const FontFace& face,
                                            bool& isWhole);

}  // namespace zyn
