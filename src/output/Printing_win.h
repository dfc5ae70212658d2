#pragma once

#include <windows.h>

#include "core/Dib.h"
#include "platform/WinHandles_win.h"

namespace zyn {

/// Draws into a rectangle of a device context, in pixels of the device whatever its mapping mode,
/// which is left as it was. Throw `Failure`.
void printMetafile(HDC dc, const RECT& place, HENHMETAFILE metafile);
void printPicture(HDC dc, const RECT& place, const PixelView& picture);

}  // namespace zyn
