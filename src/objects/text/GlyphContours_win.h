#pragma once

#include <windows.h>

#include <vector>

#include "objects/text/Tessellation_gl.h"

namespace zyn {

/// The contours of a character's glyph in the font that is selected into `dc`, in units of the
/// device context from where the glyph starts on the baseline; curves become lines that keep within
/// `deviation` of them. Empty for a blank, and where the font cannot tell, which sets `isWhole` to
/// false.
std::vector<Contour> glyphContours(HDC dc, unsigned char character, double deviation,
                                   bool& isWhole);

}  // namespace zyn
