#pragma once

#include "glcontext/SharedBitmap_win.h"
#include "offscreen/GdiPlus_win.h"

namespace zyn {

/// Whether this system's GDI+ takes no notice of the quality of a JPEG file, as Wine's does: found
/// out once per process by making a small picture in two qualities and comparing the sizes.
bool ignoresJpegQuality(const GdiPlus& gdiPlus);

/// Writes the JPEG file where GDI+ would not mind the quality, which is held within 1 to 100. Tells
/// whether it succeeded; where it did not, part of the file may be left.
bool writeJpegMindingQuality(const SharedBitmap& picture, const wchar_t* fileName, int quality);

}  // namespace zyn
