#pragma once

#include <string_view>
#include <vector>

#include "glcontext/gl_api.h"
#include "objects/text/FontMetrics.h"
#include "objects/text/GlyphShape.h"

namespace zyn {

/// Fills what the contours wind around, however they cross: holes are contours that turn the other
/// way. Needs no rendering context. Throws std::bad_alloc.
Triangles tessellate(const std::vector<Contour>& contours);

/// Compiles 256 lists, one a byte, each of which draws the filled glyph at the origin, an em a
/// unit, and moves on to the next. 0 where OpenGL gives no lists.
GLuint compileFilledGlyphs(const GlyphShapes& shapes, const FontMetrics& metrics);

/// The same with the glyphs' outlines as lines.
GLuint compileGlyphOutlines(const GlyphShapes& shapes, const FontMetrics& metrics);

/// Draws the filled glyphs of a text from the origin along x, an em a unit, without display lists.
void drawFilledGlyphs(const GlyphShapes& shapes, const FontMetrics& metrics, std::string_view text);

/// The same with the glyphs' outlines as lines.
void drawGlyphOutlines(const GlyphShapes& shapes, const FontMetrics& metrics,
                       std::string_view text);

}  // namespace zyn
